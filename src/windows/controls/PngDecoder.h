#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "engine/views/PreviewData.h"

// Decodes a PNG picture, by the system, into a device-independent bitmap; what is transparent in it stands
// over a checker-board. None for a damaged one, and for one that is larger than any picture shown.
std::optional<PreviewBytes> DecodePng(std::span<const std::uint8_t> png);
