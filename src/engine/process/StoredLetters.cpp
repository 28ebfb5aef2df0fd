#include "engine/process/StoredLetters.h"

#include <cstdint>

#include "platform/Text.h"

namespace {

std::uint32_t CodePointOf(const std::wstring& letter) {
    const auto unit = [&](std::size_t index) { return static_cast<std::uint32_t>(letter[index]); };
    if (letter.size() < 2) return unit(0);
    return 0x10000 + ((unit(0) & 0x3FF) << 10) + (unit(1) & 0x3FF);
}

// As character tables have it, with four digits or more: not every letter can be seen.
std::wstring CodePointText(const std::wstring& letter) {
    std::wstring digits;
    for (std::uint32_t rest = CodePointOf(letter); rest != 0 || digits.size() < 4; rest /= 16) {
        digits.insert(digits.begin(), L"0123456789ABCDEF"[rest % 16]);
    }
    return L"U+" + digits;
}

}  // namespace

std::wstring LetterRefusal(const std::wstring& text, const std::wstring& where) {
    const std::wstring letter = FirstLetterBeyondAnsi(text);
    if (letter.empty()) return {};
    return L"Das Zeichen '" + letter + L"' (" + CodePointText(letter) + L") kann " + where +
           L" nicht gespeichert werden !!!";
}
