#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The rules of the icon in the notification area, which do not need the window behind it.

// The message by which the system tells the window of the mouse over the icon.
inline constexpr std::uint32_t kTrayCallbackMessage = 1125;
// The bytes of a tip in the notification record, its terminator included.
inline constexpr std::size_t kTrayTipSize = 64;

enum class TrayMouse { Move, Down, Up, DoubleClick };

struct TrayMouseEvent {
    TrayMouse kind;
    std::int16_t button;  // 1 left, 2 right; 0 for a move

    friend bool operator==(const TrayMouseEvent&, const TrayMouseEvent&) = default;
};

// What becomes of the next copy of another program.
enum class CaptureState {
    On,       // it is taken
    Off,      // it is not
    Locked,   // nothing is taken, not by command either
    Waiting,  // a dialog of this program is in the way
};
CaptureState CaptureStateOf(bool automatic, bool locked, bool dialogOpen);
// The tool tip that says so.
std::wstring TrayTipOf(CaptureState state);

// The event that a mouse message over the icon raises; none for messages other than 512 to 518.
std::optional<TrayMouseEvent> TrayEventOf(std::uint32_t mouseMessage);

// The tip as it goes into the notification record: ANSI bytes up to the first zero, cut to leave room for the
// terminator.
std::string TrayTipBytes(std::wstring_view tip);

// The flags of the notification record: message 1, icon 2, tip 4.
std::uint32_t TrayFlags(bool hasIcon, std::wstring_view tip);
