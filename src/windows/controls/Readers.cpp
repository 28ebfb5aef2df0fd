#include "windows/controls/Readers.h"

// COM, what reads the screen, and subclassing by the common controls need <windows.h> in front of them.
#include <commctrl.h>
#include <objbase.h>

#include <oleacc.h>

#include "windows/controls/ComObject.h"
#include "windows/controls/Ole.h"

namespace {

constexpr UINT_PTR kAskedId = 3;
constexpr auto kClient = static_cast<DWORD>(OBJID_CLIENT);

ComOwned<IAccPropServices> PropertyServices() {
    void* services = nullptr;
    if (NeedOle())
        CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                         &services);
    return ComOwned<IAccPropServices>(static_cast<IAccPropServices*>(services));
}

void Tell(HWND window, const ReaderDescription& description) {
    const auto services = PropertyServices();
    if (services == nullptr) return;
    services->SetHwndPropStr(window, kClient, CHILDID_SELF, PROPID_ACC_NAME, description.name);
    VARIANT role{};
    role.vt = VT_I4;
    role.lVal = description.role;
    if (description.role != 0) services->SetHwndProp(window, kClient, CHILDID_SELF, PROPID_ACC_ROLE, role);
}

void TakeBack(HWND window) {
    MSAAPROPID told[] = {PROPID_ACC_NAME, PROPID_ACC_ROLE};
    if (const auto services = PropertyServices(); services != nullptr)
        services->ClearHwndProps(window, kClient, CHILDID_SELF, told, 2);
}

// `description` is 0 once it has been told.
LRESULT CALLBACK Asked(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                       DWORD_PTR description) noexcept {
    if (message == WM_GETOBJECT && static_cast<DWORD>(lParam) == kClient && description != 0) {
        SetWindowSubclass(window, &Asked, kAskedId, 0);
        Tell(window, *reinterpret_cast<const ReaderDescription*>(description));
    }
    if (message == WM_NCDESTROY) {
        if (description == 0) TakeBack(window);
        RemoveWindowSubclass(window, &Asked, kAskedId);
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void NameByHiddenText(HWND window, const wchar_t* name) {
    const HWND text = CreateWindowExW(0, L"STATIC", name, WS_CHILD, 0, 0, 0, 0, GetParent(window), nullptr,
                                      GetModuleHandleW(nullptr), nullptr);
    const HWND before = GetWindow(window, GW_HWNDPREV);
    SetWindowPos(text, before != nullptr ? before : HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void TellReaders(HWND window, const ReaderDescription& description) {
    SetWindowSubclass(window, &Asked, kAskedId, reinterpret_cast<DWORD_PTR>(&description));
}
