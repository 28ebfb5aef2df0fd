#include "engine/views/CFilters.h"

#include <gtest/gtest.h>

TEST(CFilters, AddPreset_TheThreeListsAndNoOther) {
    for (const auto& [list, count] : {std::pair{0, 0}, {1, 8}, {2, 6}, {3, 8}, {4, 0}}) {
        CFilters filters;
        filters.AddPreset(list);
        EXPECT_EQ(filters.Count(), count);
        for (const CFilter& filter : filters.NewEnum())
            EXPECT_TRUE(filter.Description.ends_with(L" (" + filter.Pattern + L")"));
    }
}
