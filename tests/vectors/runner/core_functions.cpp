// Golden vectors of numbers, texts and files.
#include "vector_tools.h"

namespace kvo::vectors {

void addCoreFunctions() {}

} // namespace kvo::vectors
