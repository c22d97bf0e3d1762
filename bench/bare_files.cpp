#include "bench/bare_files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kvo::bench {
namespace {

void demand(bool well, const char* what) {
    if (well) return;
    std::perror(what);
    std::exit(2);
}

int openOrEnd(const std::string& path, int flags) {
    const int file = open(path.c_str(), flags, 0644);
    demand(file >= 0, path.c_str());
    return file;
}

platform::Bytes readInSteps(const std::string& path, std::size_t step) {
    const int file = openOrEnd(path, O_RDONLY);
    struct stat facts {};
    demand(fstat(file, &facts) == 0, "fstat");
    platform::Bytes content(static_cast<std::size_t>(facts.st_size));
    for (std::size_t at = 0; at < content.size(); at += step) {
        const std::size_t wanted = std::min(step, content.size() - at);
        demand(pread(file, content.data() + at, wanted, static_cast<off_t>(at)) ==
                   static_cast<ssize_t>(wanted),
            "read");
    }
    close(file);
    return content;
}

void writeInSteps(const std::string& path, const platform::Bytes& content, std::size_t step) {
    const int file = openOrEnd(path, O_WRONLY | O_CREAT | O_TRUNC);
    for (std::size_t at = 0; at < content.size(); at += step) {
        const std::size_t wanted = std::min(step, content.size() - at);
        demand(pwrite(file, content.data() + at, wanted, static_cast<off_t>(at)) ==
                   static_cast<ssize_t>(wanted),
            "write");
    }
    demand(fsync(file) == 0, "fsync");
    close(file);
}

} // namespace

platform::Bytes bareRead(const std::string& path) {
    return readInSteps(path, 1U << 30);
}

platform::Bytes readByRecord(const std::string& path, std::size_t recordBytes) {
    return readInSteps(path, recordBytes);
}

void bareWrite(const std::string& path, const platform::Bytes& content) {
    writeInSteps(path, content, 1U << 30);
}

void syncFolder(const std::string& folder) {
    const int opened = openOrEnd(folder, O_RDONLY | O_DIRECTORY);
    demand(fsync(opened) == 0, "fsync");
    close(opened);
}

void writeByRecord(
    const std::string& path, const platform::Bytes& content, std::size_t recordBytes) {
    writeInSteps(path, content, recordBytes);
}

} // namespace kvo::bench
