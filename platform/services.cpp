#include "platform/services.h"

namespace kvo::platform {

Services& services() {
    static Services all;
    return all;
}

} // namespace kvo::platform
