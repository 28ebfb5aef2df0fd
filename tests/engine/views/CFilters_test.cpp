#include "engine/views/CFilters.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"

TEST(CFilters, AddPreset_TheThreeListsAndNoOther) {
    for (const auto& [list, count] : {std::pair{0, 0}, {1, 8}, {2, 6}, {3, 8}, {4, 0}}) {
        CFilters filters;
        filters.AddPreset(list);
        EXPECT_EQ(filters.Count(), count);
        for (const CFilter& filter : filters.NewEnum())
            EXPECT_TRUE(filter.Description.ends_with(L" (" + filter.Pattern + L")"));
    }
}

TEST(CFilters, ListAccess_KeepsTheOrderAndRefusesWhatIsNotThere) {
    CFilters filters{{L"*.wav", L"Sounds (*.wav)"}};
    filters.AddPreset(2);
    filters.Add(L"*", L"Alle");
    filters.Remove(1);
    EXPECT_EQ(filters.Item(1).Pattern, L"*.bmp;*.dib");
    EXPECT_EQ(filters.Item(7).Description, L"Alle");
    for (const int position : {0, 8, -1}) {
        EXPECT_THROW(filters.Item(position), RuntimeError);
        EXPECT_THROW(filters.Remove(position), RuntimeError);
    }
}
