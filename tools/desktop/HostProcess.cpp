#include "desktop/HostProcess.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>

#include "desktop/Utf8.h"

namespace {

const std::filesystem::path kProcesses(L"Z:\\proc");

// A process may end while its file is read; then there is no text.
std::string TextOf(const std::filesystem::path& file) {
    std::string text;
    if (std::FILE* const stream = _wfopen(file.c_str(), L"rb")) {
        char part[4096];
        while (const std::size_t count = std::fread(part, 1, sizeof part, stream))
            text.append(part, count);
        std::fclose(stream);
    }
    return text;
}

// A line is a name, a colon and a number.
std::uint64_t NumberBehind(const std::string& text, const std::string& name) {
    const std::size_t place = text.find("\n" + name + ":");
    return place != std::string::npos ? std::stoull(text.substr(place + name.size() + 2)) : 0;
}

// Two numbers of ticks, the twelfth and the one behind it after the program's name, which stands in brackets.
double ProcessorTimeIn(const std::string& state) {
    constexpr double kMillisecondsOfATick = 10;
    std::istringstream fields(state.substr(std::min(state.rfind(')'), state.size() - 1) + 1));
    std::string passed;
    for (int field = 0; field < 12; ++field)
        fields >> passed;
    const double user = passed.empty() ? 0 : std::atof(passed.c_str());
    double kernel = 0;
    fields >> kernel;
    return (user + kernel) * kMillisecondsOfATick;
}

bool IsNumber(const std::wstring& name) {
    return name.find_first_not_of(L"0123456789") == std::wstring::npos;
}

// Programs of other prefixes may lie in directories of the same name.
bool IsOfThisPrefix(const std::filesystem::path& process) {
    const char* const prefix = std::getenv("WINEPREFIX");
    return prefix == nullptr ||
           TextOf(process / L"environ").find("WINEPREFIX=" + std::string(prefix)) != std::string::npos;
}

std::uint64_t NewestWith(const std::string& commandLine) {
    std::uint64_t newest = 0;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(kProcesses, ignored)) {
        const std::wstring name = entry.path().filename().wstring();
        if (!IsNumber(name) || TextOf(entry.path() / L"cmdline").find(commandLine) == std::string::npos ||
            !IsOfThisPrefix(entry.path()))
            continue;
        newest = std::max<std::uint64_t>(newest, std::stoull(name));
    }
    return newest;
}

}  // namespace

std::optional<HostFigures> FiguresOnHost(std::wstring_view commandLine) {
    const std::uint64_t number = NewestWith(Utf8(std::wstring(commandLine)));
    if (number == 0) return std::nullopt;
    const std::filesystem::path process = kProcesses / std::to_wstring(number);
    const std::string memory = "\n" + TextOf(process / L"smaps_rollup");
    const std::string counters = "\n" + TextOf(process / L"io");
    return HostFigures{NumberBehind(memory, "Pss") * 1024, NumberBehind(counters, "wchar"),
                       NumberBehind(counters, "syscw"), ProcessorTimeIn(TextOf(process / L"stat"))};
}
