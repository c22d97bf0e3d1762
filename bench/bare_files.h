#pragma once
// Files without any of the program's care: the peers of its reading and writing. A call that fails
// ends the measuring.
#include "platform/bytes.h"

#include <string>

namespace kvo::bench {

// The whole file in one read.
platform::Bytes bareRead(const std::string& path);
// The whole file, one read for each `recordBytes`.
platform::Bytes readByRecord(const std::string& path, std::size_t recordBytes);
// Written in one write, synced.
void bareWrite(const std::string& path, const platform::Bytes& content);
// Makes what stands in a folder outlive a power cut.
void syncFolder(const std::string& folder);
// Written with one write for each `recordBytes`, synced.
void writeByRecord(
    const std::string& path, const platform::Bytes& content, std::size_t recordBytes);

} // namespace kvo::bench
