#pragma once

#include "platform/RuntimeError.h"

// The number of the error that `action` ends with, 0 when it ends well.
template <typename Action>
int ErrorNumberOf(Action action) {
    try {
        action();
        return 0;
    } catch (const RuntimeError& error) {
        return error.Number();
    }
}
