#pragma once

#include <cstdint>
#include <string>
#include <variant>

struct NullValue {
    friend bool operator==(NullValue, NullValue) { return true; }
};

// A node's picture as the tree keeps and stores it: nothing, or a value of one of the stored types; in
// practice the key of a picture ("Profile", "Structure", "Clip", "Camera"). Keys are kept once for the whole
// program, since there are few of them and many nodes. Layout on disk: docs/formats/nxclip-nxp.md.
class ImageValue {
 public:
    enum class Kind : std::uint8_t { Empty, Null, Int16, Int32, Key, Boolean };

    ImageValue() = default;
    ImageValue(std::monostate) {}
    ImageValue(NullValue) : kind_(Kind::Null) {}
    ImageValue(std::int16_t number) : kind_(Kind::Int16), value_(number) {}
    ImageValue(std::int32_t number) : kind_(Kind::Int32), value_(number) {}
    ImageValue(bool flag) : kind_(Kind::Boolean), value_(flag ? 1 : 0) {}
    ImageValue(const std::wstring& key);
    ImageValue(const wchar_t* key) : ImageValue(std::wstring(key)) {}

    Kind Type() const { return kind_; }
    bool IsEmpty() const { return kind_ == Kind::Empty; }
    // The number or flag; of a key its place among all keys, which is good for this run alone.
    std::int32_t Number() const { return value_; }
    // Empty unless the value is a key.
    const std::wstring& Key() const;

    friend bool operator==(const ImageValue&, const ImageValue&) = default;

 private:
    Kind kind_ = Kind::Empty;
    std::int32_t value_ = 0;
};
