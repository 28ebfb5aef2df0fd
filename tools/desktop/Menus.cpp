#include "desktop/Menus.h"

#include <algorithm>
#include <memory>

#include "desktop/MenuSpy.h"

namespace {

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
struct ViewCloser {
    void operator()(MenuSpyAnswer* view) const { UnmapViewOfFile(view); }
};
struct HookRemover {
    void operator()(HHOOK hook) const { UnhookWindowsHookEx(hook); }
};
using UniqueHook = std::unique_ptr<std::remove_pointer_t<HHOOK>, HookRemover>;

HMODULE SpyLibrary() {
    static const HMODULE library = LoadLibraryW(L"menuspy.dll");
    if (library == nullptr) throw DriverError("there is no menuspy.dll beside this program");
    return library;
}

UniqueHook HookInto(Window window) {
    const HMODULE library = SpyLibrary();
    const FARPROC procedure = GetProcAddress(library, kMenuSpyProcedure);
    return UniqueHook(SetWindowsHookExW(WH_CALLWNDPROC,
                                        reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(procedure)),
                                        library, GetWindowThreadProcessId(window.Handle(), nullptr)));
}

}  // namespace

std::vector<MenuEntry> MenuEntries(Window window) {
    const std::wstring name = kMenuSpyMemory + std::to_wstring(window.ProcessId());
    const std::unique_ptr<void, HandleCloser> mapping(CreateFileMappingW(
        INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(MenuSpyAnswer), name.c_str()));
    const std::unique_ptr<MenuSpyAnswer, ViewCloser> answer(static_cast<MenuSpyAnswer*>(
        MapViewOfFile(mapping.get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof(MenuSpyAnswer))));
    if (!answer) throw DriverError("no shared memory for the menu");
    {
        const UniqueHook hook = HookInto(window);
        window.Send(RegisterWindowMessageW(kMenuSpyMessage));
    }
    if (!answer->answered) throw DriverError("the program's menu could not be read");

    std::vector<MenuEntry> entries;
    std::transform(answer->entries, answer->entries + answer->count, std::back_inserter(entries),
                   [](const MenuSpyEntry& entry) {
                       return MenuEntry{entry.depth,   entry.number,  entry.separator,
                                        entry.enabled, entry.checked, entry.text};
                   });
    return entries;
}

std::optional<MenuEntry> FindMenuEntry(Window window, int number) {
    for (const MenuEntry& entry : MenuEntries(window)) {
        if (entry.number == number) return entry;
    }
    return std::nullopt;
}

Window WaitForPopUpMenu(DWORD processId) {
    return WaitFor("a popped-up menu", [&] {
        for (Window window : TopLevelWindows(processId)) {
            if (window.ClassName() == L"#32768") return window;
        }
        return Window();
    });
}
