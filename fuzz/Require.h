#pragma once

#include <cstdio>
#include <cstdlib>

// What must hold whatever the input: a fuzz target ends here when it does not, and says where.
#define Require(condition)                                                               \
    do {                                                                                 \
        if (!(condition)) {                                                              \
            std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #condition); \
            std::abort();                                                                \
        }                                                                                \
    } while (false)
