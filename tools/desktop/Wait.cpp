#include "desktop/Wait.h"

#include "desktop/Outline.h"

DriverError::DriverError(std::string_view what)
    : std::runtime_error(std::string(what) + "\n" + ScreenOutline()) {}

void Pause() {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(kPollPause.count()), QS_ALLINPUT);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}
