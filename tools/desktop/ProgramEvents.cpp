#include "desktop/ProgramEvents.h"

#include "desktop/Wait.h"

namespace {

ProgramEvents* told = nullptr;

}  // namespace

// Wine tells of new windows and of the keyboard's focus, and of nothing else: not of a window that is shut
// out, nor of menus.
ProgramEvents::ProgramEvents(Window main)
    : main_(main),
      hook_(SetWinEventHook(EVENT_OBJECT_CREATE, EVENT_OBJECT_CREATE, nullptr, &ProgramEvents::OnCreated,
                            main.ProcessId(), 0, WINEVENT_OUTOFCONTEXT)) {
    if (hook_ == nullptr) throw DriverError("the system tells nothing of a program");
    told = this;
}

ProgramEvents::~ProgramEvents() {
    UnhookWinEvent(hook_);
    told = nullptr;
}

void CALLBACK ProgramEvents::OnCreated(HWINEVENTHOOK /*hook*/, DWORD /*event*/, HWND window, LONG object,
                                       LONG /*child*/, DWORD /*thread*/, DWORD /*time*/) noexcept {
    if (told == nullptr || object != OBJID_WINDOW) return;
    wchar_t name[16] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (lstrcmpW(name, L"#32768") == 0) ++told->menus_;
    if (lstrcmpW(name, L"#32770") == 0 && !told->main_.Enabled()) ++told->dialogs_;
}
