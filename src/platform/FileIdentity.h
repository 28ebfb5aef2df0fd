#pragma once

#include <cstdint>
#include <string>

// What tells a file or directory from every other one, made of the numbers that the system knows it by. Empty
// where these tell nothing: some servers give all their files the number 0.
inline std::wstring FileIdentity(std::uint64_t volume, std::uint64_t number) {
    if (number == 0) return {};
    return std::to_wstring(volume) + L":" + std::to_wstring(number);
}
