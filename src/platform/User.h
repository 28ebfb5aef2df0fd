#pragma once

#include <string>

enum class MessageIcon { None, Information, Question, Error };

enum class PointerShape { Normal, Hourglass };

// The person in front of the screen: is told, is asked, sees the status line and the pointer, hears a sound.
class UserPort {
 public:
    virtual ~UserPort() = default;

    // A message box with an OK button. An empty title shows the application's.
    virtual void Tell(const std::wstring& text, const std::wstring& title = {},
                      MessageIcon icon = MessageIcon::None) = 0;
    // What is no failure: a hint, or why something is not done.
    void Inform(const std::wstring& text, const std::wstring& title = {}) {
        Tell(text, title, MessageIcon::Information);
    }
    // Tell for what the user did not ask for, and without waiting for him: the text comes when the
    // program is back in its message loop and free for it, never inside another program's call, and leaves
    // the keyboard where it is. A text that waits already is told once.
    virtual void TellLater(const std::wstring& text) = 0;
    // A question with Yes and No; `noIsDefault` preselects No. True for Yes.
    virtual bool Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) = 0;
    virtual void Status(const std::wstring& text) = 0;
    // Shows a pointer and returns the one shown before.
    virtual PointerShape ShowPointer(PointerShape shape) = 0;
    virtual void Beep() = 0;
    // Plays a wave file without waiting for its end; false when it cannot be played.
    virtual bool PlaySoundFile(const std::wstring& path) = 0;
};

// Shows the hourglass while it lives and restores the pointer that stood before, on every way out.
class HourglassScope {
 public:
    explicit HourglassScope(UserPort& user)
        : user_(user), previous_(user.ShowPointer(PointerShape::Hourglass)) {}
    ~HourglassScope() { user_.ShowPointer(previous_); }
    HourglassScope(const HourglassScope&) = delete;
    HourglassScope& operator=(const HourglassScope&) = delete;

 private:
    UserPort& user_;
    PointerShape previous_;
};
