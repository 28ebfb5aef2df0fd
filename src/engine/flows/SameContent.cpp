#include "engine/flows/SameContent.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

#include "engine/clipboard/CFormat.h"
#include "engine/clipboard/FormatNames.h"
#include "engine/clipboard/modFileIO.h"
#include "engine/profiles/modProfile.h"
#include "platform/FileBytes.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr std::int64_t kPiece = 1 << 16;

// Numbers are given in the order of capture, and never twice.
const Node* NewestClip(const Node& container) {
    const Node* newest = nullptr;
    for (const Node* child = container.FirstChild(); child != nullptr; child = child->Next()) {
        if (ClipNumberOf(child) > ClipNumberOf(newest)) newest = child;
    }
    return newest;
}

// These differ from copy to copy of the same content: each holds an address or a handle.
constexpr const wchar_t* kPassedOver[] = {
    L"DataObject",                  // the window that hands out the copying program's data object
    L"Wine Marshalled DataObject",  // the way to that object, another one for each copy
    L"GTK_TEXT_BUFFER_CONTENTS",    // the text buffer's address
};

// Behind their zero stands what happened to be in memory.
constexpr const wchar_t* kTexts[] = {L"Rich Text Format", L"HTML Format"};

struct Record {
    FormatNumber id = 0;
    std::wstring name;
    std::int64_t offset = 0;
    std::int64_t size = 0;
};

template <std::size_t Count>
bool IsAmong(const wchar_t* const (&names)[Count], const std::wstring& name) {
    return std::any_of(std::begin(names), std::end(names),
                       [&](const wchar_t* one) { return CompareNoCase(name, one) == 0; });
}

// A registered format's number is good for one run of the system.
bool AreOneFormat(const Record& a, const Record& b) {
    const bool numberCounts = IsStandardFormat(a.id) || a.name == kUnknownFormatName;
    return a.name == b.name && (!numberCounts || a.id == b.id);
}

// The bytes of the zero that ends the format's data; empty when it ends with its record.
std::string_view EndOf(const Record& record) {
    constexpr std::string_view kZeros("\0\0", 2);
    if (record.id == kUnicodeFormat) return kZeros;
    const bool text = record.id == kTextFormat || record.id == kOemTextFormat || IsAmong(kTexts, record.name);
    return kZeros.substr(0, text ? 1 : 0);
}

// The records that count, in their order; none when the file cannot be read to its end.
std::optional<std::vector<Record>> RecordsOf(FileHandle file) {
    std::vector<Record> records;
    for (;;) {
        const auto left = RemainingInClipFile(file);
        if (!left) return std::nullopt;
        if (*left == 0) return records;
        CFormat format;
        if (!format.LoadFromFile(file, false)) return std::nullopt;
        if (IsAmong(kPassedOver, format.FormatName)) continue;
        records.push_back({format.FormatId, format.FormatName, format.DataOffset, format.DataSize});
    }
}

// Reads a record's data piece by piece, up to its end.
class DataReader {
 public:
    DataReader(FileHandle file, const Record& record)
        : file_(file), position_(record.offset), left_(record.size), end_(EndOf(record)) {}

    // The next piece; empty at the end, none when it cannot be read.
    std::optional<std::string_view> Next() {
        const auto size = static_cast<std::uint32_t>(std::min(left_, kPiece));
        if (size == 0) return std::string_view();
        if (!SeekClipFile(file_, position_)) return std::nullopt;
        if (ThePlatform().files.Read(file_, bytes_.data(), size) != size) return std::nullopt;
        position_ += size;
        left_ -= size;
        return UpToEnd({bytes_.data(), size});
    }

 private:
    std::string_view UpToEnd(std::string_view piece) {
        if (end_.empty()) return piece;
        std::size_t place = piece.find(end_);
        // Two zero bytes of different characters are no end.
        while (place != std::string_view::npos && place % end_.size() != 0)
            place = piece.find(end_, place + 1);
        if (place == std::string_view::npos) return piece;
        left_ = 0;
        return piece.substr(0, place);
    }

    FileHandle file_;
    std::int64_t position_;
    std::int64_t left_;
    std::string_view end_;
    std::vector<char> bytes_ = std::vector<char>(kPiece);
};

bool HoldTheSame(FileHandle file, const Record& record, FileHandle other, const Record& otherRecord) {
    if (!AreOneFormat(record, otherRecord)) return false;
    if (EndOf(record).empty() && record.size != otherRecord.size) return false;
    DataReader data(file, record), otherData(other, otherRecord);
    for (;;) {
        const auto piece = data.Next(), otherPiece = otherData.Next();
        if (!piece || !otherPiece || *piece != *otherPiece) return false;
        if (piece->empty()) return true;
    }
}

bool HoldTheSame(const std::wstring& path, const std::wstring& otherPath) {
    FilePort& files = ThePlatform().files;
    const FileOwner file(files.Open(path, FileUse::Read));
    const FileOwner other(files.Open(otherPath, FileUse::Read));
    if (!file.IsSet() || !other.IsSet()) return false;
    const auto records = RecordsOf(file.Get()), otherRecords = RecordsOf(other.Get());
    return records && otherRecords &&
           std::equal(
               records->begin(), records->end(), otherRecords->begin(), otherRecords->end(),
               [&](const Record& a, const Record& b) { return HoldTheSame(file.Get(), a, other.Get(), b); });
}

}  // namespace

const Node* NewestClipIfSame(const Node& container, const std::wstring& clipFile) {
    const Node* const newest = NewestClip(container);
    if (newest == nullptr || !HoldTheSame(ClipFileOf(newest), clipFile)) return nullptr;
    return newest;
}
