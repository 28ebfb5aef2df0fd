#include "fake/FakeUser.h"

#include <utility>

#include "platform/Busy.h"

void FakeUser::Tell(const std::wstring& text, const std::wstring& title, MessageIcon icon) {
    const BusyScope open(Busy::Dialog);
    if (beforeMessage) beforeMessage(text);
    messages.push_back({text, title, icon});
    if (duringMessage) duringMessage();
}

bool FakeUser::Ask(const std::wstring& text, const std::wstring& title, bool noIsDefault) {
    const BusyScope open(Busy::Dialog);
    if (beforeMessage) beforeMessage(text);
    bool answer = false;
    if (!answers.empty()) {
        answer = answers.front();
        answers.pop_front();
    }
    questions.push_back({text, title, noIsDefault, answer});
    if (duringMessage) duringMessage();
    return answer;
}

PointerShape FakeUser::ShowPointer(PointerShape shape) {
    pointers.push_back(shape);
    return std::exchange(pointer, shape);
}

bool FakeUser::PlaySoundFile(const std::wstring& path) {
    if (failures_.Strikes() || !files_.Has(path)) return false;
    sounds.push_back(path);
    return true;
}
