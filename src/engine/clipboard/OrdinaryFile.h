#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/clipboard/ClipRecords.h"

// A clip's content as files that other programs know, and such files as a clip's content.

// What a record is outside of the clipboard.
enum class OrdinaryKind { Text, WebPage, RichText, Picture, Drawing, FileList, Sound, Table };

struct OrdinaryForm {
    OrdinaryKind kind;
    const wchar_t* extension;  // ".txt"
    int rank;                  // of several records of a kind the one with the lowest says most
};
// None for a record that no other program would read from a file.
std::optional<OrdinaryForm> OrdinaryFormOf(const ClipRecord& record);

// The bytes of that file: text is UTF-8, a web page and a rich text stand without what the clipboard puts
// around them, a bitmap and a metafile get the headers that files have. None for data that is not what its
// record says.
std::optional<std::vector<std::uint8_t>> OrdinaryBytes(const ClipRecord& record,
                                                       const std::vector<std::uint8_t>& data);

// The record of each kind that says most, in the order of the kinds.
std::vector<ClipRecord> BestOfEachKind(const std::vector<ClipRecord>& records);

// For a look, of data that may be cut off behind its beginning. Empty and none for records of other kinds.
std::wstring BeginningOfText(const ClipRecord& record, const std::vector<std::uint8_t>& data);
std::vector<std::wstring> PathsIn(const ClipRecord& record, const std::vector<std::uint8_t>& data);
struct PictureSize {
    std::int32_t width = 0;  // pixels
    std::int32_t height = 0;
};
std::optional<PictureSize> PictureSizeOf(const ClipRecord& record, const std::vector<std::uint8_t>& data);

// What a file becomes on the clipboard.
struct MadeRecord {
    FormatNumber id = 0;
    std::wstring name;
    std::vector<std::uint8_t> data;
};
// By what is in it and, where that does not tell, its name: pictures, rich text, web pages, metafiles, text.
// Anything else becomes a list with the one file, `path`, in it. Never empty.
std::vector<MadeRecord> RecordsOfOrdinaryFile(const std::wstring& path,
                                              const std::vector<std::uint8_t>& bytes);
