#include "commandline/Json.h"

#include "platform/Text.h"

void JsonText::Member(const wchar_t* name, const std::wstring& value) {
    Name(name);
    Quote(value);
    needsComma_ = true;
}

void JsonText::Member(const wchar_t* name, std::int64_t value) {
    Name(name);
    text_ += NumberText(value);
    needsComma_ = true;
}

void JsonText::Open(const wchar_t* name, wchar_t bracket) {
    Name(name);
    text_ += bracket;
    needsComma_ = false;
}

void JsonText::Close(wchar_t bracket) {
    text_ += bracket;
    needsComma_ = true;
}

// Null for what stands in an array.
void JsonText::Name(const wchar_t* name) {
    if (needsComma_) text_ += L",";
    if (needsComma_ && name == nullptr) text_ += L"\n";
    needsComma_ = false;
    if (name == nullptr) return;
    Quote(name);
    text_ += L":";
}

void JsonText::Quote(const std::wstring& value) {
    constexpr const wchar_t* kDigits = L"0123456789abcdef";
    text_ += L'"';
    for (const wchar_t c : value) {
        const auto code = static_cast<std::uint32_t>(c);
        if (c == L'"' || c == L'\\') {
            text_ += {L'\\', c};
        } else if (code < 0x20) {
            text_ += std::wstring(L"\\u00") + kDigits[code >> 4] + kDigits[code & 15];
        } else {
            text_ += c;
        }
    }
    text_ += L'"';
}
