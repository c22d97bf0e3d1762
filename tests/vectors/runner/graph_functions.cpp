// Golden vectors of the graph.
#include "vector_case.h"

namespace kvo::vectors {

void addGraphFunctions() {}

} // namespace kvo::vectors
