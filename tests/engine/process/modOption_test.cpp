#include "engine/process/modOption.h"

#include "engine/process/AppTest.h"
#include "engine/process/OptionTable.h"
#include "engine/process/SearchCriteria.h"
#include "fake/FaultLoop.h"
#include "platform/Text.h"

namespace {

const std::wstring kSettings = L"Settings";

class modOptionTest : public AppTest {
 protected:
    void Store(const std::wstring& key, const std::wstring& value) {
        fake.settings.Set(kSettings, key, value);
    }
    std::wstring Stored(const std::wstring& key) const {
        return fake.settings.Value(kSettings, key).value_or(L"<absent>");
    }
    static OptionValues Loaded() {
        SetDefaultOptions();
        LoadOptions();
        return Options();
    }
};

// What a new installation starts with.
OptionValues ValuesOfAnEmptyStore() {
    OptionValues values;
    values.TopWindow = values.SnapSound = values.IconAfterSnap = values.StartAsIcon = values.LockEdit = false;
    values.IconAfterSetClip = values.SetBeep = values.AutoSnap = false;
    values.EditPropAfterSnap = values.ShowInTray = values.ShowTooltips = true;
    values.ShowSplash = values.SetClipByDblClick = true;
    values.SoundFile = values.UserInfo = L"";
    values.NewtextMode = 0;
    values.NewMaxLen = 20;
    values.MaxClipSize = 0;
    values.ActionUnknownSet = 1;
    values.UnknownFormats = 5;
    values.UnknownSet = L"Clip";
    values.KeyActivate = L"L";
    values.SkipPrivate = true;
    values.SkipSame = false;
    values.NameByContent = values.StartWithWindows = values.AutoSnapAtStart = values.CloseToIcon =
        values.HotKeyToList = values.KeepDeleted = false;
    return values;
}

// No option is as it is reset or counts when it is absent.
OptionValues UnusualValues() {
    OptionValues values;
    for (const OptionRow& row : OptionRows()) {
        const bool on = OptionText(row, ValuesOfAnEmptyStore()) == L"1";
        EXPECT_TRUE(SetOption(row, values, on ? L"0" : L"1"));
    }
    values.AutoSnap = values.StartWithWindows = values.AutoSnapAtStart = false;
    values.UserInfo = L"Zeile 1\r\nZeile 2";
    values.MaxClipSize = 2'000'000'000;
    return values;
}

TEST_F(modOptionTest, SetDefaultOptions_PutsBackTheResetColumnAndTheRecommendedOnesAddToIt) {
    Options() = UnusualValues();
    SetDefaultOptions();
    OptionValues expected = ValuesOfAnEmptyStore();
    expected.EditPropAfterSnap = false;
    expected.UnknownFormats = 255;
    expected.KeyActivate = L"C";
    EXPECT_EQ(Options(), expected);
    SetRecommendedOptions();
    expected.NewtextMode = 1;
    expected.SkipSame = true;
    expected.NameByContent = true;
    expected.NewMaxLen = 60;
    expected.AutoSnap = expected.AutoSnapAtStart = expected.StartWithWindows = true;
    expected.CloseToIcon = expected.HotKeyToList = expected.IconAfterSetClip = expected.KeepDeleted = true;
    EXPECT_EQ(Options(), expected);
    SaveOptions();
    expected.AutoSnap = false;
    EXPECT_EQ(Loaded(), expected) << "the system's list and the store bring them back";
    EXPECT_EQ(fake.settings.LogonCommand(), L"\"C:\\NXCLIP\\NXClip.exe\" ICON");
    Options().StartWithWindows = false;
    ApplyStartWithWindows();
    EXPECT_EQ(fake.settings.LogonCommand(), L"");
}

TEST_F(modOptionTest, LoadOptions_EmptyStore_TakesTheDefaultsOfAbsentKeys) {
    EXPECT_EQ(Loaded(), ValuesOfAnEmptyStore());
}

TEST_F(modOptionTest, SaveOptions_ThenLoad_BringsEveryOptionBack) {
    Options() = UnusualValues();
    Options().AutoSnap = true;
    EXPECT_TRUE(SaveOptions());
    EXPECT_EQ(Loaded(), UnusualValues());  // automatic capture is off again: it is not stored
    EXPECT_EQ(fake.settings.KeyCount(kSettings), OptionRows().size() - 2);
    EXPECT_EQ(Stored(L"TopWindow") + Stored(L"MaxClipSize"), L"12000000000");
}

TEST_F(modOptionTest, LoadOptions_FlagIsOnOnlyForExactlyOne) {
    for (const wchar_t* text : {L"True", L"-1", L"", L"1 ", L"01", L"2", L"0"}) {
        Store(L"ShowSplash", text);
        EXPECT_FALSE(Loaded().ShowSplash) << "stored as \"" << std::string(text, text + wcslen(text)) << '"';
    }
    Store(L"ShowSplash", L"1");
    EXPECT_TRUE(Loaded().ShowSplash);
}

TEST_F(modOptionTest, LoadOptions_KeyActivateOfOtherThanOneCharacter_BecomesL) {
    for (const auto& [stored, loaded] : {std::pair{L"", L"L"}, {L"AB", L"L"}, {L"x", L"x"}}) {
        Store(L"KeyActivate", stored);
        EXPECT_EQ(Loaded().KeyActivate, loaded);
    }
}

TEST_F(modOptionTest, LoadOptions_NewtextMode_IsReadUnderEitherSpelling) {
    Store(L"NewTextMode", L"1");
    EXPECT_EQ(Loaded().NewtextMode, 1);
    Store(L"NewtextMode", L" -7 ");
    EXPECT_EQ(Loaded().NewtextMode, -7);
}

TEST_F(modOptionTest, LoadOptions_BadEntry_KeepsWhatStandsBeforeItAndResetsTheRest) {
    const OptionValues reset, stored = UnusualValues();
    Options() = stored;
    SaveOptions();
    int failed = 0;
    for (const OptionRow& failing : OptionRows()) {
        const bool number =
            !IsFlag(failing) && !std::holds_alternative<std::wstring OptionValues::*>(failing.member);
        if (!number) continue;
        for (const wchar_t* bad : {L"abc", L"", L"12x", L"99999999999"}) {
            Store(failing.key, bad);
            const OptionValues values = Loaded();
            for (const OptionRow& row : OptionRows()) {
                EXPECT_EQ(OptionText(row, values), OptionText(row, &row < &failing ? stored : reset))
                    << AnsiFromText(row.key != nullptr ? row.key : L"AutoSnap");
            }
        }
        Store(failing.key, OptionText(failing, stored));
        ++failed;
    }
    EXPECT_EQ(failed, 7);
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(modOptionTest, LoadOptions_InDebugMode_LogsAndTellsOfABadEntry) {
    DebugMode = true;
    const std::string time = "15.11.1999 13:10:00: ";
    Loaded();
    EXPECT_EQ(Log(), time + "LoadOptions ...\r\n" + time + "LoadOptions beendet\r\n");
    EXPECT_TRUE(fake.user.messages.empty());

    fake.files.SetBytes(kLog, "");
    Store(L"NewMaxLen", L"abc");
    Loaded();
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(Log().find(time + "LoadOptions ...\r\n" + time + "LoadOptions: "), 0u);
    EXPECT_TRUE(Log().ends_with("\r\nNXClip\r\n"));
}

TEST_F(modOptionTest, SaveOptions_FailingTwiceOrKilledInAnyCall_LeavesEachOptionOldOrNew) {
    const OptionValues after = UnusualValues();
    OptionValues before;
    LoadOptions();
    std::swap(before, Options());
    bool saved = false;
    const auto store = [&](const OptionValues& values) {
        Options() = values;
        return SaveOptions();
    };
    for (const Fault fault : {Fault::OneCall, Fault::TwoCalls, Fault::Kill}) {
        const auto check = [&](bool struck) {
            EXPECT_EQ(saved, !struck);
            int kept = 0;
            const OptionValues left = Loaded();
            for (const OptionRow& row : OptionRows()) {
                const std::wstring text = OptionText(row, left);
                EXPECT_TRUE(text == OptionText(row, before) || text == OptionText(row, after));
                kept += text != OptionText(row, after);
            }
            if (fault != Fault::Kill) {
                EXPECT_LE(kept, fault == Fault::OneCall ? 1 : 2) << "one that fails stops no other";
            }
            EXPECT_TRUE(store(after));
            EXPECT_EQ(Loaded(), after);
        };
        EXPECT_GT(StrikeEverywhere(
                      fault, fake, [&] { ASSERT_TRUE(store(before)); }, [&] { saved = store(after); }, check),
                  20);
    }
}

TEST_F(modOptionTest, InitSearchOptions_PutsTheCriteriaBack) {
    TheSearchCriteria().kinds = 2;
    TheSearchCriteria().downward = false;
    InitSearchOptions();
    EXPECT_EQ(TheSearchCriteria(), SearchCriteria());
}

}  // namespace
