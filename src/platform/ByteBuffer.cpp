#include "platform/ByteBuffer.h"

#include <cstring>

#include "platform/RuntimeError.h"
#include "platform/Text.h"

bool FitsStoredText(std::wstring_view text) {
    return AnsiFromText(text).size() <= kLongestStoredText;
}

void ByteWriter::Int16(std::int16_t value) {
    UInt16(static_cast<std::uint16_t>(value));
}

void ByteWriter::UInt16(std::uint16_t value) {
    const std::uint8_t bytes[] = {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8)};
    Bytes(bytes, sizeof bytes);
}

void ByteWriter::Int32(std::int32_t value) {
    UInt32(static_cast<std::uint32_t>(value));
}

void ByteWriter::UInt32(std::uint32_t value) {
    UInt16(static_cast<std::uint16_t>(value));
    UInt16(static_cast<std::uint16_t>(value >> 16));
}

void ByteWriter::PutInt32(std::size_t position, std::int32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        image_[position + i] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(value) >> (8 * i));
}

void ByteWriter::Flag(bool value) {
    Int16(value ? -1 : 0);
}

void ByteWriter::Text(std::wstring_view text) {
    const std::size_t start = image_.size();
    UInt16(0);
    AppendAnsi(image_, text);
    const std::size_t size = image_.size() - start - 2;
    if (size > kLongestStoredText) {
        image_.resize(start);
        throw RuntimeError(ErrorNumber::Overflow, L"Der Text \"" + std::wstring(text.substr(0, 40)) +
                                                      L"...\" ist zu lang, um gespeichert zu werden.");
    }
    image_[start] = static_cast<std::uint8_t>(size);
    image_[start + 1] = static_cast<std::uint8_t>(size >> 8);
}

void ByteWriter::Bytes(const void* bytes, std::size_t size) {
    const auto* first = static_cast<const std::uint8_t*>(bytes);
    image_.insert(image_.end(), first, first + size);
}

const std::uint8_t* ByteReader::Take(std::size_t size) {
    if (remaining_ < size) throw RuntimeError(ErrorNumber::FileTooShort);
    const std::uint8_t* taken = next_;
    next_ += size;
    remaining_ -= size;
    return taken;
}

std::int16_t ByteReader::Int16() {
    return static_cast<std::int16_t>(UInt16());
}

std::uint16_t ByteReader::UInt16() {
    const std::uint8_t* bytes = Take(2);
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
}

std::int32_t ByteReader::Int32() {
    return static_cast<std::int32_t>(UInt32());
}

std::uint32_t ByteReader::UInt32() {
    const std::uint8_t* bytes = Take(4);
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 | static_cast<std::uint32_t>(bytes[2]) << 16 |
           static_cast<std::uint32_t>(bytes[3]) << 24;
}

bool ByteReader::Flag() {
    return UInt16() != 0;
}

std::string_view ByteReader::AnsiText() {
    ByteReader ahead = *this;
    const std::size_t size = ahead.UInt16();
    const std::uint8_t* bytes = ahead.Take(size);
    *this = ahead;
    return {reinterpret_cast<const char*>(bytes), size};
}

std::wstring ByteReader::Text() {
    return TextFromAnsi(AnsiText());
}

void ByteReader::Bytes(void* to, std::size_t size) {
    const std::uint8_t* bytes = Take(size);
    if (size > 0) std::memcpy(to, bytes, size);
}

void ByteReader::Skip(std::size_t size) {
    Take(size);
}

std::size_t ByteReader::Count32(std::size_t leastSize) {
    ByteReader ahead = *this;
    const std::int32_t count = ahead.Int32();
    if (count < 0 || static_cast<std::size_t>(count) > ahead.Remaining() / leastSize) {
        throw RuntimeError(ErrorNumber::FileTooShort);
    }
    *this = ahead;
    return static_cast<std::size_t>(count);
}
