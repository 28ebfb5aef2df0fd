#include "platform/Busy.h"

#include <algorithm>
#include <array>

namespace {

std::array<int, kBusyCount> scopes{};

int& ScopesOf(Busy with) noexcept {
    return scopes[static_cast<std::size_t>(with)];
}

}  // namespace

BusyScope::BusyScope(Busy with) noexcept : with_(with) {
    ++ScopesOf(with_);
}

BusyScope::~BusyScope() {
    --ScopesOf(with_);
}

bool Is(Busy with) noexcept {
    return ScopesOf(with) > 0;
}

bool IsFree() noexcept {
    return std::all_of(scopes.begin(), scopes.end(), [](int count) { return count == 0; });
}
