#include "engine/views/StoredWindow.h"

#include <array>

#include "fake/FaultLoop.h"

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

// Two places, one after the other: a window of one place's width and the other's height is neither.
TEST_F(StoredWindow, StoreMainWindow_FailingTwiceOrKilledInAnyCall_LeavesOnePlaceOrTheOther) {
    using Place = std::array<double, 5>;
    const Place unknown{1000, 1000, 13500, 9000, 0}, tall{9000, 8000, 5400, 15000, 2},
        wide{-3000, 100, 20000, 650, 0}, small{5, 7, 5400, 1000, 0};
    const auto store = [](const Place& to) {
        StoreMainWindow(static_cast<MainState>(static_cast<int>(to[4])), {to[0], to[1], to[2], to[3]});
    };
    const auto stored = [] {
        const StoredPlace is = ReadMainPlace();
        return Place{is.left, is.top, is.width, is.height, static_cast<double>(ReadMainState())};
    };
    for (const Place& before : {unknown, tall}) {
        const auto prepare = [&] {
            for (const wchar_t* key :
                 {L"MainLeft", L"MainTop", L"MainWidth", L"MainHeight", L"MainState", L"MainChange"})
                fake.settings.DeleteValue(L"Settings", key);
            if (before != unknown) store(before);
        };
        const auto moveTwice = [&] {
            store(wide);
            store(small);
        };
        const auto check = [&](bool struck) {
            const Place left = stored();
            EXPECT_TRUE(left == small || (struck && (left == before || left == wide)));
            store(tall);
            EXPECT_EQ(stored(), tall);
            EXPECT_EQ(fake.settings.KeyCount(L"Settings"), 5u) << "nothing is left of the change";
        };
        for (const Fault fault : {Fault::OneCall, Fault::TwoCalls, Fault::Kill})
            EXPECT_GT(StrikeEverywhere(fault, fake, prepare, moveTwice, check), 10);
    }
}

}  // namespace
