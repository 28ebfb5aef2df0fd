#pragma once

#include <vector>

// What a column of a list wants.
struct ColumnWish {
    int width = 0;       // in pixels, to show everything in it
    bool empty = false;  // it shows nothing but its heading
};

// Widths for the columns of a list, in pixels: each as wide as it wants to be, unless together they are wider
// than there is room for. Then the empty ones give way first, then the others, the widest of them first, and
// the one with the names, which is the first, last; none below `least`.
std::vector<int> FitColumns(const std::vector<ColumnWish>& wanted, int room, int least);
