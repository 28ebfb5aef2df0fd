#include "engine/process/modOption.h"

#include "engine/process/AppTest.h"
#include "engine/process/SearchCriteria.h"

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
    return values;
}

OptionValues UnusualValues() {
    OptionValues values;
    values.TopWindow = values.SnapSound = values.EditPropAfterSnap = values.IconAfterSnap = true;
    values.ShowInTray = values.ShowTooltips = values.ShowSplash = values.SetClipByDblClick = false;
    values.StartAsIcon = values.LockEdit = values.IconAfterSetClip = values.SetBeep = true;
    values.SoundFile = L"C:\\Klänge\\pling.wav";
    values.UserInfo = L"Zeile 1\r\nZeile 2";
    values.NewtextMode = 1;
    values.NewMaxLen = 255;
    values.MaxClipSize = 2'000'000'000;
    values.ActionUnknownSet = 0;
    values.UnknownFormats = 31;
    values.UnknownSet = L"Sonstiges";
    values.KeyActivate = L"Q";
    return values;
}

TEST_F(modOptionTest, SetDefaultOptions_PutsBackTheResetColumn) {
    Options() = UnusualValues();
    SetDefaultOptions();
    OptionValues expected = ValuesOfAnEmptyStore();
    expected.EditPropAfterSnap = false;
    expected.UnknownFormats = 255;
    expected.KeyActivate = L"C";
    EXPECT_EQ(Options(), expected);
}

TEST_F(modOptionTest, LoadOptions_EmptyStore_TakesTheDefaultsOfAbsentKeys) {
    EXPECT_EQ(Loaded(), ValuesOfAnEmptyStore());
    EXPECT_EQ(fake.settings.KeyCount(kSettings), 0u);
}

TEST_F(modOptionTest, SaveOptions_ThenLoad_BringsEveryOptionBack) {
    Options() = UnusualValues();
    Options().AutoSnap = true;
    EXPECT_TRUE(SaveOptions());
    EXPECT_EQ(Loaded(), UnusualValues());  // automatic capture is off again: it is not stored
    EXPECT_EQ(fake.settings.KeyCount(kSettings), 21u);
    EXPECT_EQ(Stored(L"TopWindow"), L"1");
    EXPECT_EQ(Stored(L"ShowInTray"), L"0");
    EXPECT_EQ(Stored(L"MaxClipSize"), L"2000000000");
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
    const auto loadedAs = [this](const wchar_t* stored) {
        Store(L"KeyActivate", stored);
        return Loaded().KeyActivate;
    };
    EXPECT_EQ(loadedAs(L""), L"L");
    EXPECT_EQ(loadedAs(L"AB"), L"L");
    EXPECT_EQ(loadedAs(L"x"), L"x");
    EXPECT_EQ(loadedAs(L"7"), L"7");
}

TEST_F(modOptionTest, LoadOptions_NewtextMode_IsReadUnderEitherSpelling) {
    Store(L"NewTextMode", L"1");
    EXPECT_EQ(Loaded().NewtextMode, 1);
    Store(L"NewtextMode", L" -7 ");
    EXPECT_EQ(Loaded().NewtextMode, -7);
}

// Every option that can be bad, in the order of the store.
constexpr const wchar_t* kNumbers[] = {L"NewtextMode", L"NewMaxLen", L"MaxClipSize", L"ActionUnknownSet",
                                       L"UnknownFormats"};

TEST_F(modOptionTest, LoadOptions_BadEntry_KeepsWhatStandsBeforeItAndResetsTheRest) {
    Options() = UnusualValues();
    SaveOptions();
    for (const wchar_t* bad : {L"abc", L"", L"12x", L"99999999999"}) {
        for (std::size_t failing = 0; failing < std::size(kNumbers); ++failing) {
            const std::wstring before = Stored(kNumbers[failing]);
            Store(kNumbers[failing], bad);
            const OptionValues values = Loaded();
            Store(kNumbers[failing], before);

            const OptionValues reset, stored = UnusualValues();
            const auto expected = [&](auto OptionValues::*field, std::size_t position) {
                return position < failing ? stored.*field : reset.*field;
            };
            EXPECT_EQ(values.UserInfo, stored.UserInfo);
            EXPECT_EQ(values.EditPropAfterSnap, true);
            EXPECT_EQ(values.NewtextMode, expected(&OptionValues::NewtextMode, 0));
            EXPECT_EQ(values.NewMaxLen, expected(&OptionValues::NewMaxLen, 1));
            EXPECT_EQ(values.SetClipByDblClick, expected(&OptionValues::SetClipByDblClick, 1));
            EXPECT_EQ(values.SetBeep, expected(&OptionValues::SetBeep, 1));
            EXPECT_EQ(values.MaxClipSize, expected(&OptionValues::MaxClipSize, 2));
            EXPECT_EQ(values.ActionUnknownSet, expected(&OptionValues::ActionUnknownSet, 3));
            EXPECT_EQ(values.UnknownFormats, reset.UnknownFormats);
            EXPECT_EQ(values.UnknownSet, reset.UnknownSet);
            EXPECT_EQ(values.KeyActivate, L"C");
        }
    }
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_FALSE(fake.files.Has(kLog));
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
    ASSERT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(fake.user.messages[0].text,
              L"Fehlerhafter Eintrag in der Registry.\r\n"
              L"Standardeinstellungen wurden gesetzt und werden beim schliessen des Programmes\r\n"
              L"gesichert.");
    EXPECT_EQ(fake.user.messages[0].title, L"NXClip");
    EXPECT_EQ(Log().find(time + "LoadOptions ...\r\n" + time + "LoadOptions: "), 0u);
    EXPECT_TRUE(Log().ends_with("\r\nNXClip\r\n"));
}

TEST_F(modOptionTest, SaveOptions_AWriteThatFails_DoesNotStopTheOthers) {
    Options() = UnusualValues();
    fake.FailNth(Operation::SettingsWrite, 3);
    EXPECT_FALSE(SaveOptions());
    EXPECT_EQ(fake.settings.KeyCount(kSettings), 20u);
    EXPECT_EQ(Stored(L"KeyActivate"), L"Q");
}

TEST_F(modOptionTest, InitSearchOptions_PutsTheCriteriaBack) {
    TheSearchCriteria().kinds = 2;
    TheSearchCriteria().downward = false;
    InitSearchOptions();
    EXPECT_EQ(TheSearchCriteria(), SearchCriteria());
}

}  // namespace
