#include "engine/formatsets/modFormatSet.h"

#include "engine/formatsets/FormatSetTest.h"
#include "fake/FaultLoop.h"

namespace {

class modFormatSetTest : public FormatSetTest {};

TEST_F(modFormatSetTest, InitDefaultFormatSets_MakesTheTwoSetsWithSortedEntries) {
    InitDefaultFormatSets();
    EXPECT_TRUE(FormatSetsChanged);
    ASSERT_EQ(FormatSets().Count(), 2);
    const FormatSet picture = {L"Paintprush-Bild", L"Bitmap,DIB", {{L"Bitmap", true}, {L"DIB", false}}};
    const FormatSet text = {L"Text",
                            L"<\?\?\?>,OemText,Text,Unicode",
                            {{L"<\?\?\?>", false}, {L"OemText", true}, {L"Text", true}, {L"Unicode", true}}};
    EXPECT_EQ(FormatSets().Item(1), picture);
    EXPECT_EQ(FormatSets().Item(2), text);
}

TEST_F(modFormatSetTest, FindFormatSet_MatchesTheSameNamesInAnyOrder) {
    InitDefaultFormatSets();
    const auto found = [](std::initializer_list<const wchar_t*> names) {
        return FindFormatSet(FormatSets(), FormatsNamed(names).get());
    };
    EXPECT_EQ(found({L"DIB", L"Bitmap"}), 1);
    EXPECT_EQ(found({L"Unicode", L"Text", L"<\?\?\?>", L"OemText"}), 2);
    EXPECT_EQ(found({L"Bitmap", L"DIB", L"Palette"}), 0);
    EXPECT_EQ(found({L"Bitmap"}), 0);
    EXPECT_EQ(found({L"bitmap", L"DIB"}), 0);
    EXPECT_EQ(found({}), 0);
    EXPECT_EQ(FindFormatSet(FormatSets(), nullptr), 0);
}

TEST_F(modFormatSetTest, AddFormatSet_KeepsEveryFormatAndIsFoundFromThenOn) {
    const auto formats = FormatsNamed({L"b", L"a", L"Z", L"a"});
    EXPECT_EQ(AddFormatSet(FormatSets(), formats.get(), L"Neu"), 1);
    EXPECT_TRUE(FormatSetsChanged);
    EXPECT_EQ(FormatSets().Item(1).Key, L"Z,a,a,b");  // code units: capitals come first
    EXPECT_EQ(FormatSets().Item(1).Formats,
              (std::vector<FormatSetEntry>{{L"Z", true}, {L"a", true}, {L"a", true}, {L"b", true}}));
    EXPECT_EQ(AddFormatSet(FormatSets(), formats.get(), L"Neu"), 2);
    EXPECT_EQ(FindFormatSet(FormatSets(), FormatsNamed({L"a", L"Z", L"b", L"a"}).get()), 1);
    EXPECT_EQ(AddFormatSet(FormatSets(), nullptr, L"Nichts"), -1);
    EXPECT_EQ(FormatSets().Count(), 2);
}

TEST_F(modFormatSetTest, FormatsKey_TakesNamesApartAtTheirCommas) {
    EXPECT_EQ(FormatsKey(*FormatsNamed({L"b,c", L"a", L"c"})), L"a,b,c,c");
    EXPECT_EQ(FormatsKey(*FormatsNamed({L"c,", L"a"})), L",a,c");
    EXPECT_EQ(FormatsKey(*FormatsNamed({L"b,a"})), L"b,a");
    EXPECT_EQ(FormatsKey(*FormatsNamed({})), L"");
}

TEST_F(modFormatSetTest, DeleteFormatSet_MovesTheLaterOnesDown) {
    FormatSetList list = ListNamed({L"1", L"2", L"3"});
    FormatSetsChanged = false;
    for (const int bad : {-1, 0, 4})
        EXPECT_FALSE(DeleteFormatSet(list, bad));
    EXPECT_EQ(list, ListNamed({L"1", L"2", L"3"}));
    FormatSetsChanged = false;
    EXPECT_TRUE(DeleteFormatSet(list, 2));
    EXPECT_TRUE(FormatSetsChanged);
    EXPECT_EQ(list, ListNamed({L"1", L"3"}));
    EXPECT_TRUE(DeleteFormatSet(list, 2));
}

TEST_F(modFormatSetTest, GetFormatSaveFlag_OfTheFirstEntryWithExactlyThatName) {
    InitDefaultFormatSets();
    FormatSets().Append({L"Doppelt", L"a,a", {{L"a", false}, {L"a", true}}});
    EXPECT_TRUE(GetFormatSaveFlag(1, L"Bitmap"));
    EXPECT_FALSE(GetFormatSaveFlag(1, L"DIB"));
    EXPECT_FALSE(GetFormatSaveFlag(2, L"text"));
    EXPECT_FALSE(GetFormatSaveFlag(1, L"Text"));
    EXPECT_FALSE(GetFormatSaveFlag(3, L"a"));
    for (const int none : {-1, 0, 4})
        EXPECT_FALSE(GetFormatSaveFlag(none, L"Bitmap"));
}

TEST_F(modFormatSetTest, IsKeptUnknownFormat_FollowsTheMask) {
    const std::wstring names[] = {L"Text", L"Rich Text Format", L"DIB", L"Bitmap", L"OwnerLink", L"text"};
    const auto kept = [&names](std::int16_t mask) {
        Options().UnknownFormats = mask;
        int result = 0;
        for (std::size_t i = 0; i < std::size(names); ++i)
            result |= IsKeptUnknownFormat(names[i]) << i;
        return result;
    };
    for (std::int16_t mask = 0; mask < 16; ++mask)
        EXPECT_EQ(kept(mask), mask);
    EXPECT_EQ(kept(16 + 5), 5);
    EXPECT_EQ(kept(254), 14);
    EXPECT_EQ(kept(255), 63);
}

TEST_F(modFormatSetTest, LoadFormatSets_WithoutAFile_MakesTheDefaultsAndSaveWritesThem) {
    EXPECT_TRUE(LoadFormatSets());
    const FormatSetList defaults = FormatSets();
    EXPECT_EQ(defaults.Count(), 2);
    EXPECT_FALSE(fake.files.Has(kFile));
    EXPECT_TRUE(SaveFormatSets());

    InitFormatSets();
    FormatSetsChanged = true;
    EXPECT_TRUE(LoadFormatSets());
    EXPECT_EQ(FormatSets(), defaults);
    EXPECT_FALSE(FormatSetsChanged);
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(modFormatSetTest, SaveFormatSets_Unchanged_LeavesTheFileAlone) {
    fake.files.SetBytes(kFile, "whatever");
    EXPECT_TRUE(SaveFormatSets());
    EXPECT_EQ(fake.files.Bytes(kFile), "whatever");
    EXPECT_EQ(fake.failures.Calls(Operation::FilesOpen), 0);
}

// What is on disk is looked at by the next load, before anything saves again.
TEST_F(modFormatSetTest, SaveAndLoadFormatSets_WithAnyFault_KeepTheOldOrTheNewList) {
    const FormatSetList before = ListNamed({L"alt", L"und noch einer"});
    const FormatSetList after = ListNamed({L"neu", L"und noch einer, aber länger"});
    const auto save = [](const FormatSetList& list) {
        FormatSets() = list;
        FormatSetsChanged = true;
        return SaveFormatSets();
    };
    bool saved = false;
    for (const Fault fault : {Fault::OneCall, Fault::TwoCalls, Fault::Kill, Fault::PowerLoss}) {
        const auto prepare = [&] {
            ASSERT_TRUE(save(before));
            fake.user.messages.clear();
        };
        const auto check = [&](bool struck) {
            EXPECT_TRUE(fault == Fault::PowerLoss || fake.user.messages.size() == (saved ? 0u : 1u));
            ASSERT_TRUE(LoadFormatSets());
            EXPECT_TRUE(saved || struck);
            const bool mayBeNew = saved || fault != Fault::OneCall;
            EXPECT_TRUE((mayBeNew && FormatSets() == after) || (!saved && FormatSets() == before));
        };
        EXPECT_GT(StrikeEverywhere(
                      fault, fake, prepare, [&] { saved = save(after); }, check),
                  5);
    }
    ASSERT_TRUE(save(before));
    for (int n = 2; n == 2 || fake.Fired(); ++n) {  // the first call asks whether the file is there
        InitFormatSets();
        fake.user.messages.clear();
        fake.FailNthOfAny(n);
        const bool loaded = LoadFormatSets();
        EXPECT_EQ(fake.user.messages.size(), loaded ? 0u : 1u);
        EXPECT_EQ(FormatSets(), loaded ? before : FormatSetList());
        EXPECT_TRUE(loaded || fake.Fired());
    }
}

// Held for a moment or damaged for good, the file is not simply written over.
TEST_F(modFormatSetTest, SaveFormatSets_AfterALoadThatFailed_KeepsWhatWasThere) {
    FormatSets() = ListNamed({L"alt"});
    FormatSetsChanged = true;
    ASSERT_TRUE(SaveFormatSets());
    const std::string old = *fake.files.Bytes(kFile);
    for (const bool held : {true, false}) {
        FormatSetsChanged = false;
        fake.files.SetBytes(kFile, held ? old : "\1damaged");
        if (held) fake.files.LockByOther(kFile);
        EXPECT_FALSE(LoadFormatSets());
        EXPECT_FALSE(LoadFormatSetsAgain());
        FormatSetsChanged = true;  // a click in the dialog is enough
        EXPECT_NE(SaveFormatSets(), held) << "without a copy nothing is written";
        fake.files.UnlockByOther(kFile);
        if (!held) break;
        EXPECT_EQ(fake.files.Bytes(kFile), old);
        FormatSetsChanged = false;
        EXPECT_TRUE(LoadFormatSetsAgain());
        EXPECT_EQ(FormatSets(), ListNamed({L"alt"}));
    }
    EXPECT_EQ(fake.files.Bytes(kFile + L".bak"), "\1damaged");
    EXPECT_NE(fake.user.LastMessage().find(FormatSetFile + L".bak"), std::wstring::npos);
}

}  // namespace
