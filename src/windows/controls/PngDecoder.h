#pragma once

#include <windows.h>

#include <objidl.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <span>

#include "engine/views/PreviewData.h"

// Decodes a PNG picture, by the system, into a device-independent bitmap; what is transparent in it stands
// over a checker-board, and a large one is made smaller (ReductionOf). None for a damaged one, and for one
// that is larger than any picture shown.
std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png);
// The same in a thread of its own, which has COM; none as well as soon as it is stopped.
std::optional<PreviewBytes> DecodePng(IStream& png, const std::atomic<bool>& stopped);
