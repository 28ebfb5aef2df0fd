#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/search/VisibleText.h"
#include "platform/Files.h"

// Reads the texts of clip data files, in few calls and without what is no text: a small file is read with one
// call, in a larger one the headers tell where to go on. It tells nobody what goes wrong, and uses nothing
// but the file port that it is given: it may work in a thread of its own with a port of its own.
class ClipFileReader {
 public:
    struct Record {
        std::int64_t offset = 0;  // of the data in the file
        std::int64_t size = 0;    // of the data, in bytes
        FormatContent content;
    };
    // Part of a text: it overlaps with the one before, so that nothing is torn at its front.
    struct Window {
        std::u16string_view text;
        std::size_t begin = 0;  // its place in the whole text
        bool last = false;
    };
    // False when it wants no more.
    using Taker = std::function<bool(const Window& window)>;

    // The port must outlive the reader.
    explicit ClipFileReader(FilePort& files) : files_(files) {}
    ~ClipFileReader() { Close(); }
    ClipFileReader(const ClipFileReader&) = delete;
    ClipFileReader& operator=(const ClipFileReader&) = delete;

    // Opens a clip's file and closes the one before; false when it cannot be read.
    bool Open(const std::wstring& path);
    void Close();
    // Of the open file, in bytes.
    std::int64_t Size() const { return size_; }

    // The first `count` records, as far as the file holds them whole. Good until the next file.
    const std::vector<Record>& ReadRecords(int count);
    // Gives the taker the record's text, in windows that overlap by `overlap` characters. False when the file
    // cannot be read.
    bool ReadText(const Record& record, std::size_t overlap, const Taker& taker);

 private:
    // The bytes from a place on, as many as asked for or as there are.
    std::string_view BytesAt(std::int64_t offset, std::size_t count);
    // At most `count` bytes; none when that fails.
    std::size_t ReadAt(std::int64_t offset, void* to, std::size_t count);
    std::optional<Record> NextRecord(std::int64_t& offset);
    bool ReadShortText(const Record& record, const Taker& taker);
    bool ReadLongText(const Record& record, std::size_t overlap, const Taker& taker);
    bool ReadLongUtf16(const Record& record, std::size_t overlap, const Taker& taker);

    FilePort& files_;
    FileHandle file_ = FileHandle::None;
    std::int64_t size_ = 0;
    std::int64_t position_ = 0;  // where the next read begins
    std::vector<char> part_;     // what was read last of the headers
    std::int64_t partBegin_ = 0;
    std::size_t partSize_ = 0;
    std::vector<Record> records_;
    std::u16string window_;
    std::vector<char> piece_;      // of a long text
    std::vector<char16_t> units_;  // the same of one that needs no decoding, behind what overlaps
};
