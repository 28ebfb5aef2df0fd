#pragma once

#include <cstdint>
#include <string>

// Builds a JSON text member by member.
class JsonText {
 public:
    void BeginArray(const wchar_t* name = nullptr) { Open(name, L'['); }
    void EndArray() { Close(L']'); }
    void BeginObject() { Open(nullptr, L'{'); }
    void EndObject() { Close(L'}'); }
    void Member(const wchar_t* name, const std::wstring& value);
    void Member(const wchar_t* name, std::int64_t value);

    const std::wstring& Text() const { return text_; }

 private:
    void Open(const wchar_t* name, wchar_t bracket);
    void Close(wchar_t bracket);
    void Name(const wchar_t* name);
    void Quote(const std::wstring& value);

    std::wstring text_;
    bool needsComma_ = false;
};
