#pragma once
// The records of a run file, field by field. Each decode takes the bytes of one record from its
// start; a record with fewer bytes than its payload is a failed read and leaves the target as it
// is.
#include "core/basic/byte_writer.h"
#include "core/records.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace kvo::core {

inline constexpr std::size_t runRecordWidth = 84;
inline constexpr std::size_t runHeaderWidth = 34;
inline constexpr std::size_t runSampleWidth = 33;
inline constexpr std::size_t runTailWidth = 20;
inline constexpr std::size_t longestHeaderLine = 82; // what fits behind its length word

using RecordBytes = std::span<const std::uint8_t>;

// Record n, counted from 1: what the file has of its 84 bytes, perhaps nothing.
RecordBytes runRecord(RecordBytes file, std::size_t n);

// Text of record 1; nothing where the length would cross the record or the end of the file.
std::optional<std::string> decodeHeaderLine(RecordBytes record);
bool decode(RecordBytes record, RunHeader& header);
bool decode(RecordBytes record, RunSample& sample);
bool decode(RecordBytes record, RunSetupBlock& block);
bool decode(RecordBytes record, RunAnalogBlock& block);
bool decode(RecordBytes record, RunTailBlock& block);

// The payloads, without the zero bytes that fill a record.
void encodeHeaderLine(ByteWriter& writer, const std::string& line);
void encode(ByteWriter& writer, const RunHeader& header);
void encode(ByteWriter& writer, const RunSample& sample);
void encode(ByteWriter& writer, const RunSetupBlock& block);
void encode(ByteWriter& writer, const RunAnalogBlock& block);
void encode(ByteWriter& writer, const RunTailBlock& block);

} // namespace kvo::core
