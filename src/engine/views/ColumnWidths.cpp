#include "engine/views/ColumnWidths.h"

#include <algorithm>
#include <numeric>

namespace {

enum class Yields { First, Then, Last };

Yields TurnOf(const std::vector<ColumnWish>& wanted, std::size_t place) {
    if (place == 0) return Yields::Last;
    return wanted[place].empty ? Yields::First : Yields::Then;
}

}  // namespace

std::vector<int> FitColumns(const std::vector<ColumnWish>& wanted, int room, int least) {
    std::vector<int> widths;
    for (const ColumnWish& wish : wanted)
        widths.push_back(wish.width);
    int over = std::accumulate(widths.begin(), widths.end(), -room);
    for (const Yields turn : {Yields::First, Yields::Then, Yields::Last}) {
        while (over > 0) {
            int* widest = nullptr;
            for (std::size_t place = 0; place < widths.size(); ++place)
                if (TurnOf(wanted, place) == turn && (widest == nullptr || widths[place] > *widest))
                    widest = &widths[place];
            if (widest == nullptr || *widest <= least) break;
            --*widest;
            --over;
        }
    }
    return widths;
}
