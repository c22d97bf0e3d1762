#pragma once
// Windows' own declarations, without the parts and the names that stand in the way of the standard
// library's. Empty elsewhere.
#ifdef _WIN32
#ifndef NOMINMAX // a standard library may have said so already
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#undef Yield // an empty leftover of old times, and a name of ours
#endif
