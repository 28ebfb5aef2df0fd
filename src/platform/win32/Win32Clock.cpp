#include "platform/win32/Win32Clock.h"

#include <windows.h>

namespace {

using Formatter = int(WINAPI*)(LCID, DWORD, const SYSTEMTIME*, LPCWSTR, LPWSTR, int);

std::wstring Formatted(Formatter format, DWORD flags, const SYSTEMTIME& time) {
    wchar_t text[256];
    const int length = format(LOCALE_USER_DEFAULT, flags, &time, nullptr, text, 256);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length) - 1) : std::wstring();
}

// The date becomes a field of a tag, whose fields "&" parts and which is stored in the code page: the user's
// own separators must not break it, nor signs that are there for the eye alone.
wchar_t Storable(wchar_t c) {
    if (c == L'&') return L'.';
    const bool thinOrFixedBlank = c == 0x00A0 || c == 0x2009 || c == 0x202F;
    return thinOrFixedBlank ? L' ' : c;
}

FileTime Joined(const FILETIME& time) {
    return static_cast<FileTime>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

bool IsDirectionMark(wchar_t c) {
    return c == 0x200E || c == 0x200F;
}

}  // namespace

FileTime Win32Clock::Now() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return Joined(now);
}

std::wstring Win32Clock::DateText(FileTime time) {
    const FILETIME fileTime = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    SYSTEMTIME universal, local;
    if (!FileTimeToSystemTime(&fileTime, &universal) ||
        !SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local))
        return {};
    const std::wstring text =
        Formatted(GetDateFormatW, DATE_SHORTDATE, local) + L' ' + Formatted(GetTimeFormatW, 0, local);
    std::wstring storable;
    for (const wchar_t c : text)
        if (!IsDirectionMark(c)) storable += Storable(c);
    return storable;
}

std::chrono::milliseconds Win32Clock::OwnWork() {
    FILETIME created, ended, inKernel, inProgram;
    if (!GetThreadTimes(GetCurrentThread(), &created, &ended, &inKernel, &inProgram))
        return std::chrono::milliseconds(0);
    constexpr FileTime kPerMillisecond = 10'000;
    return std::chrono::milliseconds((Joined(inKernel) + Joined(inProgram)) / kPerMillisecond);
}

void Win32Clock::Pause(std::chrono::milliseconds duration) {
    Sleep(static_cast<DWORD>(duration.count()));
}
