// Reads the clipboard as any other program would.
//
//   clipget                    lists the formats in their order: number, name, and how many bytes each holds
//   clipget FORMAT FILE        writes one format's bytes; exit code 2 when the clipboard does not have them
//   clipget --all DIRECTORY    lists, and writes each format's bytes to DIRECTORY/<place>, counted from 1
//
// FORMAT is a standard format's number or a registered format's name. What counts as a format's bytes is said
// in ClipboardData.h. Everything that is printed is UTF-8, fields with tabulators between them; "-" stands
// for the size of what is no memory.

#include <cstdio>
#include <exception>

#include "desktop/ClipboardData.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"

namespace {

constexpr int kNotThere = 2;

void List(const std::wstring& directory) {
    const OpenedClipboard clipboard;
    int place = 0;
    for (const UINT format : FormatsOnClipboard()) {
        ++place;
        const std::optional<std::string> bytes = ReadFormat(format);
        const std::string size = bytes ? std::to_string(bytes->size()) : "-";
        std::printf("%u\t%s\t%s\n", format, Utf8(FormatName(format)).c_str(), size.c_str());
        if (bytes && !directory.empty()) {
            WriteWholeFile(std::filesystem::path(directory) / std::to_wstring(place), *bytes);
        }
    }
}

int Write(const std::wstring& format, const std::wstring& file) {
    const OpenedClipboard clipboard;
    const std::optional<std::string> bytes = ReadFormat(FormatNumber(format));
    if (!bytes) {
        std::fprintf(stderr, "clipget: the clipboard has no %s\n", Utf8(format).c_str());
        return kNotThere;
    }
    WriteWholeFile(file, *bytes);
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    try {
        if (count == 3 && std::wstring(arguments[1]) != L"--all") return Write(arguments[1], arguments[2]);
        List(count == 3 ? arguments[2] : L"");
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "clipget: %s\n", error.what());
        return 1;
    }
}
