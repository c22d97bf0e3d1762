#include "core/opening.h"

#include "core/data_types.h"
#include "core/paths.h"
#include "core/run_file.h"
#include "core/run_records.h"

#include <algorithm>

namespace kvo::core {
namespace {

// What stands in front of the last separator.
std::string folderAround(const std::string& path) {
    const std::size_t end = path.find_last_of("/\\");
    return end == std::string::npos ? std::string() : path.substr(0, end);
}

// The last name counts in any case, as the files of a folder from another system have it.
bool isSameFolder(const std::string& a, const std::string& b) {
    return a == b || (folderAround(a) == folderAround(b) &&
                         upperCased(baseName(a)) == upperCased(baseName(b)));
}

bool isRun(const platform::Bytes& content) {
    const auto line = decodeHeaderLine(runRecord(content, 1));
    return line && dataTypeFacts(typeInFront(*line)) != nullptr;
}

} // namespace

OpenedThing thingAt(
    const std::string& path, const std::string& ownData, const platform::Files& files) {
    if (files.folderExists(path)) return OpenedThing::folder;
    const auto content = files.readOrReason(path);
    if (!content && content.failure == platform::FileFailure::notFound) return OpenedThing::nothing;
    if (!content || !isRun(*content.content)) return OpenedThing::noRun;
    return isSameFolder(folderAround(path), ownData) ? OpenedThing::ownRun
                                                     : OpenedThing::runElsewhere;
}

std::string folderOfRun(const std::string& path) {
    const std::string data = folderAround(path);
    return upperCased(baseName(data)) == "DATA" ? folderAround(data) : std::string();
}

std::vector<std::string> withRecent(std::vector<std::string> list, const std::string& path) {
    list = withoutRecent(std::move(list), path);
    list.insert(list.begin(), path);
    if (list.size() > mostRecent) list.resize(mostRecent);
    return list;
}

std::vector<std::string> withoutRecent(std::vector<std::string> list, const std::string& path) {
    list.erase(std::remove(list.begin(), list.end(), path), list.end());
    return list;
}

} // namespace kvo::core
