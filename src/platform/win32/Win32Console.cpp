#include "platform/win32/Win32Console.h"

#include <windows.h>

#include <algorithm>

#include "platform/Text.h"

namespace {

bool IsConsole(HANDLE stream) {
    DWORD mode;
    return GetConsoleMode(stream, &mode) != 0;
}

// The console takes no more than some ten thousand letters at once.
constexpr std::size_t kMostLetters = 8000;

void Put(DWORD which, const std::wstring& text) {
    const HANDLE stream = GetStdHandle(which);
    DWORD count;
    if (!IsConsole(stream)) {
        const std::string bytes = Utf8FromText(text);
        WriteFile(stream, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
        return;
    }
    for (std::size_t at = 0; at < text.size(); at += kMostLetters) {
        const auto letters = static_cast<DWORD>(std::min(kMostLetters, text.size() - at));
        WriteConsoleW(stream, text.data() + at, letters, &count, nullptr);
    }
}

bool ReadOne(HANDLE stream, std::string& bytes, std::wstring& letters) {
    DWORD count = 0;
    if (IsConsole(stream)) {
        wchar_t letter;
        if (!ReadConsoleW(stream, &letter, 1, &count, nullptr) || count == 0) return false;
        letters += letter;
        return letter != L'\n';
    }
    char byte;
    if (!ReadFile(stream, &byte, 1, &count, nullptr) || count == 0) return false;
    bytes += byte;
    return byte != '\n';
}

}  // namespace

void Win32Console::Write(const std::wstring& text) {
    Put(STD_OUTPUT_HANDLE, text);
}

void Win32Console::WriteError(const std::wstring& text) {
    Put(STD_ERROR_HANDLE, text);
}

bool Win32Console::IsWatched() {
    return IsConsole(GetStdHandle(STD_ERROR_HANDLE));
}

std::optional<std::wstring> Win32Console::ReadLine() {
    const HANDLE stream = GetStdHandle(STD_INPUT_HANDLE);
    std::string bytes;
    std::wstring letters;
    while (ReadOne(stream, bytes, letters)) {
    }
    std::wstring line = letters + TextFromUtf8(bytes);
    if (line.empty()) return std::nullopt;
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r'))
        line.pop_back();
    return line;
}

std::wstring Win32Console::FullPath(const std::wstring& named) {
    const DWORD size = GetFullPathNameW(named.c_str(), 0, nullptr, nullptr);
    std::wstring full(size, L'\0');
    const DWORD length = GetFullPathNameW(named.c_str(), size, full.data(), nullptr);
    if (length == 0 || length >= size) return named;
    full.resize(length);
    return full;
}
