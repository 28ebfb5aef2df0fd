#include "engine/profiles/CProfiles.h"

#include <array>
#include <ctime>

#include "engine/tree/TestTree.h"
#include "fake/FakePlatformTest.h"
#include "platform/RuntimeError.h"
#include "platform/Text.h"

namespace {

class CProfilesTest : public FakePlatformTest {
 protected:
    // Stores profiles with these names and directories.
    void Store(const std::wstring& count, const std::vector<std::array<const wchar_t*, 2>>& profiles) {
        fake.settings.Set(L"Profiles", L"Count", count);
        for (std::size_t i = 0; i < profiles.size(); ++i) {
            fake.settings.Set(L"Profiles", L"Name" + std::to_wstring(i + 1), profiles[i][0]);
            fake.settings.Set(L"Profiles", L"File" + std::to_wstring(i + 1), profiles[i][1]);
        }
    }
    std::wstring Loaded() {
        list.LoadRegistry();
        std::wstring outline;
        for (const CProfile* entry : list.NewEnum())
            outline += entry->Name + L"=" + entry->Directory + (entry->Dirty ? L"! " : L" ");
        return outline;
    }

    CProfiles list;
};

TEST_F(CProfilesTest, LoadRegistry_TakesWhatIsThereAndNoDirectoryTwice) {
    EXPECT_EQ(Loaded(), L"");
    Store(L"2", {{L"Texte", L"D:\\Texte"}});
    EXPECT_EQ(Loaded(), L"Texte=D:\\Texte = ");
    Store(L"3", {{L"a", L"D:\\Texte"}, {L"b", L"d:\\TEXTE"}, {L"c", L"D:\\Mehr"}});
    EXPECT_EQ(Loaded(), L"a=D:\\Texte c=D:\\Mehr ");
}

TEST_F(CProfilesTest, LoadRegistry_SurvivesABadCount) {
    for (const wchar_t* count : {L"viele", L"99999999999", L""}) {
        Store(count, {{L"a", L"D:\\A"}, {L"b", L"D:\\B"}});
        EXPECT_EQ(Loaded(), L"a=D:\\A b=D:\\B ")
            << "the list is written back at the end, nothing may be lost";
    }
    Store(L"-5", {});
    EXPECT_EQ(Loaded(), L"");
    Store(L"2000000000", {});
    const std::clock_t start = std::clock();
    EXPECT_EQ(Loaded(), L"a=D:\\A b=D:\\B = ") << "the two, and one without a directory";
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
    EXPECT_EQ(fake.settings.KeyCount(L"Profiles"), 5u);
    EXPECT_EQ(Loaded(), L"eins=C:\\1 drei=C:\\3 ");
}

// A failing call, or the end of the process in it, leaves one list or the other, whatever the change.
TEST(CProfilesSave, SaveRegistry_FailingOrKilledInAnyCall_LeavesTheOldListOrTheNewOne) {
    const std::vector<std::pair<std::wstring, std::wstring>> changes = {
        {L"ABC", L"AC"}, {L"ABC", L"CAB"}, {L"AB", L"BXA"}, {L"", L"A"}, {L"ABC", L""}, {L"AB", L"AB"}};
    const auto fill = [](CProfiles& profiles, const std::wstring& names) {
        for (const wchar_t name : names)
            profiles.Add(std::wstring(1, name), std::wstring(L"C:\\") + name, false, nullptr);
    };
    const auto stored = [] {
        CProfiles loaded;
        loaded.LoadRegistry();
        std::wstring names;
        for (const CProfile* entry : loaded.NewEnum())
            names += entry->Directory == L"C:\\" + entry->Name ? entry->Name : L"?";
        return names;
    };
    for (const auto& [before, after] : changes) {
        for (const bool killed : {false, true}) {
            bool fired = true;
            for (int n = 1; fired; ++n) {
                SCOPED_TRACE(AnsiFromText(before + L" to " + after) + ", call " + std::to_string(n));
                FakePlatform machine;
                CProfiles old, changed;
                fill(old, before);
                old.SaveRegistry();
                changed.LoadRegistry();
                changed.Clear();
                fill(changed, after);
                killed ? machine.failures.KillInNthOfAny(n) : machine.failures.FailNthOfAny(n);
                const bool saved = changed.SaveRegistry();
                fired = machine.Fired();
                machine.failures.FailNone();
                const std::wstring left = stored();
                EXPECT_TRUE(left == before || left == after) << AnsiFromText(left);
                if (!killed || !fired) {
                    EXPECT_EQ(left, saved ? after : before);
                }
                EXPECT_TRUE(saved || fired);
                changed.SaveRegistry();
                EXPECT_EQ(stored(), after);
                EXPECT_EQ(machine.settings.KeyCount(L"Profiles"), 1 + 2 * after.size());
            }
        }
    }
}

TEST_F(CProfilesTest, SaveRegistry_KeepsWhatAnotherInstanceHasEntered) {
    list.Add(L"eins", L"C:\\1", false, nullptr);
    list.Add(L"zwei", L"C:\\2", false, nullptr);
    list.SaveRegistry();
    CProfiles other;
    other.LoadRegistry();
    other.Add(L"drei", L"C:\\3", false, nullptr);
    other.SaveRegistry();
    list.Remove(1);
    list.SaveRegistry();
    EXPECT_EQ(Loaded(), L"zwei=C:\\2 drei=C:\\3 ");
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
    for (const int outside : {0, 3})
        EXPECT_THROW(list.Item(outside), RuntimeError);
}

}  // namespace
