#pragma once

#include <cstddef>
#include <cstdint>

// The CRC-32 that most formats share (polynomial 0xEDB88320, all bits inverted before and after). The check
// sum of what stands before goes in as `before`, so that pieces can be summed one after the other.
std::uint32_t CheckSum(const void* bytes, std::size_t size, std::uint32_t before = 0);

// The check sum of two pieces, one behind the other, from those of each.
std::uint32_t JoinedCheckSum(std::uint32_t first, std::uint32_t second, std::size_t secondSize);
