#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engine/tree/NodeTexts.h"

// The tags of nodes as values. The first character of a tag is the kind: "P" profile, "S" structure (folder),
// "C" clip; the fields behind it are separated by "&". Layout: docs/formats/nxclip-nxp.md.

// "P&" counter "&" directory "&" flag "&" info. The directory must not hold "&": reading cuts it there. The
// info may.
struct ProfileTag {
    std::int32_t counter = 0;
    std::wstring directory;
    bool globalFlag = false;
    std::wstring info;

    // Takes over what the text reaches and leaves the rest, without an error. Throws RuntimeError
    // (TypeMismatch) for a counter that is no 32-bit number.
    void Read(std::wstring_view text);
    // The same into a fresh value.
    static ProfileTag Of(std::wstring_view text);
    // The counter alone; none for a tag that has none or whose counter is no number.
    static std::optional<std::int32_t> CounterOf(std::wstring_view text);
    // The text with another counter; what stands behind the counter stays as it is, right or wrong. A text
    // without counter is given back unchanged.
    static std::wstring WithCounter(const std::wstring& text, std::int32_t counter);

    std::wstring Text() const;
};

// "C&" number "," format count "&" time "&" info. The time must not hold "&".
struct ClipTag {
    std::int32_t number = 0;
    std::int16_t formatCount = 0;
    std::wstring timeCaptured;
    std::wstring info;

    // Takes over what the text reaches: an empty text and one without "," leave everything unchanged. Throws
    // RuntimeError: InvalidArgument when a text that is not empty has no "&" from its third character on
    // (deliberately unlike ProfileTag: callers tell a damaged clip by it), TypeMismatch for a number that is
    // none. What stands before the damage has been taken over then.
    void Read(std::wstring_view text);
    // The same into a fresh value.
    static ClipTag Of(std::wstring_view text);
    // The number alone; 0 for a damaged tag. Quick for tags as the program writes them.
    static std::int32_t NumberOf(const KeptText& text);

    std::wstring Text() const;
};

// "S&" info.
struct StructureTag {
    std::wstring info;

    // The info is what stands from the third character on; nothing in a shorter text.
    static StructureTag Of(std::wstring_view text);
    std::wstring Text() const;
};
