#include "engine/profiles/CProfiles.h"

#include <array>
#include <ctime>

#include "engine/tree/TestTree.h"
#include "fake/FaultLoop.h"
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

std::wstring StoredNames() {
    CProfiles loaded;
    loaded.LoadRegistry();
    std::wstring names;
    for (const CProfile* entry : loaded.NewEnum())
        names += entry->Directory == L"C:\\" + entry->Name ? entry->Name : L"?";
    return names;
}

// A machine with a stored list, and the program's own.
struct ListWorld {
    explicit ListWorld(const std::wstring& names) { Save(names); }
    bool Save(const std::wstring& names) {
        while (list.Count() > 0)
            list.Remove(1);
        for (const wchar_t name : names)
            list.Add(std::wstring(1, name), std::wstring(L"C:\\") + name, false, nullptr);
        return list.SaveRegistry();
    }
    FakePlatform fake;
    CProfiles list;
    std::wstring stored;  // as far as the saves said
};

// Two changes, one after the other: the list is the one that the last save told to stand. Killed in a call,
// it is that one or the one that was being stored.
TEST(CProfilesSave, SaveRegistry_FailingTwiceOrKilledInAnyCall_LeavesOneListOrTheOther) {
    const std::vector<std::array<std::wstring, 3>> cases = {{L"ABC", L"AC", L"CAB"},
                                                            {L"AB", L"BXA", L""},
                                                            {L"", L"A", L"AB"},
                                                            {L"ABC", L"", L"C"},
                                                            {L"AB", L"AB", L"B"}};
    int strikes = 0;
    for (const auto& [before, first, second] : cases) {
        SCOPED_TRACE(AnsiFromText(before + L" to " + first + L" to " + second));
        for (const Fault fault : {Fault::OneCall, Fault::TwoCalls, Fault::Kill}) {
            const auto make = [&] {
                auto world = std::make_unique<ListWorld>(before);
                world->stored = before;
                return world;
            };
            const auto operation = [&](ListWorld& world) {
                for (const std::wstring& list : {first, second})
                    if (world.Save(list)) world.stored = list;
            };
            const auto check = [&](ListWorld& world, bool struck) {
                const std::wstring left = StoredNames();
                const bool killed = struck && fault == Fault::Kill;
                EXPECT_TRUE(left == world.stored || (killed && (left == first || left == second)))
                    << AnsiFromText(left);
                EXPECT_TRUE(struck || left == second);
                EXPECT_TRUE(world.Save(second));
                EXPECT_EQ(StoredNames(), second);
                EXPECT_EQ(world.fake.settings.KeyCount(L"Profiles"), 1 + 2 * second.size());
            };
            strikes += StrikeEverywhere(fault, make, operation, check);
        }
    }
    EXPECT_GT(strikes, 150);
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
    list.Add(L"vier", L"C:\\4", false, nullptr);
    list.SaveRegistry();
    EXPECT_EQ(Loaded(), L"zwei=C:\\2 vier=C:\\4 drei=C:\\3 ");
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
