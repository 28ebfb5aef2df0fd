#include "engine/views/BrokenLines.h"

#include <algorithm>

namespace {

constexpr std::wstring_view kBreak = L"\r\n";

bool IsSecondHalf(wchar_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

std::wstring BrokenLines::Append(std::wstring_view text) {
    std::wstring shown;
    shown.reserve(text.size() + text.size() / kLongestLine * kBreak.size());
    for (const wchar_t unit : text) {
        const bool endsLine = unit == L'\r' || unit == L'\n';
        const bool isLong = column_ >= (behindSpace_ ? kLongLine : kLongestLine);
        if (isLong && !endsLine && !IsSecondHalf(unit)) {
            breaks_.push_back(size_ + shown.size());
            shown += kBreak;
            column_ = 0;
        }
        shown += unit;
        behindSpace_ = unit == L' ';
        column_ = endsLine ? 0 : column_ + 1;
    }
    size_ += shown.size();
    return shown;
}

std::wstring BrokenLines::Original(std::wstring_view shown, std::size_t from) const {
    std::wstring text;
    text.reserve(shown.size());
    std::size_t done = 0;
    for (const std::size_t place : breaks_) {
        // A selection may begin or end in the middle of a break.
        const std::size_t begin = std::clamp(place, from, from + shown.size()) - from;
        const std::size_t end = std::clamp(place + kBreak.size(), from, from + shown.size()) - from;
        text += shown.substr(done, begin - done);
        done = end;
    }
    return text.append(shown.substr(done));
}

std::size_t BrokenLines::ShownPlace(std::size_t original) const {
    std::size_t place = original;
    for (const std::size_t begin : breaks_) {
        if (begin > place) break;
        place += kBreak.size();
    }
    return place;
}

std::size_t BrokenLines::OriginalPlace(std::size_t shown) const {
    std::size_t place = shown;
    for (const std::size_t begin : breaks_) {
        if (begin >= shown) break;
        place -= std::min(shown - begin, kBreak.size());
    }
    return place;
}

bool BrokenLines::HasBreaks(std::size_t from, std::size_t to) const {
    return std::any_of(breaks_.begin(), breaks_.end(),
                       [&](std::size_t place) { return place < to && place + kBreak.size() > from; });
}
