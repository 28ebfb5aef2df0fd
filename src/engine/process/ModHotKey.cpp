#include "engine/process/ModHotKey.h"

#include <string>

#include "engine/process/modOption.h"
#include "platform/Platform.h"

namespace {

constexpr std::uint32_t kAltAndControl = 3;

std::uint16_t atom = 0;
std::int32_t identifier = 0;

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
    return ThePlatform().windows.AddHotKey(window, candidate, kAltAndControl, LetterCode());
}

}  // namespace

void RegisterActivationHotKey(WindowHandle window) {
    UnregisterActivationHotKey(window);
    atom = ThePlatform().windows.AddGlobalAtom("CLIPATOM");
    identifier = static_cast<std::int16_t>(atom);
    if (identifier != 0 && TryIdentifier(window, identifier)) return;
    // The system may refuse an identifier outside the applications' range; a taken combination fails here
    // again.
    if (TryIdentifier(window, ApplicationIdentifier(atom))) identifier = ApplicationIdentifier(atom);
}

void UnregisterActivationHotKey(WindowHandle window) {
    if (identifier != 0) ThePlatform().windows.RemoveHotKey(window, identifier);
    if (atom != 0) ThePlatform().windows.DeleteGlobalAtom(atom);
    identifier = 0;
    atom = 0;
}

std::int32_t ActivationHotKeyIdentifier() {
    return identifier;
}

std::wstring HotKeyHint(const std::wstring& letter) {
    if (letter.size() != 1) return {};
    const std::wstring character = ThePlatform().windows.AltGrCharacter(letter.front());
    if (character.empty()) return {};
    return L"Auf Ihrer Tastatur schreibt AltGr+" + letter + L" das Zeichen \"" + character +
           L"\". Mit dieser Tastenkombination steht es in keinem Programm mehr zur Verfügung.";
}
