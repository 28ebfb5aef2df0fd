#include "engine/views/StoredWindow.h"

#include "fake/FakePlatformTest.h"

namespace {

using StoredWindow = FakePlatformTest;

void Put(const wchar_t* key, const wchar_t* value) {
    ThePlatform().settings.Write(L"Settings", key, value);
}

TEST_F(StoredWindow, ReadNonsense_GivesDefaults) {
    Put(L"MainLeft", L"links");
    Put(L"MainTop", L"1e300");
    Put(L"MainWidth", L"-7");
    Put(L"MainState", L"17");
    Put(L"Splitter", L"nan");
    const StoredPlace place = ReadMainPlace();
    EXPECT_EQ(place.left, 1000);
    EXPECT_EQ(place.width, 5400);
    EXPECT_EQ(place.height, 9000);
    EXPECT_EQ(ReadMainState(), MainState::Normal);
    EXPECT_EQ(ReadSplitter(1900), 1900);
    Put(L"ViewMode", L"7");
    Put(L"ViewPreview", L"x");
    Put(L"ViewSort", L"99");
    Put(L"ViewSortDown", L"1");
    EXPECT_EQ(ReadView(), StoredView());
    for (const wchar_t* text : {L"1,x", L"1,,2", L"1,-2", L"1,2000000000"}) {
        Put(L"ColumnsName", text);
        EXPECT_EQ(ReadColumnWidths(L"Name"), std::vector<int>());
    }
}

TEST_F(StoredWindow, StoreAndRead_ComesBack) {
    StoreMainWindow(MainState::Maximised, {-1234.4, 15, 9000, 8000});
    StoreSplitterPlace(2345.6);
    const StoredPlace place = ReadMainPlace();
    EXPECT_EQ(place.left, -1234);
    EXPECT_EQ(place.height, 8000);
    EXPECT_EQ(ReadMainState(), MainState::Maximised);
    EXPECT_EQ(ReadSplitter(0), 2346);
    const StoredView view{false, false, false, true, 1, 4, true};
    StoreView(view);
    EXPECT_EQ(ReadView(), view);
    StoreColumnWidths(L"Name", {100, 0, 250});
    EXPECT_EQ(ReadColumnWidths(L"Name"), (std::vector<int>{100, 0, 250}));
    EXPECT_EQ(ReadColumnWidths(L"Format"), std::vector<int>());
}

}  // namespace
