#pragma once
// The program's own files where a missing one is simply a new one: it is created empty. A file that
// is there and cannot be read is no new one: nothing is created, and the user is told.
#include "platform/files.h"

#include <string>

namespace kvo::core {

// The content of such a file, empty for a new one. `unread`, where it is given, takes why a file
// that is there could not be read, and is emptied else. Nobody must take a file that there is no
// memory for as empty: without `unread` this is thrown as std::bad_alloc.
platform::Bytes readOrCreate(
    const std::string& path, platform::Files& files, std::string* unread = nullptr);

} // namespace kvo::core
