#include "link/download.h"

#include "core/data_types.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kvo::link {
namespace {

constexpr int batchTurns = 32000;
// For the bytes that a mode leaves unread, and for such as should not come behind them.
constexpr int unreadTurns = 250 * platform::turnsPerMillisecond;
constexpr int quietTurns = 50 * platform::turnsPerMillisecond;
constexpr int longestTurns = 1000 * platform::turnsPerMillisecond;

struct WireLayout {
    int DataType;
    int RecordSize;
    int analogOnWire;
    int analogWithTables;
    int auxAt;
    int auxBytes;
    int exhaustAt;
    bool notAllChannels = false;
};

// Positions count from 1. Everywhere: four periods at 1 to 8, switches at 9, analog from 10 on.
constexpr std::array<WireLayout, 7> layouts{{
    //  type  size analog tables aux bytes exhaust
    {8, 13, 4, 4, 0, 0, 0},
    {12, 13, 4, 4, 0, 0, 0},
    {17, 19, 8, 8, 18, 2, 0},
    {20, 16, 7, 6, 0, 0, 0},
    {25, 27, 8, 8, 18, 2, 20},
    {32, 32, 8, 8, 21, 1, 22},
    {43, 44, 8, 8, 21, 1, 22, true},
}};

// What the safe mode asks for, sample by sample, ends here; see safeTail.
constexpr int spareBytes = 3;

int byteAt(std::string_view record, int position) {
    return static_cast<std::uint8_t>(record[static_cast<std::size_t>(position - 1)]);
}

// Required: the high byte is shifted inside 16 signed bits, so from 0x80 up the word is negative.
// The safe mode has it positive.
std::int32_t signedWordAt(std::string_view record, int position) {
    const auto high = static_cast<std::int16_t>(byteAt(record, position) << 8);
    return static_cast<std::int32_t>(high) + byteAt(record, position + 1);
}

} // namespace

std::optional<DownloadType> downloadType(int dataType) {
    const auto* layout = std::find_if(layouts.begin(), layouts.end(),
        [&](const WireLayout& row) { return row.DataType == dataType; });
    if (layout == layouts.end()) return std::nullopt;
    const core::DataTypeFacts* facts = core::dataTypeFacts(dataType);
    if (facts == nullptr) return std::nullopt;
    return DownloadType{dataType, layout->RecordSize, facts->rows, facts->timeOffset,
        layout->analogOnWire, layout->analogWithTables, layout->auxAt, layout->auxBytes,
        layout->exhaustAt, layout->notAllChannels};
}

std::optional<DownloadType> prepareDownload(core::OpenRun& run) {
    run.SampleCount = 0;
    const auto type = downloadType(run.DataType);
    if (!type) return std::nullopt;
    run.SampleCount = static_cast<std::uint16_t>(type->SampleCount);
    run.image.tail = {};
    run.image.tail.TimeOffset = static_cast<std::int16_t>(type->TimeOffset);
    return type;
}

std::string progressText(int sample, int sampleCount) {
    const double percent = sampleCount > 0 ? sample / (sampleCount / 100.0) : 0;
    return "Downloading data from the On Board Computer.   " +
           std::to_string(static_cast<int>(percent)) + "%";
}

Download::Download(LoggerLink& link, core::OpenRun& run, PulsePeriods& periods, DownloadView& view,
    platform::Dialogs& dialogs, std::function<bool()> cancelled)
    : m_link(link), m_run(run), m_periods(periods), m_view(view), m_dialogs(dialogs),
      m_cancelled(std::move(cancelled)) {
    if (const auto type = downloadType(run.DataType)) m_type = *type;
}

void Download::clearUnfilled(core::RunSample& row) const {
    for (int c = m_type.analogOnWire + 1; c <= 8; ++c) row.Analog[c] = 0;
    if (m_type.auxAt == 0) row.Aux = 0;
    if (m_type.exhaustAt == 0) row.Exhaust.fill(0);
}

void Download::showProgress(int i) {
    m_view.setProgress(i);
    m_view.setText_Display(progressText(i, m_run.SampleCount));
}

void Download::reportFailure() {
    m_link.LinkFailed = -1;
    if (m_failureTold || (m_cancelled && m_cancelled())) return;
    m_failureTold = true;
    m_dialogs.beep();
    m_dialogs.messageBox(
        "The On Board Computer Stopped Responding\r\n           Fix and try again!",
        platform::boxStyle::critical, "Download Error");
    m_link.CloseLoggerPort();
    m_view.unload();
}

void Download::safeSample(int i) {
    core::RunSample& row = m_run.image.samples[i];
    const auto readWord = [this](std::int32_t& field) {
        m_link.RequestWord();
        field = m_link.WordValue;
    };
    const auto readByte = [this](std::uint8_t& field) {
        m_link.RequestByte();
        field = static_cast<std::uint8_t>(m_link.ReplyByte);
    };
    clearUnfilled(row);
    row.Index = static_cast<std::int16_t>(i);
    readWord(m_periods.EnginePeriod[i]);
    readWord(m_periods.InputPeriod[i]);
    readWord(m_periods.OutputPeriod[i]);
    readWord(row.SpeedRaw);
    readByte(row.Status);
    for (int c = 1; c <= m_type.analogOnWire; ++c) readByte(row.Analog[c]);
    safeTail(i);
}

// What stands behind the analog bytes. Required: of a type 43 sample, 44 bytes long, only 32 are
// asked for, so that the stream falls out of step after the first one.
void Download::safeTail(int i) {
    core::RunSample& row = m_run.image.samples[i];
    const auto skipSpare = [this] {
        for (int k = 0; k < spareBytes; ++k) m_link.RequestByte();
    };
    if (m_type.auxAt == 0) return;
    if (m_type.auxBytes == 2) {
        m_link.RequestWord();
        row.Aux = m_link.WordValue;
    } else {
        skipSpare();
        m_link.RequestByte();
        row.Aux = m_link.ReplyByte;
    }
    if (m_type.exhaustAt == 0) return;
    for (int c = 1; c <= 8; ++c) {
        m_link.RequestByte();
        row.Exhaust[c] = static_cast<std::uint8_t>(m_link.ReplyByte);
    }
    if (m_type.auxBytes == 1) skipSpare();
}

void Download::DownloadSafe() {
    m_link.port().setInputLen(1);
    // One request ahead: each reply that is read answers the request before, and one stays unread.
    m_link.SendCommand(1);
    m_unread = 1;
    for (int i = 1; i <= m_run.SampleCount; ++i) {
        safeSample(i);
        if (m_link.LinkFailed == -1) {
            reportFailure();
            return;
        }
        showProgress(i);
        m_link.yield().turns(1);
    }
}

// Required: only a buffer of exactly one batch will do; a byte less or more is silence.
bool Download::waitForBatch(int bytes, std::string& batch) {
    for (int poll = 0;; poll += m_link.yield().turns(batchTurns - poll)) {
        if (m_link.port().inBufferCount() == bytes) {
            batch = m_link.port().input();
            return static_cast<int>(batch.size()) == bytes;
        }
        if (poll >= batchTurns || m_link.lineGone()) return false;
    }
}

void Download::takeSample(int i, std::string_view record) {
    core::RunSample& row = m_run.image.samples[i];
    clearUnfilled(row);
    row.Index = static_cast<std::int16_t>(i);
    m_periods.EnginePeriod[i] = signedWordAt(record, 1);
    m_periods.InputPeriod[i] = signedWordAt(record, 3);
    m_periods.OutputPeriod[i] = signedWordAt(record, 5);
    row.SpeedRaw = signedWordAt(record, 7);
    row.Status = static_cast<std::uint8_t>(byteAt(record, 9));
    for (int c = 1; c <= m_type.analogOnWire; ++c)
        row.Analog[c] = static_cast<std::uint8_t>(byteAt(record, 9 + c));
    if (m_type.auxAt != 0)
        row.Aux = m_type.auxBytes == 2 ? signedWordAt(record, m_type.auxAt)
                                       : byteAt(record, m_type.auxAt);
    if (m_type.exhaustAt == 0) return;
    for (int c = 1; c <= 8; ++c)
        row.Exhaust[c] = static_cast<std::uint8_t>(byteAt(record, m_type.exhaustAt + c - 1));
}

void Download::DownloadFast() {
    const auto size = static_cast<std::size_t>(m_type.RecordSize);
    const int batchBytes = 2 * m_type.RecordSize;
    m_link.port().setInputLen(batchBytes);
    m_link.SendCommand(static_cast<std::uint8_t>(batchBytes));
    m_unread = batchBytes;
    std::string batch;
    // Required: the loop stops two short and asks for one batch that is never read, so the last
    // rows (the last one of an odd count) keep what they held.
    for (int i = 1; i <= m_run.SampleCount - 2; i += 2) {
        if (!waitForBatch(batchBytes, batch)) {
            reportFailure();
            return;
        }
        m_link.SendCommand(static_cast<std::uint8_t>(batchBytes));
        takeSample(i, std::string_view(batch).substr(0, size));
        takeSample(i + 1, std::string_view(batch).substr(size, size));
        showProgress(i);
    }
}

int Download::surplusBytes() {
    platform::SerialPort& port = m_link.port();
    for (int gone = 0; gone < unreadTurns && port.inBufferCount() < m_unread && !m_link.lineGone();)
        gone += m_link.yield().turns(unreadTurns - gone);
    // Bytes that still come, late ones behind a pause, keep it looking; a flood does not for ever.
    for (int gone = 0, quiet = 0;
         quiet < quietTurns && gone < longestTurns && !m_link.lineGone();) {
        const int before = port.inBufferCount();
        const int turns = m_link.yield().turns(quietTurns - quiet);
        gone += turns;
        quiet = port.inBufferCount() == before ? quiet + turns : 0;
    }
    return m_link.recorder().surplus();
}

} // namespace kvo::link
