#include "engine/views/ColumnWidths.h"

#include <algorithm>
#include <numeric>

std::vector<int> FitColumns(std::vector<int> wanted, int room, int least) {
    const auto sumBelow = [&](int limit) {
        return std::accumulate(wanted.begin(), wanted.end(), 0,
                               [=](int sum, int width) { return sum + std::min(width, limit); });
    };
    int limit = wanted.empty() ? 0 : std::ranges::max(wanted);
    while (limit > least && sumBelow(limit) > room)
        --limit;
    for (int& width : wanted)
        width = std::min(width, limit);
    return wanted;
}
