#pragma once
// A raw session decoded again: the whole course of a download, over the line as it was noted.
#include "link/raw_session.h"
#include "platform/bytes.h"

#include <optional>
#include <string>
#include <vector>

namespace kvo::link {

struct Replay {
    std::optional<platform::Bytes> runFile; // nothing where it fails, as it did then
    std::string runName;
    std::vector<std::string> told; // every box that a user would have seen, without its title's own
    std::int32_t surplus = 0;      // bytes too many behind the last sample; negative: too few
    std::uint32_t turns = 0;       // of waiting, 1/32 ms each
};

// Touches nothing outside; a session without a title is given the number 1 should it now come to
// its end.
Replay replayDownload(const RawSession& session);

} // namespace kvo::link
