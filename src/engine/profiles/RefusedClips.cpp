#include "engine/profiles/RefusedClips.h"

#include <algorithm>
#include <cwchar>

#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

// By directory: the time of change of the newest file, and the numbers. "133000000:3-9,12". A file that is
// newer is another one, even under the same number. The clock is not asked: a server may have its own.
constexpr const wchar_t* kSection = L"FoundClips";

std::wstring KeyOf(const std::wstring& directory) {
    return UpperCase(WithoutBackslash(directory));
}

std::wstring TextOf(const std::vector<FoundClip>& clips) {
    FileTime newest = 0;
    for (const FoundClip& clip : clips)
        newest = std::max(newest, clip.changed);
    std::wstring text = NumberText(static_cast<std::int64_t>(newest)) + L":";
    for (std::size_t i = 0; i < clips.size();) {
        std::size_t last = i;
        while (last + 1 < clips.size() && clips[last + 1].number == clips[last].number + 1)
            ++last;
        text += NumberText(clips[i].number) + L"-" + NumberText(clips[last].number) + L",";
        i = last + 1;
    }
    return text;
}

struct Refusal {
    FileTime newest = 0;
    std::vector<std::pair<std::int64_t, std::int64_t>> ranges;

    bool Covers(const FoundClip& clip) const {
        return clip.changed <= newest && std::any_of(ranges.begin(), ranges.end(), [&](const auto& range) {
                   return range.first <= clip.number && clip.number <= range.second;
               });
    }
};

// Takes a number and the mark behind it; false when they do not stand there.
bool TakeNumber(const wchar_t*& text, wchar_t mark, std::int64_t& number) {
    wchar_t* end = nullptr;
    number = std::wcstoll(text, &end, 10);
    if (end == text || *end != mark) return false;
    text = end + 1;
    return true;
}

Refusal RefusalIn(const std::wstring& stored) {
    Refusal refusal;
    const wchar_t* text = stored.c_str();
    std::int64_t newest = 0, first = 0, last = 0;
    if (!TakeNumber(text, L':', newest)) return {};
    refusal.newest = static_cast<FileTime>(newest);
    while (TakeNumber(text, L'-', first) && TakeNumber(text, L',', last))
        refusal.ranges.emplace_back(first, last);
    return refusal;
}

}  // namespace

void LeaveOutRefused(std::vector<FoundClip>& clips, const std::wstring& directory) {
    const Refusal refusal = RefusalIn(ThePlatform().settings.Read(kSection, KeyOf(directory), L""));
    std::erase_if(clips, [&](const FoundClip& clip) { return refusal.Covers(clip); });
}

void KeepRefusal(const std::vector<FoundClip>& clips, const std::wstring& directory) {
    ThePlatform().settings.Write(kSection, KeyOf(directory), TextOf(clips));
}
