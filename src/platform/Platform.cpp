#include "platform/Platform.h"

#include <cstdlib>
#include <utility>

namespace {
Platform* current = nullptr;
}

Platform& ThePlatform() {
    if (current == nullptr) std::abort();
    return *current;
}

Platform* UsePlatform(Platform* platform) {
    return std::exchange(current, platform);
}
