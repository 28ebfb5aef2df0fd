#include "engine/process/ModHotKey.h"

#include <string>

#include "engine/process/modOption.h"
#include "platform/Platform.h"

namespace {

constexpr std::uint32_t kAltAndControl = 3;

// Beside all identifiers that an atom leads to.
constexpr std::int32_t kProbe = 0x3FFF;

std::uint16_t atom = 0;
std::int32_t identifier = 0;
// What is registered: the window that gets the message, and the letter; 0 when another program has it.
WindowHandle registeredFor = WindowHandle::None;
std::uint32_t registeredLetter = 0;

// Global atoms stand above the range that belongs to applications; this is the place below it that an atom
// leads to, never 0.
std::int32_t ApplicationIdentifier(std::uint16_t fromAtom) {
    return 0x4000 | (fromAtom & 0x3FFF);
}

std::uint32_t LetterCode() {
    const std::wstring& letter = Options().KeyActivate;
    return letter.empty() ? 0 : static_cast<std::uint32_t>(letter.front());
}

bool TryIdentifier(WindowHandle window, std::int32_t candidate) {
    if (!ThePlatform().windows.AddHotKey(window, candidate, kAltAndControl, LetterCode())) return false;
    identifier = candidate;
    registeredLetter = LetterCode();
    return true;
}

bool IsFree(wchar_t letter) {
    if (static_cast<std::uint32_t>(letter) == registeredLetter) return true;
    if (!ThePlatform().windows.AddHotKey(registeredFor, kProbe, kAltAndControl, letter)) return false;
    ThePlatform().windows.RemoveHotKey(registeredFor, kProbe);
    return true;
}

// The next free letter that writes nothing on the user's keyboard; 0 when there is none.
wchar_t FreeLetterAfter(wchar_t taken) {
    constexpr int kLetters = L'Z' - L'A' + 1;
    for (int step = 1; step < kLetters; ++step) {
        const auto letter = static_cast<wchar_t>(L'A' + (taken - L'A' + step) % kLetters);
        if (ThePlatform().windows.AltGrCharacter(letter).empty() && IsFree(letter)) return letter;
    }
    return 0;
}

bool IsLetter(const std::wstring& text) {
    return text.size() == 1 && text.front() >= L'A' && text.front() <= L'Z';
}

}  // namespace

bool RegisterActivationHotKey(WindowHandle window) {
    UnregisterActivationHotKey(window);
    registeredFor = window;
    atom = ThePlatform().windows.AddGlobalAtom("CLIPATOM");
    identifier = static_cast<std::int16_t>(atom);
    // The system may refuse an identifier outside the applications' range; a taken combination fails here
    // again.
    return (identifier != 0 && TryIdentifier(window, identifier)) ||
           TryIdentifier(window, ApplicationIdentifier(atom));
}

void UnregisterActivationHotKey(WindowHandle window) {
    if (identifier != 0) ThePlatform().windows.RemoveHotKey(window, identifier);
    if (atom != 0) ThePlatform().windows.DeleteGlobalAtom(atom);
    identifier = 0;
    atom = 0;
    registeredLetter = 0;
}

std::wstring TakenHotKeyText(const std::wstring& letter) {
    std::wstring text = L"ALT+CTRL+" + letter + L" benutzt schon ein anderes Programm.";
    const wchar_t free = IsLetter(letter) ? FreeLetterAfter(letter.front()) : L'\0';
    if (free != 0) text += std::wstring(L" Frei ist ALT+CTRL+") + free + L'.';
    return text;
}

std::int32_t ActivationHotKeyIdentifier() {
    return identifier;
}

std::wstring HotKeyHint(const std::wstring& letter) {
    if (!IsLetter(letter)) return {};
    if (!IsFree(letter.front())) return TakenHotKeyText(letter);
    const std::wstring character = ThePlatform().windows.AltGrCharacter(letter.front());
    if (character.empty()) return {};
    return L"Auf Ihrer Tastatur schreibt AltGr+" + letter + L" das Zeichen \"" + character +
           L"\". Mit dieser Tastenkombination steht es in keinem Programm mehr zur Verfügung.";
}
