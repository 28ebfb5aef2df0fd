#pragma once

#include <vector>

// Widths for the columns of a list, in pixels: each as wide as it wants to be, unless together they are wider
// than there is room for. Then the widest give way first, but none below `least`.
std::vector<int> FitColumns(std::vector<int> wanted, int room, int least);
