#pragma once
// Damages a file in the ways that files are damaged, the same way for the same number.
#include "platform/bytes.h"

namespace kvo::fuzz {

platform::Bytes damaged(const platform::Bytes& file, unsigned number);

} // namespace kvo::fuzz
