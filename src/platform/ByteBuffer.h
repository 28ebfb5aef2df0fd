#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The coding that the program's files share: little-endian integers, flags as -1 and 0 in 16 bits, texts as
// an unsigned 16-bit byte count and that many bytes in the system's ANSI code page, nothing in between.

// The most bytes that a stored text can have.
inline constexpr std::size_t kLongestStoredText = 0xFFFF;

// True when `text` can be stored whole, once it is converted to the code page.
bool FitsStoredText(std::wstring_view text);

// Builds a file's image in memory, field by field.
class ByteWriter {
 public:
    // Makes room for an image of this size at once; it may still become longer.
    void Reserve(std::size_t size) { image_.reserve(size); }
    void Int16(std::int16_t value);
    void UInt16(std::uint16_t value);
    void Int32(std::int32_t value);
    void UInt32(std::uint32_t value);
    // In place of four bytes that are there.
    void PutInt32(std::size_t position, std::int32_t value);
    void Flag(bool value);
    // Throws RuntimeError (Overflow) when the text is too long to be stored whole.
    void Text(std::wstring_view text);
    void Bytes(const void* bytes, std::size_t size);
    // Room for so many bytes behind what is there, which are the caller's to fill; good until the next call.
    std::uint8_t* Room(std::size_t size) {
        image_.resize(image_.size() + size);
        return image_.data() + (image_.size() - size);
    }

    const std::vector<std::uint8_t>& Image() const { return image_; }
    std::vector<std::uint8_t> TakeImage() { return std::move(image_); }

 private:
    std::vector<std::uint8_t> image_;
};

// Reads fields from bytes that nobody vouches for. Whatever does not fit into the bytes that are left throws
// RuntimeError (FileTooShort) and moves nothing. The bytes are not owned and must outlive the reader.
class ByteReader {
 public:
    ByteReader(const void* bytes, std::size_t size)
        : next_(static_cast<const std::uint8_t*>(bytes)), remaining_(size) {}
    explicit ByteReader(const std::vector<std::uint8_t>& bytes) : ByteReader(bytes.data(), bytes.size()) {}

    std::int16_t Int16();
    std::uint16_t UInt16();
    std::int32_t Int32();
    std::uint32_t UInt32();
    // Any value but 0 counts as on.
    bool Flag();
    std::wstring Text();
    // A text as it is stored, in the bytes that are read from.
    std::string_view AnsiText();
    void Bytes(void* to, std::size_t size);
    void Skip(std::size_t size);

    std::size_t Remaining() const { return remaining_; }
    // A stored count of elements, each of which takes `leastSize` bytes or more: throws when it is negative
    // or when the bytes that are left cannot hold that many. So a count may be allocated once it is read.
    std::size_t Count32(std::size_t leastSize);

 private:
    const std::uint8_t* Take(std::size_t size);

    const std::uint8_t* next_;
    std::size_t remaining_;
};
