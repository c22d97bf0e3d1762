// Golden vectors of the logger link.
#include "vector_case.h"

namespace kvo::vectors {

void addLinkFunctions() {}

} // namespace kvo::vectors
