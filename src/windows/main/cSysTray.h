#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

#include "engine/views/TrayRules.h"
#include "windows/controls/Subclass.h"
#include "windows/controls/Timer.h"

// The program's icon in the notification area: an invisible control on the main window that turns the mouse
// over the icon into events.
class cSysTray {
 public:
    struct Events {
        std::function<void(std::int32_t id)> MouseMove;
        std::function<void(std::int16_t button, std::int32_t id)> MouseDown;
        std::function<void(std::int16_t button, std::int32_t id)> MouseUp;
        std::function<void(std::int16_t button, std::int32_t id)> MouseDblClick;
        // The icon came, or it was lost with the task bar: IsShown tells which.
        std::function<void()> ShownChanged;
    };

    cSysTray() = default;
    // Takes the icon away.
    ~cSysTray();
    cSysTray(const cSysTray&) = delete;
    cSysTray& operator=(const cSysTray&) = delete;

    bool Create(HWND parent, Events events);

    bool InTray() const { return inTray_; }
    // The system has taken the icon: the user can reach the program by it.
    bool IsShown() const { return added_; }
    // Puts the icon into the notification area or takes it away. True twice adds no second icon. While the
    // area is not there yet, as during a logon, it is tried again for a while, and when a task bar comes.
    void SetInTray(bool inTray);
    // Stored always; shown at once while the icon is in the tray, unless it is no icon (null). Not owned.
    void SetTrayIcon(HICON icon);
    void SetTrayTip(const std::wstring& tip);
    // Says something in a balloon at the icon; nothing while there is none.
    void Say(const std::wstring& title, const std::wstring& text);
    const std::wstring& TrayTip() const { return trayTip_; }

    // To be called when the task bar was started again: it has forgotten the icon.
    void TaskBarCreated();

 private:
    void OnMouse(std::uint32_t mouseMessage, std::int32_t id);
    bool Notify(DWORD command);
    void AddIcon();

    static constexpr int kMostTries = 30;

    HWND window_ = nullptr;
    Subclass ownMessage_;  // while the icon is in the tray
    HICON trayIcon_ = nullptr;
    std::wstring trayTip_ = L"NXClip - Zwischenablage";
    Events events_;
    bool inTray_ = false;
    bool added_ = false;
    int tries_ = 0;  // to add the icon, in vain
    Timer tryAgain_{[this] { AddIcon(); }};
};
