#pragma once
// The transfer of the logger's whole memory into the rows of the run and the period arrays, as raw
// readings. How many samples there are and how each one lies on the wire follows from the data
// type.
#include "core/open_run.h"
#include "link/download_view.h"
#include "link/logger_link.h"
#include "platform/dialogs.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace kvo::link {

// Raw period counts of the first three pulse channels, until they have become rpm.
struct PulsePeriods {
    core::FromOne<std::int32_t, core::maxSamples> EnginePeriod;
    core::FromOne<std::int32_t, core::maxSamples> InputPeriod;
    core::FromOne<std::int32_t, core::maxSamples> OutputPeriod;
};

// What a data type means for the wire.
struct DownloadType {
    int DataType;
    int RecordSize; // bytes of one sample
    int SampleCount;
    int TimeOffset;
    int analogOnWire;     // analog channels that a sample carries
    int analogWithTables; // how many of them may go through a table
    int auxAt;            // position of Aux from 1, 0 for none
    int auxBytes;         // 1 or 2
    int exhaustAt;        // position of the first of eight exhaust bytes, 0 for none
    bool notAllChannels;  // the logger has channels that this program leaves out
};

// The row of a data type, nothing for one that has no download.
std::optional<DownloadType> downloadType(int dataType);

// Sets SampleCount (0 for a type that has no download) by DataType, and makes the tail block fresh
// with its TimeOffset (it stays for such a type).
std::optional<DownloadType> prepareDownload(core::OpenRun& run);

// "Downloading data from the On Board Computer.   " and the whole percent.
std::string progressText(int sample, int sampleCount);

// One transfer. SampleCount of the run is set before; rows and periods keep what they held where
// nothing arrives. On failure LinkFailed is -1, the user was told, the port is closed and `view`
// was unloaded - unless `cancelled` says that the user left, which is no failure to tell.
class Download {
public:
    Download(LoggerLink& link, core::OpenRun& run, PulsePeriods& periods, DownloadView& view,
        platform::Dialogs& dialogs, std::function<bool()> cancelled = {});

    // One byte a request.
    void DownloadSafe();
    // Two samples a batch, the next batch asked for before the last is taken apart.
    void DownloadFast();
    // Behind a transfer that came to its end, a little while later: how many bytes more have come
    // since the port was opened than were asked for; negative: fewer, also where the line is gone.
    // A byte that was lost, doubled or made up on the line has shifted all that came behind it, and
    // shows only here.
    int surplusBytes();
    // Tells the user that the logger stopped responding, closes the port and unloads the form;
    // once.
    void reportFailure();

private:
    void safeSample(int i);
    void safeTail(int i);
    bool waitForBatch(int bytes, std::string& batch);
    void takeSample(int i, std::string_view record);
    void clearUnfilled(core::RunSample& row) const;
    void showProgress(int i);

    LoggerLink& m_link;
    core::OpenRun& m_run;
    PulsePeriods& m_periods;
    DownloadView& m_view;
    platform::Dialogs& m_dialogs;
    std::function<bool()> m_cancelled;
    DownloadType m_type{};
    int m_unread = 0; // bytes that the mode asked for and does not read
    bool m_failureTold = false;
};

} // namespace kvo::link
