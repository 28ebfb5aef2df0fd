#include "platform/Guard.h"

#include <exception>
#include <new>
#include <string>

#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

std::wstring DescriptionOfCurrent() {
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error.Description();
    } catch (const std::bad_alloc&) {
        return RuntimeError(ErrorNumber::OutOfMemory).Description();
    } catch (const std::exception& error) {
        return TextFromAnsi(error.what());
    } catch (...) {
        return L"unbekannt";
    }
}

}  // namespace

void TellEscapedException() noexcept {
    try {
        ThePlatform().user.TellLater(L"Fataler Fehler: " + DescriptionOfCurrent());
    } catch (...) {
        // Not even the memory for a message is left: going on is all that can be done.
    }
}
