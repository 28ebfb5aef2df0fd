#include "platform/Guard.h"

#include "platform/Platform.h"
#include "platform/RuntimeError.h"

void TellEscapedException() noexcept {
    try {
        ThePlatform().user.TellLater(L"Fataler Fehler: " + ErrorBeingHandled().Description());
    } catch (...) {
        // Not even the memory for a message is left: going on is all that can be done.
    }
}
