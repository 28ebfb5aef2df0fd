#include "engine/process/modOption.h"

#include "engine/process/AppTest.h"

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

TEST_F(modOptionTest, LoadOptions_EmptyStore_TakesTheDefaultsOfAbsentKeys) {
    OptionValues expected;
    expected.EditPropAfterSnap = true;
    expected.UnknownFormats = 5;
    expected.KeyActivate = L"L";
    EXPECT_EQ(Loaded(), expected);
    EXPECT_EQ(fake.settings.KeyCount(kSettings), 0u);
}

TEST_F(modOptionTest, LoadOptions_OddEntries_CountByTheirRule) {
    for (const wchar_t* text : {L"True", L"-1", L"", L"1 ", L"01"}) {
        Store(L"ShowSplash", text);
        EXPECT_FALSE(Loaded().ShowSplash) << "only 1 is on";
    }
    Store(L"ShowSplash", L"1");
    EXPECT_TRUE(Loaded().ShowSplash);
    for (const auto& [stored, key] : {std::pair{L"", L"L"}, {L"AB", L"L"}, {L"x", L"x"}}) {
        Store(L"KeyActivate", stored);
        EXPECT_EQ(Loaded().KeyActivate, key);
    }
    Store(L"NewtextMode", L" -7 ");
    EXPECT_EQ(Loaded().NewtextMode, -7);
    EXPECT_TRUE(fake.user.messages.empty());
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

// Every option that can be bad, in the order of the store.
constexpr const wchar_t* kNumbers[] = {L"NewtextMode", L"NewMaxLen", L"MaxClipSize", L"ActionUnknownSet",
                                       L"UnknownFormats"};

TEST_F(modOptionTest, LoadOptions_BadEntry_KeepsWhatStandsBeforeItAndResetsTheRest) {
    Options() = UnusualValues();
    SaveOptions();
    for (const wchar_t* bad : {L"12x", L"99999999999"}) {
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
    DebugMode = true;
    Store(kNumbers[0], L"abc");
    Loaded();
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_NE(Log().find("LoadOptions: "), std::string::npos);
}

TEST_F(modOptionTest, SaveOptions_AWriteThatFails_DoesNotStopTheOthers) {
    Options() = UnusualValues();
    fake.FailNth(Operation::SettingsWrite, 3);
    EXPECT_FALSE(SaveOptions());
    EXPECT_EQ(fake.settings.KeyCount(kSettings), 20u);
    EXPECT_EQ(Stored(L"KeyActivate"), L"Q");
}

}  // namespace
