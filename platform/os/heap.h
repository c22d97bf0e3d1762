#pragma once
// How the program deals with the memory that it has freed.

namespace kvo::platform_os {

// Keeps freed memory of up to 64 MB for the next use. Each load and save of a run takes and frees a
// few buffers of its size, a long index some of megabytes, and to give these pages back to the
// system and fetch them again would take longer than the work in them. Nothing is done where the C
// library does not know of it.
void keepFreedMemory();

} // namespace kvo::platform_os
