#pragma once
// A download as it came: all that decoding it again needs, in one file that needs no other. Layout
// in docs/file-formats.md.
#include "core/analog_tables.h"
#include "core/config_record.h"
#include "core/open_run.h"
#include "link/download.h"
#include "link/line_record.h"
#include "platform/clock.h"
#include "platform/files.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace kvo::link {

// What a download finds in memory. It shows in the run wherever nothing else came: in the rows that
// the fast mode does not read, and in values that do not fit their field.
struct DownloadStart {
    std::int32_t ReplyByte = 0;
    std::int32_t WordValue = 0;
    std::int16_t RpmValue = 0;
    std::uint8_t DataType = 0; // of the logger's header before
    core::FromOne<core::RunSample, core::maxSamples> samples;
    core::RunSetupBlock setup;
    core::RunAnalogBlock analog;
    PulsePeriods periods;
};

struct RawSession {
    platform::DateTime moment; // when it was saved, or failed
    bool saved = false;
    std::string title;         // of a saved run
    std::uint8_t DataType = 0; // as the header said
    std::uint16_t SampleCount = 0;
    std::int32_t surplus = 0;  // bytes too many behind the last sample; negative: too few
    core::AppConfig Config;    // without its password
    core::AnalogTables Tables; // of the channels that go through one; others do not count
    DownloadStart start;
    LineRecord line;
};

// The last four bytes of a file: the CRC-32, reflected, as archives have it, of all before them.
std::uint32_t rawSessionSum(std::span<const std::uint8_t> content);
platform::Bytes encodeRawSession(const RawSession& session);
// Nothing where the file is none of these, not whole, or of no download that can be - more rows
// than its data type has, or four hours and more of waits -, and `why` says so.
std::unique_ptr<RawSession> decodeRawSession(const platform::Bytes& file, std::string& why);

// "26111514.52d.raw", and "26111514.52d-failed.raw" of a download that did not become a run.
std::string rawSessionName(const platform::DateTime& moment, bool saved);
// Writes it to Backup/, over one of the same minute.
[[nodiscard]] platform::WriteResult keepRawSession(
    const RawSession& session, const std::string& appFolder, platform::Files& files);

} // namespace kvo::link
