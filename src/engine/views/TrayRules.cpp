#include "engine/views/TrayRules.h"

#include "platform/Text.h"

namespace {

constexpr std::uint32_t kFirstMouseMessage = 512;

constexpr TrayMouseEvent kEvents[] = {
    {TrayMouse::Move, 0},         // 512 mouse move
    {TrayMouse::Down, 1},         // 513 left button down
    {TrayMouse::Up, 1},           // 514
    {TrayMouse::DoubleClick, 1},  // 515
    {TrayMouse::Down, 2},         // 516 right button down
    {TrayMouse::Up, 2},           // 517
    {TrayMouse::DoubleClick, 2},  // 518
};

}  // namespace

CaptureState CaptureStateOf(bool automatic, bool locked, bool dialogOpen) {
    if (locked) return CaptureState::Locked;
    if (!automatic) return CaptureState::Off;
    return dialogOpen ? CaptureState::Waiting : CaptureState::On;
}

std::wstring TrayTipOf(CaptureState state) {
    switch (state) {
        case CaptureState::On:
            return L"NXClip - automatische Erfassung ein";
        case CaptureState::Off:
            return L"NXClip - automatische Erfassung aus";
        case CaptureState::Locked:
            return L"NXClip - Erfassung gesperrt";
        case CaptureState::Waiting:
            return L"NXClip - Erfassung wartet auf ein offenes Fenster";
    }
    return L"NXClip";
}

std::optional<TrayMouseEvent> TrayEventOf(std::uint32_t mouseMessage) {
    const std::uint32_t index = mouseMessage - kFirstMouseMessage;
    if (index >= std::size(kEvents)) return std::nullopt;
    return kEvents[index];
}

std::string TrayTipBytes(std::wstring_view tip) {
    return AnsiFromText(tip.substr(0, tip.find(L'\0'))).substr(0, kTrayTipSize - 1);
}

std::uint32_t TrayFlags(bool hasIcon, std::wstring_view tip) {
    return 1u | (hasIcon ? 2u : 0u) | (tip.empty() ? 0u : 4u);
}
