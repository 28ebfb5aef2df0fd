#include <limits>

#include "contract/ContractTest.h"
#include "fake/FakeClock.h"
#include "platform/Clock.h"
#include "platform/Text.h"
#include "platform/User.h"

namespace {

using ClockContract = ContractTest;
using UserContract = ContractTest;

}  // namespace

TEST_F(ClockContract, Now_GoesOnWhileWaiting) {
    const FileTime before = clock.Now();
    EXPECT_GE(before, FileTimeOf(1999, 1, 1, 0, 0, 0));
    clock.Pause(std::chrono::milliseconds(30));
    EXPECT_GE(clock.Now(), before + 20 * 10'000);  // a system tick may be missing
}

TEST_F(ClockContract, DateText_CanStandInATag) {
    const std::wstring text = clock.DateText(FileTimeOf(1999, 11, 15, 12, 34, 56));
    EXPECT_NE(text.find(L"99"), std::wstring::npos);
    EXPECT_NE(text.find(L"34"), std::wstring::npos);
    EXPECT_EQ(text.find(L'&'), std::wstring::npos);
    EXPECT_TRUE(FitsAnsi(text));
    EXPECT_NE(text, clock.DateText(FileTimeOf(1999, 11, 15, 12, 34, 57)));
    EXPECT_NE(clock.DateText(0), L"");
    EXPECT_EQ(clock.DateText(std::numeric_limits<FileTime>::max()), L"");
}

TEST_F(UserContract, Tell_ShowsTextAndTitle) {
    const Home::Box own = home->Answer(false, [&] { user.Tell(L"Keine Formate ermittelt", L"", {}); });
    EXPECT_EQ(own.text, L"Keine Formate ermittelt");
    EXPECT_EQ(own.title, L"NXClip");
    const Home::Box titled =
        home->Answer(false, [&] { user.Tell(L"Überlauf", L"Strukturladefehler 6", MessageIcon::Error); });
    EXPECT_EQ(titled.text, L"Überlauf");
    EXPECT_EQ(titled.title, L"Strukturladefehler 6");
}

TEST_F(UserContract, Ask_ReturnsTheAnswer) {
    for (const bool noIsDefault : {false, true})
        for (const bool yes : {false, true}) {
            bool answer = !yes;
            const Home::Box box = home->Answer(
                yes, [&] { answer = user.Ask(L"Profil wirklich löschen?", L"Löschen", noIsDefault); });
            EXPECT_EQ(answer, yes);
            EXPECT_EQ(box.text, L"Profil wirklich löschen?");
            EXPECT_EQ(box.title, L"Löschen");
        }
}

TEST_F(UserContract, ShowPointer_ReturnsTheOneBefore) {
    EXPECT_EQ(user.ShowPointer(PointerShape::Hourglass), PointerShape::Normal);
    {
        const HourglassScope scope(user);
        EXPECT_EQ(user.ShowPointer(PointerShape::Hourglass), PointerShape::Hourglass);
    }
    EXPECT_EQ(user.ShowPointer(PointerShape::Normal), PointerShape::Hourglass);
}

TEST_F(UserContract, PlaySoundFile_MissingFileIsNotPlayed) {
    EXPECT_FALSE(user.PlaySoundFile(home->Directory() + L"none.wav"));
    EXPECT_FALSE(user.PlaySoundFile(L""));
}
