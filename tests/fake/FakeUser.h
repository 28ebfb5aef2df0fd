#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "fake/Failures.h"
#include "fake/FakeFiles.h"
#include "platform/User.h"

// A user who writes down what is shown and answers as told beforehand.
class FakeUser : public UserPort {
 public:
    struct Message {
        std::wstring text;
        std::wstring title;
        MessageIcon icon;
    };
    struct Question {
        std::wstring text;
        std::wstring title;
        bool noIsDefault;
        bool answer;
    };

    FakeUser(Failures& failures, const FakeFiles& files) : failures_(failures), files_(files) {}

    void Tell(const std::wstring& text, const std::wstring& title, MessageIcon icon) override;
    void TellLater(const std::wstring& text) override { tellings.push_back(text); }
    bool Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) override;
    void Status(const std::wstring& text) override { statuses.push_back(text); }
    PointerShape ShowPointer(PointerShape shape) override;
    void Beep() override { ++beeps; }
    bool PlaySoundFile(const std::wstring& path) override;

    // The text of the last message; empty when there was none.
    std::wstring LastMessage() const { return messages.empty() ? std::wstring() : messages.back().text; }
    std::wstring LastStatus() const { return statuses.empty() ? std::wstring() : statuses.back(); }

    std::vector<Message> messages;
    // What is to be told later.
    std::vector<std::wstring> tellings;
    std::vector<Question> questions;
    // The answers to come, true for Yes; No when there is none left.
    std::deque<bool> answers;
    std::vector<std::wstring> statuses;
    PointerShape pointer = PointerShape::Normal;
    // Every pointer that was shown, in order.
    std::vector<PointerShape> pointers;
    int beeps = 0;
    std::vector<std::wstring> sounds;
    // Runs while a message or a question stands on the screen; for what arrives meanwhile.
    std::function<void()> duringMessage;
    // Runs as a message or a question opens; FakePlatform looks there whether somebody has to wait for it.
    std::function<void(const std::wstring& text)> beforeMessage;

 private:
    Failures& failures_;
    const FakeFiles& files_;
};
