#pragma once
// Clears the upper halves of the processor's wide vector registers. Some code of the toolkit (the
// filling of an image) leaves them used, and from then on all our arithmetic, which knows only the
// lower halves, runs at half speed. Costs some nanoseconds; does nothing on other processors.

namespace kvo::platform {

void clearWideRegisters();

} // namespace kvo::platform
