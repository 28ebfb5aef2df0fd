#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// The preview shows no more of a text than this, in bytes: what lies behind it nobody reads in a box, and the
// box would take seconds to take it in.
inline constexpr std::size_t kMostPreviewBytes = 1 << 20;

// ANSI text as a text box wants it: up to the first zero, every line end as CR LF, cut at kMostPreviewBytes
// with "[...]" in a line of its own.
std::wstring PreviewTextOf(std::span<const std::uint8_t> bytes);

// Rich text up to its first zero.
std::span<const std::uint8_t> RichTextOf(std::span<const std::uint8_t> bytes);
