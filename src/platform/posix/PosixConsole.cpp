#include "platform/posix/PosixConsole.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "platform/Text.h"

namespace {

void Put(std::FILE* stream, const std::wstring& text) {
    const std::string bytes = Utf8FromText(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

}  // namespace

void PosixConsole::Write(const std::wstring& text) {
    Put(stdout, text);
}

void PosixConsole::WriteError(const std::wstring& text) {
    std::fflush(stdout);
    Put(stderr, text);
}

bool PosixConsole::IsWatched() {
    return isatty(STDERR_FILENO) != 0;
}

std::optional<std::wstring> PosixConsole::ReadLine() {
    std::string line;
    int c = std::getchar();
    if (c == EOF) return std::nullopt;
    for (; c != EOF && c != '\n'; c = std::getchar())
        line += static_cast<char>(c);
    if (line.ends_with('\r')) line.pop_back();
    return TextFromUtf8(line);
}

std::wstring PosixConsole::FullPath(const std::wstring& named) {
    std::error_code error;
    const auto full = std::filesystem::absolute(Utf8FromText(named), error);
    return error ? named : TextFromUtf8(full.string());
}
