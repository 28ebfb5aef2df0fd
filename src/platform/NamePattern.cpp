#include "platform/NamePattern.h"

#include <string>

#include "platform/Text.h"

namespace {

// Goes back to the last "*" whenever the rest does not fit: that takes the product of the two lengths at
// most.
bool Matches(std::wstring_view name, std::wstring_view pattern) {
    constexpr std::size_t kNone = std::wstring_view::npos;
    std::size_t at = 0, in = 0, star = kNone, afterStar = 0;
    while (at < name.size()) {
        if (in < pattern.size() && pattern[in] == L'*') {
            star = in++;
            afterStar = at;
        } else if (in < pattern.size() && (pattern[in] == L'?' || pattern[in] == name[at])) {
            ++in;
            ++at;
        } else if (star != kNone) {
            in = star + 1;
            at = ++afterStar;
        } else {
            return false;
        }
    }
    while (in < pattern.size() && pattern[in] == L'*')
        ++in;
    return in == pattern.size();
}

}  // namespace

bool MatchesNamePattern(std::wstring_view name, std::wstring_view pattern) {
    if (pattern == L"*.*") return true;
    return Matches(UpperCase(name), UpperCase(pattern));
}

bool IsNamePattern(std::wstring_view text) {
    return text.find_first_of(L"*?") != std::wstring_view::npos;
}
