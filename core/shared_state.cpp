#include "core/shared_state.h"

namespace kvo::core {

SharedState& state() {
    static SharedState all;
    return all;
}

} // namespace kvo::core
