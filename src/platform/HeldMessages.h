#pragma once

#include <string>
#include <vector>

#include "platform/Platform.h"

// While one lives, no message box opens: what the user is told waits in its order. For stretches in which a
// box would keep other programs from the clipboard, or let commands in on something half made. They nest; the
// outermost one tells at its end what nobody has taken.
class HeldMessages : private UserPort {
 public:
    struct Message {
        std::wstring text;
        std::wstring title;
        MessageIcon icon;
    };

    HeldMessages();
    ~HeldMessages() override;
    HeldMessages(const HeldMessages&) = delete;
    HeldMessages& operator=(const HeldMessages&) = delete;

    // What has been held so far; it is the caller's to tell.
    std::vector<Message> Take();

 private:
    void Tell(const std::wstring& text, const std::wstring& title, MessageIcon icon) override;
    void TellLater(const std::wstring& text) override;
    bool Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) override;
    void Status(const std::wstring& text) override;
    PointerShape ShowPointer(PointerShape shape) override;
    void Beep() override;
    bool PlaySoundFile(const std::wstring& path) override;

    Platform& outer_;
    Platform inner_;
    std::vector<Message> messages_;
};

// Tells messages in their order.
void TellAll(const std::vector<HeldMessages::Message>& messages);
