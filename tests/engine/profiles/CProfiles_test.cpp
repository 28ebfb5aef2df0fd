#include "engine/profiles/CProfiles.h"

#include <ctime>

#include "engine/tree/TestTree.h"
#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

class CProfilesTest : public FakePlatformTest {
 protected:
    void Store(const std::wstring& key, const std::wstring& value) {
        fake.settings.Set(L"Profiles", key, value);
    }
    std::wstring Stored(const std::wstring& key) const {
        return fake.settings.Value(L"Profiles", key).value_or(L"<none>");
    }

    CProfiles list;
};

TEST_F(CProfilesTest, LoadRegistry_TakesWhatIsThereAndNothingElse) {
    list.LoadRegistry();
    EXPECT_EQ(list.Count(), 0);

    Store(L"Count", L"2");
    Store(L"Name1", L"Texte");
    Store(L"File1", L"D:\\Texte");
    list.LoadRegistry();
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Item(1).Name, L"Texte");
    EXPECT_EQ(list.Item(1).Directory, L"D:\\Texte");
    EXPECT_FALSE(list.Item(1).Dirty);
    EXPECT_EQ(list.Item(1).Node, nullptr);
    EXPECT_EQ(list.Item(2).Name + list.Item(2).Directory, L"");

    // Loading again replaces the list.
    Store(L"Count", L"1");
    list.LoadRegistry();
    EXPECT_EQ(list.Count(), 1);
}

TEST_F(CProfilesTest, LoadRegistry_SkipsADirectoryThatIsListedTwice) {
    Store(L"Count", L"3");
    Store(L"Name1", L"a");
    Store(L"File1", L"D:\\Texte");
    Store(L"Name2", L"b");
    Store(L"File2", L"d:\\TEXTE");
    Store(L"Name3", L"c");
    Store(L"File3", L"D:\\Mehr");
    list.LoadRegistry();
    ASSERT_EQ(list.Count(), 2);
    EXPECT_EQ(list.Item(1).Name, L"a");
    EXPECT_EQ(list.Item(2).Name, L"c");
}

TEST_F(CProfilesTest, LoadRegistry_SurvivesABadCount) {
    Store(L"Name1", L"a");
    Store(L"File1", L"D:\\A");
    Store(L"Name2", L"b");
    Store(L"File2", L"D:\\B");
    for (const wchar_t* count : {L"viele", L"99999999999", L""}) {
        Store(L"Count", count);
        list.LoadRegistry();
        EXPECT_EQ(list.Count(), 2) << "the list is written back at the end, nothing may be lost";
    }
    Store(L"Count", L"-5");
    list.LoadRegistry();
    EXPECT_EQ(list.Count(), 0);
    Store(L"Count", L"2000000000");
    const std::clock_t start = std::clock();
    list.LoadRegistry();
    EXPECT_EQ(list.Count(), 3) << "the two, and one without a directory";
    EXPECT_LT(std::clock() - start, 20 * CLOCKS_PER_SEC);
}

TEST_F(CProfilesTest, SaveRegistry_LeavesNothingOfAListThatShrank) {
    list.Add(L"eins", L"C:\\1", true, nullptr);
    list.Add(L"zwei", L"C:\\2\\", false, nullptr);
    list.Add(L"drei", L"C:\\3", false, nullptr);
    list.SaveRegistry();
    EXPECT_EQ(fake.settings.KeyCount(L"Profiles"), 7u);
    list.Remove(2);
    list.SaveRegistry();
    EXPECT_EQ(Stored(L"Count"), L"2");
    EXPECT_EQ(Stored(L"Name2") + Stored(L"File2"), L"dreiC:\\3");
    EXPECT_EQ(fake.settings.KeyCount(L"Profiles"), 5u);

    CProfiles again;
    again.LoadRegistry();
    ASSERT_EQ(again.Count(), 2);
    EXPECT_EQ(again.Item(1).Name, L"eins");
    EXPECT_FALSE(again.Item(1).Dirty);
}

// A failing call, or the end of the process in it, costs no profile that is to stay, whatever the change.
TEST(CProfilesSave, SaveRegistry_FailingOrKilledInAnyCall_KeepsEveryProfile) {
    const std::vector<std::pair<std::wstring, std::wstring>> changes = {
        {L"ABC", L"AC"}, {L"ABC", L"CAB"}, {L"AB", L"BXA"}, {L"", L"A"}, {L"ABC", L""}, {L"AB", L"AB"}};
    const auto fill = [](CProfiles& profiles, const std::wstring& names) {
        for (const wchar_t name : names)
            profiles.Add(std::wstring(1, name), std::wstring(L"C:\\") + name, false, nullptr);
    };
    for (const auto& [before, after] : changes) {
        for (const bool killed : {false, true}) {
            bool fired = true;
            for (int n = 1; fired; ++n) {
                SCOPED_TRACE(AnsiFromText(before + L" to " + after) + ", call " + std::to_string(n));
                FakePlatform machine;
                CProfiles old, changed, loaded;
                fill(old, before);
                old.SaveRegistry();
                fill(changed, after);
                killed ? machine.failures.KillInNthOfAny(n) : machine.failures.FailNthOfAny(n);
                changed.SaveRegistry();
                fired = machine.Fired();
                machine.failures.FailNone();
                loaded.LoadRegistry();
                for (const wchar_t name : after) {
                    const bool stays = before.find(name) != std::wstring::npos || !fired;
                    if (stays) {
                        EXPECT_NE(loaded.SearchDir(std::wstring(L"C:\\") + name), 0);
                    }
                }
                changed.SaveRegistry();
                EXPECT_EQ(machine.settings.KeyCount(L"Profiles"), 1 + 2 * after.size());
            }
        }
    }
}

TEST_F(CProfilesTest, SearchDir_IgnoresCaseAndNothingElse) {
    list.Add(L"a", L"C:\\Daten", false, nullptr);
    list.Add(L"b", L"C:\\Größe\\", false, nullptr);
    EXPECT_EQ(list.SearchDir(L"c:\\daten"), 1);
    EXPECT_EQ(list.SearchDir(L"C:\\Daten\\"), 0);
    EXPECT_EQ(list.SearchDir(L"C:\\GRÖßE\\"), 2);
    EXPECT_EQ(list.SearchDir(L""), 0);
    EXPECT_EQ(list.GetProfile(L"C:\\GRÖßE\\"), &list.Item(2));
    EXPECT_EQ(list.GetProfile(L"C:\\"), nullptr);
    EXPECT_EQ(list.ProfileInDirectory(L"c:\\DATEN\\"), &list.Item(1));
    EXPECT_EQ(list.ProfileInDirectory(L"C:\\Größe"), &list.Item(2));
    EXPECT_EQ(list.ProfileInDirectory(L"C:\\Dat"), nullptr);
}

}  // namespace
