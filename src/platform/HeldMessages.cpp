#include "platform/HeldMessages.h"

#include <utility>

#include "platform/Guard.h"

HeldMessages::HeldMessages()
    : outer_(ThePlatform()), inner_{outer_.clipboard, outer_.memory, outer_.metafiles, outer_.files,
                                    outer_.settings,  *this,         outer_.windows,   outer_.clock} {
    UsePlatform(&inner_);
}

HeldMessages::~HeldMessages() {
    UsePlatform(&outer_);
    Guarded([&] { TellAll(messages_); });
}

std::vector<HeldMessages::Message> HeldMessages::Take() {
    return std::exchange(messages_, {});
}

void HeldMessages::Tell(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
    messages_.push_back({text, title, icon});
}

void HeldMessages::TellLater(const std::wstring& text) {
    outer_.user.TellLater(text);
}

// A question cannot wait for its answer, so nothing is done that would need a Yes.
bool HeldMessages::Ask(const std::wstring&, const std::wstring&, bool) {
    return false;
}

void HeldMessages::Status(const std::wstring& text) {
    outer_.user.Status(text);
}

PointerShape HeldMessages::ShowPointer(PointerShape shape) {
    return outer_.user.ShowPointer(shape);
}

void HeldMessages::Beep() {
    outer_.user.Beep();
}

bool HeldMessages::PlaySoundFile(const std::wstring& path) {
    return outer_.user.PlaySoundFile(path);
}

void TellAll(const std::vector<HeldMessages::Message>& messages) {
    for (const HeldMessages::Message& message : messages)
        ThePlatform().user.Tell(message.text, message.title, message.icon);
}
