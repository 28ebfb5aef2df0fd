#include "windows/main/cSysTray.h"

#include <shellapi.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

#include "platform/win32/LateFunction.h"

namespace {

constexpr UINT kIconId = 1;

constexpr std::chrono::milliseconds kTryAgainAfter(1000);

}  // namespace

cSysTray::~cSysTray() {
    SetInTray(false);
}

bool cSysTray::Create(HWND parent, Events events) {
    events_ = std::move(events);
    window_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 0, 0, parent, nullptr,
                              GetModuleHandleW(nullptr), nullptr);
    return window_ != nullptr;
}

void cSysTray::SetInTray(bool inTray) {
    if (inTray == inTray_ || window_ == nullptr) return;
    if (inTray) {
        ownMessage_.Attach(window_, [this](UINT message, WPARAM id, LPARAM mouse) -> std::optional<LRESULT> {
            if (message != kTrayCallbackMessage) return std::nullopt;
            OnMouse(static_cast<std::uint32_t>(mouse), static_cast<std::int32_t>(id));
            return 0;
        });
        tries_ = 0;
        AddIcon();
    } else {
        tryAgain_.Stop();
        if (std::exchange(added_, false)) Notify(NIM_DELETE);
        ownMessage_.Detach();
    }
    inTray_ = inTray;
}

void cSysTray::AddIcon() {
    // A task bar may announce itself again and still have the icon, which it does not take twice.
    const bool added = Notify(NIM_ADD) || Notify(NIM_MODIFY);
    if (added || ++tries_ == kMostTries)
        tryAgain_.Stop();
    else
        tryAgain_.Start(kTryAgainAfter);
    if (std::exchange(added_, added) != added && events_.ShownChanged) events_.ShownChanged();
}

void cSysTray::SetTrayIcon(HICON icon) {
    trayIcon_ = icon;
    if (added_ && icon != nullptr) Notify(NIM_MODIFY);
}

void cSysTray::SetTrayTip(const std::wstring& tip) {
    trayTip_ = tip;
    if (added_) Notify(NIM_MODIFY);
}

void cSysTray::Say(const std::wstring& title, const std::wstring& text) {
    if (!added_) return;
    NOTIFYICONDATAW record{};
    record.cbSize = NOTIFYICONDATAW_V2_SIZE;
    record.hWnd = window_;
    record.uID = kIconId;
    record.uFlags = NIF_INFO;
    record.dwInfoFlags = NIIF_INFO;
    lstrcpynW(record.szInfoTitle, title.c_str(), static_cast<int>(std::size(record.szInfoTitle)));
    lstrcpynW(record.szInfo, text.c_str(), static_cast<int>(std::size(record.szInfo)));
    static const auto notify =
        LateFunction<decltype(&Shell_NotifyIconW)>(L"shell32.dll", "Shell_NotifyIconW");
    if (notify != nullptr) notify(NIM_MODIFY, &record);
}

void cSysTray::TaskBarCreated() {
    if (!inTray_) return;
    tries_ = 0;
    AddIcon();
}

bool cSysTray::Notify(DWORD command) {
    NOTIFYICONDATAA record{};
    // The first form of the record: every shell understands it.
    record.cbSize = NOTIFYICONDATAA_V1_SIZE;
    record.hWnd = window_;
    record.uID = kIconId;
    record.uFlags = TrayFlags(trayIcon_ != nullptr, trayTip_);
    record.uCallbackMessage = kTrayCallbackMessage;
    record.hIcon = trayIcon_;
    const std::string tip = TrayTipBytes(trayTip_);
    std::copy(tip.begin(), tip.end(), record.szTip);
    static const auto notify =
        LateFunction<decltype(&Shell_NotifyIconA)>(L"shell32.dll", "Shell_NotifyIconA");
    return notify != nullptr && notify(command, &record) != FALSE;
}

void cSysTray::OnMouse(std::uint32_t mouseMessage, std::int32_t id) {
    const std::optional<TrayMouseEvent> event = TrayEventOf(mouseMessage);
    if (!event) return;
    switch (event->kind) {
        case TrayMouse::Move:
            if (events_.MouseMove) events_.MouseMove(id);
            break;
        case TrayMouse::Down:
            if (events_.MouseDown) events_.MouseDown(event->button, id);
            break;
        case TrayMouse::Up:
            if (events_.MouseUp) events_.MouseUp(event->button, id);
            break;
        case TrayMouse::DoubleClick:
            if (events_.MouseDblClick) events_.MouseDblClick(event->button, id);
            break;
    }
}
