#pragma once

#include <windows.h>

// A viewer in a thread of its own, which stands in front of every program that joined the chain before it.
// Once it hangs it answers nothing until it goes.
class HungViewer {
 public:
    HungViewer() {
        thread_ = CreateThread(nullptr, 0, &HungViewer::Run, this, 0, nullptr);
        WaitForSingleObject(joined_, INFINITE);
    }
    ~HungViewer() {
        SetEvent(goes_);
        WaitForSingleObject(thread_, INFINITE);
        for (const HANDLE handle : {thread_, joined_, hangs_, goes_})
            CloseHandle(handle);
    }
    HungViewer(const HungViewer&) = delete;
    HungViewer& operator=(const HungViewer&) = delete;

    void Hang() { SetEvent(hangs_); }

 private:
    static DWORD WINAPI Run(void* viewer) noexcept {
        static_cast<HungViewer*>(viewer)->Live();
        return 0;
    }
    void Live() const {
        const HWND window =
            CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
        const HWND next = SetClipboardViewer(window);
        SetEvent(joined_);
        const HANDLE ends[] = {hangs_, goes_};
        while (MsgWaitForMultipleObjects(2, ends, FALSE, INFINITE, QS_ALLINPUT) == WAIT_OBJECT_0 + 2) {
            MSG message;
            while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
                DispatchMessageW(&message);
        }
        WaitForSingleObject(goes_, INFINITE);
        ChangeClipboardChain(window, next);
        DestroyWindow(window);
    }

    const HANDLE joined_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HANDLE hangs_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    const HANDLE goes_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE thread_ = nullptr;
};
