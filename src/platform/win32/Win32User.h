#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Handles.h"
#include "platform/User.h"

// The user by message boxes, the main window's status line and the mouse pointer.
class Win32User : public UserPort {
 public:
    explicit Win32User(std::wstring title = L"NXClip") : title_(std::move(title)) {}

    void Tell(const std::wstring& text, const std::wstring& title, MessageIcon icon) override;
    void TellLater(const std::wstring& text) override;
    bool Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) override;
    void Status(const std::wstring& text) override;
    PointerShape ShowPointer(PointerShape shape) override;
    void Beep() override;
    bool PlaySoundFile(const std::wstring& path) override;

    // Owns the message boxes, or the modal dialog over it does. None when there is none yet.
    void SetMainWindow(WindowHandle window) { mainWindow_ = window; }
    // Shows the status text. Empty to forget the texts again: set it no longer than its window lives.
    void SetStatusLine(std::function<void(const std::wstring& text)> show) { showStatus_ = std::move(show); }
    // Tells the texts that come later. Empty to keep them until there is somebody.
    void SetTeller(std::function<void(const std::wstring& text)> tellLater);
    // From here on nobody answers: nothing is told, and every question gets its No.
    void Leave() { hasLeft_ = true; }
    bool HasLeft() const { return hasLeft_; }
    // The pointer to show wherever a window has none of its own.
    PointerShape Pointer() const { return pointer_; }

 private:
    int ShowBox(const std::wstring& text, const std::wstring& title, unsigned style);

    std::wstring title_;
    bool hasLeft_ = false;
    WindowHandle mainWindow_ = WindowHandle::None;
    std::function<void(const std::wstring& text)> showStatus_;
    PointerShape pointer_ = PointerShape::Normal;
    std::function<void(const std::wstring& text)> tellLater_;
    std::vector<std::wstring> waiting_;  // while there is nobody to tell it
};
