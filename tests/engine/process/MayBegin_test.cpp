#include "engine/process/MayBegin.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

// The table as it is seen from outside: a column is what is under way, a row who wants to begin.
TEST(MayBeginTest, Table_SaysWhoMayBeginWhileWhatIsUnderWay) {
    struct Row {
        Who who;
        const char* answers;  // Now, Ends it, Later, Missed, Refused by their letters
    };
    constexpr Row kRows[] = {
        //                       DMDROCE: dialog, menu, drag, rename, operation on the tree, capture, end
        {Who::AutomaticCapture, "MLLLLLL"}, {Who::CaptureCommand, "RNRERRR"}, {Who::ClipCommand, "RNRERRR"},
        {Who::TreeCommand, "RNRERRR"},      {Who::TypedName, "LLLNLLL"},      {Who::BoxToldLater, "NLLLLLL"},
        {Who::PutOffAction, "LLLLLLL"},     {Who::Closing, "REEELLL"},        {Who::SessionEnd, "NEEENEN"},
        {Who::SecondStart, "NNNNNNN"},      {Who::HotKey, "NNNNNNN"},
    };
    constexpr std::string_view kByForce = "NELMR";
    const auto answer = [&](Who who) { return kByForce[static_cast<std::size_t>(MayBegin(who))]; };

    for (const Row& row : kRows) {
        SCOPED_TRACE(static_cast<int>(row.who));
        EXPECT_EQ(answer(row.who), 'N') << "the program is free";
        for (int first = 0; first < kBusyCount; ++first)
            for (int second = 0; second < kBusyCount; ++second) {
                const BusyScope outer(static_cast<Busy>(first));
                const BusyScope inner(static_cast<Busy>(second));
                EXPECT_EQ(
                    answer(row.who),
                    kByForce[std::max(kByForce.find(row.answers[first]), kByForce.find(row.answers[second]))])
                    << first << " with " << second << " over it";
            }
        EXPECT_TRUE(IsFree());
    }
}
