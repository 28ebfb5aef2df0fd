#include "engine/views/CFilters.h"

#include <gtest/gtest.h>

#include "platform/RuntimeError.h"

namespace {

CFilters Preset(int list) {
    CFilters filters;
    filters.AddPreset(list);
    return filters;
}

TEST(CFilters, AddPreset_TheThreeListsAndNoOther) {
    EXPECT_EQ(Preset(1).Count(), 8);
    EXPECT_EQ(Preset(2).Count(), 6);
    EXPECT_EQ(Preset(3).Count(), 8);
    for (const int list : {0, 4, -1})
        EXPECT_EQ(Preset(list).Count(), 0);
    for (const int list : {1, 2, 3}) {
        const CFilters filters = Preset(list);
        for (const CFilter& filter : filters.NewEnum()) {
            EXPECT_TRUE(filter.Description.ends_with(L" (" + filter.Pattern + L")"));
        }
        EXPECT_EQ(filters.Item(1), (CFilter{L"*.bmp;*.dib", L"Bitmap-Bilder (*.bmp;*.dib)"}));
    }
    EXPECT_EQ(Preset(1).Item(8).Description,
              L"Alle Bildateien (*.bmp;*.dib;*.gif;*.jpg;*.pcx;*.tga;*.tif;*.ico;*.cur;*.wmf;*.emf)");
    EXPECT_EQ(Preset(2).Item(3).Description, L"Icons (*.ico;*.cur)");
    EXPECT_EQ(Preset(2).Item(6).Pattern, L"*.bmp;*.cur;*.dib;*.emf;*.gif;*.ico;*.jpg;*.wmf");
    EXPECT_EQ(Preset(3).Item(8).Pattern, L"*.bmp;*.dib;*.gif;*.jpg;*.pcx;*.tga;*.tif;*.wmf;*.emf");
}

TEST(CFilters, ListAccess_KeepsTheOrderAndRefusesWhatIsNotThere) {
    CFilters filters{{L"*.wav", L"Sounds (*.wav)"}};
    filters.AddPreset(2);
    filters.Add(L"*", L"Alle");
    EXPECT_EQ(filters.Count(), 8);
    filters.Remove(1);
    EXPECT_EQ(filters.Item(1).Pattern, L"*.bmp;*.dib");
    EXPECT_EQ(filters.Item(7).Description, L"Alle");
    for (const int position : {0, 8, -1}) {
        EXPECT_THROW(filters.Item(position), RuntimeError);
        EXPECT_THROW(filters.Remove(position), RuntimeError);
    }
}

}  // namespace
