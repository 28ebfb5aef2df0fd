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
