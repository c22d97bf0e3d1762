#include "link/raw_session.h"

#include "core/basic/byte_reader.h"
#include "core/basic/byte_writer.h"
#include "core/config.h"
#include "core/paths.h"
#include "core/run_index.h"
#include "core/run_records.h"
#include "core/setup_kinds.h"
#include "platform/yield.h"

#include <algorithm>
#include <string_view>

namespace kvo::link {
namespace {

using core::ByteReader;
using core::ByteWriter;

constexpr std::string_view firstLine = "Kvo raw session 1\r\n";
constexpr std::string_view anyVersion = "Kvo raw session ";
constexpr std::size_t sumBytes = 4;
// The slowest download that its waits allow takes less; a replay steps through all of it.
constexpr std::uint64_t mostTurns =
    std::uint64_t{4} * 60 * 60 * 1000 * platform::turnsPerMillisecond;

void putNumber(ByteWriter& writer, std::uint64_t value) {
    for (; value >= 0x80U; value >>= 7U) writer.u8(static_cast<std::uint8_t>(value | 0x80U));
    writer.u8(static_cast<std::uint8_t>(value));
}

std::uint64_t takeNumber(ByteReader& reader) {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64U; shift += 7U) {
        const std::uint8_t byte = reader.u8().value_or(0);
        value |= static_cast<std::uint64_t>(byte & 0x7FU) << shift;
        if (byte < 0x80U) break;
    }
    return value;
}

std::uint32_t takeSmallNumber(ByteReader& reader) {
    return static_cast<std::uint32_t>(takeNumber(reader));
}

void putText(ByteWriter& writer, std::string_view text) {
    putNumber(writer, text.size());
    writer.characters(text);
}

std::string takeText(ByteReader& reader) {
    return reader.text(static_cast<std::size_t>(takeNumber(reader))).value_or(std::string());
}

template <typename Record> void putRecord(ByteWriter& writer, const Record& record) {
    ByteWriter one;
    encode(one, record);
    putText(writer, {reinterpret_cast<const char*>(one.bytes().data()), one.size()});
}

template <typename Record> void takeRecord(ByteReader& reader, Record& record) {
    const std::string bytes = takeText(reader);
    decode(core::RecordBytes(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()),
        record);
}

void putMoment(ByteWriter& writer, const platform::DateTime& moment) {
    for (const int part :
        {moment.year, moment.month, moment.day, moment.hour, moment.minute, moment.second})
        writer.u16le(static_cast<std::uint16_t>(part));
}

void takeMoment(ByteReader& reader, platform::DateTime& moment) {
    for (int* part :
        {&moment.year, &moment.month, &moment.day, &moment.hour, &moment.minute, &moment.second})
        *part = reader.u16le().value_or(1);
}

void putTables(ByteWriter& writer, const RawSession& session) {
    for (int c = 1; c <= core::AnalogTables::size; ++c) {
        if (session.Config.Analog_Type[c] != core::mappedInput) continue;
        for (const double value : session.Tables[c]) writer.f64le(value);
    }
}

void takeTables(ByteReader& reader, RawSession& session) {
    for (int c = 1; c <= core::AnalogTables::size; ++c) {
        if (session.Config.Analog_Type[c] != core::mappedInput) continue;
        for (double& value : session.Tables[c]) value = reader.f64le().value_or(0);
    }
}

// Only rows that hold something: in a program that was just started there are none.
void putStart(ByteWriter& writer, const DownloadStart& start) {
    writer.i32le(start.ReplyByte);
    writer.i32le(start.WordValue);
    writer.i16le(start.RpmValue);
    writer.u8(start.DataType);
    putRecord(writer, start.setup);
    putRecord(writer, start.analog);
    for (int i = 1; i <= core::maxSamples; ++i) {
        const std::int32_t engine = start.periods.EnginePeriod[i];
        const std::int32_t input = start.periods.InputPeriod[i];
        const std::int32_t output = start.periods.OutputPeriod[i];
        const bool empty = engine == 0 && input == 0 && output == 0;
        if (empty && start.samples[i] == core::RunSample{}) continue;
        putNumber(writer, static_cast<std::uint64_t>(i));
        putRecord(writer, start.samples[i]);
        for (const std::int32_t period : {engine, input, output}) writer.i32le(period);
    }
    putNumber(writer, 0);
}

void takeStart(ByteReader& reader, DownloadStart& start) {
    start.ReplyByte = reader.i32le().value_or(0);
    start.WordValue = reader.i32le().value_or(0);
    start.RpmValue = reader.i16le().value_or(0);
    start.DataType = reader.u8().value_or(0);
    takeRecord(reader, start.setup);
    takeRecord(reader, start.analog);
    for (auto row = takeNumber(reader); row >= 1 && row <= core::maxSamples;
         row = takeNumber(reader)) {
        const int i = static_cast<int>(row);
        takeRecord(reader, start.samples[i]);
        start.periods.EnginePeriod[i] = reader.i32le().value_or(0);
        start.periods.InputPeriod[i] = reader.i32le().value_or(0);
        start.periods.OutputPeriod[i] = reader.i32le().value_or(0);
    }
}

// Mostly one and the same byte.
void putSent(ByteWriter& writer, std::string_view sent) {
    while (!sent.empty()) {
        const std::size_t run = std::min(sent.find_first_not_of(sent.front()), sent.size());
        putNumber(writer, run);
        writer.u8(static_cast<std::uint8_t>(sent.front()));
        sent.remove_prefix(run);
    }
    putNumber(writer, 0);
}

std::string sentBytes(ByteReader& reader, std::size_t most) {
    std::string sent;
    for (auto run = takeNumber(reader); run > 0 && run <= most - sent.size();
         run = takeNumber(reader))
        sent.append(static_cast<std::size_t>(run), static_cast<char>(reader.u8().value_or(0)));
    return sent;
}

// The usual step of either mode - a byte arrived less than 64 turns after the event before, and one
// was sent in between or none - takes a byte: 0 to 63 turns, and 64 more where none was sent. Any
// other begins with 128 and its kind, and three numbers follow.
constexpr std::uint32_t shortTurns = 64;
constexpr std::uint8_t noneSent = 64;
constexpr std::uint8_t longEvent = 128;

void putEvents(ByteWriter& writer, const std::vector<LineEvent>& events) {
    putNumber(writer, events.size());
    LineEvent last;
    for (const LineEvent& event : events) {
        const std::uint32_t turns = event.turn - last.turn;
        const std::uint32_t sent = event.sent - last.sent;
        last = event;
        if (event.kind == LineEvent::Kind::arrived && sent <= 1 && event.bytes == 1 &&
            turns < shortTurns) {
            writer.u8(static_cast<std::uint8_t>(turns + (sent == 1 ? 0U : noneSent)));
            continue;
        }
        writer.u8(static_cast<std::uint8_t>(longEvent + static_cast<unsigned>(event.kind)));
        for (const std::uint32_t value : {turns, sent, event.bytes}) putNumber(writer, value);
    }
}

// False where the turns of all of them are more than a download can have.
bool takeEvents(ByteReader& reader, std::vector<LineEvent>& events) {
    const std::uint64_t count = takeNumber(reader);
    LineEvent event;
    std::uint64_t gone = 0;
    for (std::uint64_t i = 0; i < count && !reader.failed(); ++i) {
        const std::uint8_t first = reader.u8().value_or(0);
        const bool usual = first < longEvent;
        event.kind =
            usual ? LineEvent::Kind::arrived : static_cast<LineEvent::Kind>(first - longEvent);
        const std::uint32_t turns = usual ? first % shortTurns : takeSmallNumber(reader);
        gone += turns;
        if (gone > mostTurns) return false;
        event.turn += turns;
        event.sent += usual ? (first < noneSent ? 1U : 0U) : takeSmallNumber(reader);
        event.bytes = usual ? 1 : takeSmallNumber(reader);
        events.push_back(event);
    }
    return true;
}

// What a download of the type can have. More would be rows that no run has room for.
bool isCountOf(int dataType, int samples) {
    const auto type = downloadType(dataType);
    return type && samples >= 1 && samples <= type->SampleCount;
}

std::unique_ptr<RawSession> takeSession(ByteReader& reader, std::size_t size) {
    auto session = std::make_unique<RawSession>();
    takeMoment(reader, session->moment);
    session->saved = reader.u8().value_or(0) != 0;
    session->title = takeText(reader);
    session->DataType = reader.u8().value_or(0);
    session->SampleCount = reader.u16le().value_or(0);
    session->surplus = reader.i32le().value_or(0);
    const std::string config = takeText(reader);
    const bool read =
        core::decodeConfig(platform::Bytes(config.begin(), config.end()), session->Config);
    takeTables(reader, *session);
    takeStart(reader, session->start);
    constexpr std::size_t longestRun = 100; // a byte of the file stands for many that were sent
    session->line.sent = sentBytes(reader, longestRun * size);
    session->line.came = takeText(reader);
    const bool possible = takeEvents(reader, session->line.events) &&
                          isCountOf(session->DataType, session->SampleCount);
    const bool whole = read && !reader.failed() && reader.left() == 0;
    return whole && possible ? std::move(session) : nullptr;
}

} // namespace

std::uint32_t rawSessionSum(std::span<const std::uint8_t> content) {
    std::uint32_t sum = 0xFFFFFFFFU;
    for (const std::uint8_t byte : content) {
        sum ^= byte;
        for (int bit = 0; bit < 8; ++bit) sum = sum >> 1U ^ (0xEDB88320U & (0U - (sum & 1U)));
    }
    return ~sum;
}

platform::Bytes encodeRawSession(const RawSession& session) {
    ByteWriter writer;
    writer.characters(firstLine);
    putMoment(writer, session.moment);
    writer.u8(session.saved ? 1 : 0);
    putText(writer, session.title);
    writer.u8(session.DataType);
    writer.u16le(session.SampleCount);
    writer.i32le(session.surplus);
    core::AppConfig config = session.Config;
    config.Password.clear(); // the file may be sent to somebody
    const platform::Bytes bytes = core::encodeConfig(config);
    putText(writer, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    putTables(writer, session);
    putStart(writer, session.start);
    putSent(writer, session.line.sent);
    putText(writer, session.line.came);
    putEvents(writer, session.line.events);
    writer.u32le(rawSessionSum(writer.bytes()));
    return writer.take();
}

std::unique_ptr<RawSession> decodeRawSession(const platform::Bytes& file, std::string& why) {
    const auto begins = [&](std::string_view with) {
        return file.size() >= with.size() && std::equal(with.begin(), with.end(), file.begin());
    };
    if (!begins(firstLine)) {
        why = begins(anyVersion) ? "is of a version that this program does not know"
                                 : "is no raw session of a download";
        return nullptr;
    }
    const std::span<const std::uint8_t> all(file);
    const std::size_t content = std::max(firstLine.size(), all.size() - sumBytes);
    ByteReader sum(all.subspan(content));
    if (sum.u32le() != rawSessionSum(all.first(content))) {
        why = "is damaged: its check sum is wrong";
        return nullptr;
    }
    ByteReader reader(all.subspan(firstLine.size(), content - firstLine.size()));
    auto session = takeSession(reader, file.size());
    if (session == nullptr) why = "is damaged: its parts do not fit together";
    return session;
}

std::string rawSessionName(const platform::DateTime& moment, bool saved) {
    return core::runFileName(moment) + (saved ? ".raw" : "-failed.raw");
}

platform::WriteResult keepRawSession(
    const RawSession& session, const std::string& appFolder, platform::Files& files) {
    const std::string folder = core::joined(appFolder, "Backup", files);
    if (!files.folderExists(folder))
        if (auto made = files.makeFolder(folder); !made) return made;
    const std::string name = rawSessionName(session.moment, session.saved);
    return files.write(core::joined(folder, name, files), encodeRawSession(session));
}

} // namespace kvo::link
