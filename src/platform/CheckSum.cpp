#include "platform/CheckSum.h"

#include <array>

namespace {

constexpr std::size_t kStep = 16;  // bytes taken at once: a whole tree is summed at every save

constexpr std::uint32_t kPolynomial = 0xEDB88320;

using Tables = std::array<std::array<std::uint32_t, 256>, kStep>;

// Sums are polynomials whose highest bit is the lowest power.
constexpr std::uint32_t TimesX(std::uint32_t sum) {
    return (sum >> 1) ^ ((sum & 1) != 0 ? kPolynomial : 0);
}

std::uint32_t Product(std::uint32_t a, std::uint32_t b) {
    std::uint32_t product = 0;
    for (; a != 0; a <<= 1, b = TimesX(b))
        if ((a & 0x80000000) != 0) product ^= b;
    return product;
}

// tables[n][b] is what the byte b comes to with n zero bytes behind it.
constexpr Tables MakeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = TimesX(sum);
        tables[0][byte] = sum;
    }
    for (std::size_t n = 1; n < kStep; ++n)
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[n][byte] = (tables[n - 1][byte] >> 8) ^ tables[0][tables[n - 1][byte] & 0xFF];
    return tables;
}

constexpr Tables kTables = MakeTables();

constexpr std::size_t kWord = 4;

// A single reading of memory, as compilers see it.
std::uint32_t WordAt(const std::uint8_t* bytes) {
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 | static_cast<std::uint32_t>(bytes[2]) << 16 |
           static_cast<std::uint32_t>(bytes[3]) << 24;
}

}  // namespace

std::uint32_t CheckSum(const void* bytes, std::size_t size, std::uint32_t before) {
    const auto* next = static_cast<const std::uint8_t*>(bytes);
    std::uint32_t sum = ~before;
    for (; size >= kStep; size -= kStep, next += kStep) {
        std::uint32_t step = 0;
        for (std::size_t i = 0; i < kStep; i += kWord) {
            const std::uint32_t word = WordAt(next + i) ^ (i == 0 ? sum : 0);
            for (std::size_t byte = 0; byte < kWord; ++byte)
                step ^= kTables[kStep - 1 - i - byte][word >> (8 * byte) & 0xFF];
        }
        sum = step;
    }
    for (; size > 0; --size, ++next)
        sum = (sum >> 8) ^ kTables[0][(sum ^ *next) & 0xFF];
    return ~sum;
}

// The first part counts as if zeros followed it: its sum is multiplied by x for each bit of the second part.
std::uint32_t JoinedCheckSum(std::uint32_t first, std::uint32_t second, std::size_t secondSize) {
    std::uint32_t square = 0x00800000;  // x to the 8
    for (; secondSize > 0; secondSize >>= 1, square = Product(square, square))
        if ((secondSize & 1) != 0) first = Product(first, square);
    return first ^ second;
}
