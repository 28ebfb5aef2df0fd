#pragma once

#include <cstdlib>

// What must hold whatever the input: a fuzz target ends here when it does not.
inline void Require(bool condition) {
    if (!condition) std::abort();
}
