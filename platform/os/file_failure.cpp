#include "platform/os/file_failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace kvo::platform_os {

namespace {

using platform::FileFailure;

struct Row {
    int error;
    FileFailure failure;
    const char* words;
};

constexpr const char* diskIsFull = "The disk is full. Make room on it and try again.";
constexpr const char* notReady = "The disk is not ready. Put it in or connect it, and try again.";
constexpr const char* diskError = "The disk reports an error.";

constexpr std::array readRows{
    Row{ENOENT, FileFailure::notFound, "It is not there."},
    Row{ENOTDIR, FileFailure::notFound, "It is not there."},
    Row{EACCES, FileFailure::notPermitted, "You are not permitted to read it. Ask its owner."},
    Row{EPERM, FileFailure::notPermitted, "You are not permitted to read it. Ask its owner."},
    Row{EIO, FileFailure::other, diskError},
};

constexpr const char* notPermitted =
    "You are not permitted to write in this folder. Ask its owner, or use the program in a folder "
    "of your own.";

constexpr std::array writeRows{
    Row{ENOSPC, FileFailure::full, diskIsFull},
#ifdef EDQUOT
    Row{EDQUOT, FileFailure::full, "Your share of the disk is used up. Make room and try again."},
#endif
    Row{EROFS, FileFailure::notPermitted,
        "The disk can only be read. Choose another place or let it be written."},
    Row{EACCES, FileFailure::notPermitted, notPermitted},
    Row{EPERM, FileFailure::notPermitted, notPermitted},
    Row{ENOENT, FileFailure::noSuchPath, "The folder is not there."},
    Row{ENOTDIR, FileFailure::noSuchPath, "The folder is not there."},
    Row{EIO, FileFailure::other, diskError},
};

// A drive without a disk, and a connection that was cut, whichever way the file goes.
constexpr std::array goneRows{
    Row{ENODEV, FileFailure::notReady, notReady},
    Row{ENXIO, FileFailure::notReady, notReady},
#ifdef ENOMEDIUM
    Row{ENOMEDIUM, FileFailure::notReady, notReady},
#endif
#ifdef ESTALE
    Row{ESTALE, FileFailure::notReady, notReady},
#endif
#ifdef EHOSTDOWN
    Row{EHOSTDOWN, FileFailure::notReady, notReady},
#endif
    Row{ENOTCONN, FileFailure::notReady, notReady},
    Row{ETIMEDOUT, FileFailure::notReady, notReady},
};

template <typename Rows> Cause causeIn(const Rows& rows, int error) {
    const auto isIt = [error](const Row& row) { return row.error == error; };
    if (const auto row = std::find_if(rows.begin(), rows.end(), isIt); row != rows.end()) {
        return {row->failure, row->words};
    }
    const auto row = std::find_if(goneRows.begin(), goneRows.end(), isIt);
    if (row != goneRows.end()) return {row->failure, row->words};
    return {FileFailure::other, std::string(std::strerror(error)) + "."};
}

} // namespace

Cause causeOfRead(int error) {
    return causeIn(readRows, error);
}

Cause causeOfWrite(int error) {
    return causeIn(writeRows, error);
}

int errnoOf(const std::error_code& error) {
    return error.default_error_condition().value();
}

} // namespace kvo::platform_os
