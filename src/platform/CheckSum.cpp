#include "platform/CheckSum.h"

#include <array>

namespace {

constexpr std::size_t kStep = 8;  // bytes taken at once: a whole tree is summed at every save

using Tables = std::array<std::array<std::uint32_t, 256>, kStep>;

// tables[n][b] is what the byte b comes to with n zero bytes behind it.
constexpr Tables MakeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320u : 0u);
        tables[0][byte] = sum;
    }
    for (std::size_t n = 1; n < kStep; ++n)
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[n][byte] = (tables[n - 1][byte] >> 8) ^ tables[0][tables[n - 1][byte] & 0xFF];
    return tables;
}

constexpr Tables kTables = MakeTables();

}  // namespace

std::uint32_t CheckSum(const void* bytes, std::size_t size, std::uint32_t before) {
    const auto* next = static_cast<const std::uint8_t*>(bytes);
    std::uint32_t sum = ~before;
    for (; size >= kStep; size -= kStep, next += kStep) {
        std::uint32_t step = 0;
        for (std::size_t i = 0; i < kStep; ++i) {
            const std::uint32_t mixed = next[i] ^ (i < 4 ? sum >> (8 * i) & 0xFF : 0);
            step ^= kTables[kStep - 1 - i][mixed];
        }
        sum = step;
    }
    for (; size > 0; --size, ++next)
        sum = (sum >> 8) ^ kTables[0][(sum ^ *next) & 0xFF];
    return ~sum;
}
