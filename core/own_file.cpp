#include "core/own_file.h"

#include <new>

namespace kvo::core {

platform::Bytes readOrCreate(const std::string& path, platform::Files& files, std::string* unread) {
    auto file = files.readOrReason(path);
    const bool isNew = !file && file.failure == platform::FileFailure::notFound;
    if (unread != nullptr) *unread = file || isNew ? std::string() : file.message;
    const bool tooLarge = !file && file.failure == platform::FileFailure::noMemory;
    if (tooLarge && unread == nullptr) throw std::bad_alloc();
    // Where it cannot be created it reads as empty all the same.
    if (isNew) (void)files.createEmpty(path);
    return file ? std::move(*file.content) : platform::Bytes{};
}

} // namespace kvo::core
