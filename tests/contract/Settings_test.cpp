#include "platform/SettingsStore.h"

#include "contract/ContractTest.h"

namespace {

using SettingsContract = ContractTest;

}  // namespace

TEST_F(SettingsContract, Read_GivesWhatWasWrittenLast) {
    EXPECT_EQ(settings.Read(L"Settings", L"Key", L"absent"), L"absent");
    EXPECT_TRUE(settings.Write(L"Settings", L"Key", L"first, much longer"));
    EXPECT_TRUE(settings.Write(L"Settings", L"Key", L"second"));
    EXPECT_EQ(settings.Read(L"Settings", L"Key", L"absent"), L"second");
    EXPECT_EQ(settings.Read(L"SETTINGS", L"kEY", L"absent"), L"second");
    EXPECT_EQ(settings.Read(L"Settings", L"Other", L""), L"");
    EXPECT_EQ(settings.Read(L"Profiles", L"Key", L"absent"), L"absent");
}

TEST_F(SettingsContract, Write_KeepsEveryText) {
    EXPECT_TRUE(settings.Write(L"Settings", L"Empty", L""));
    EXPECT_EQ(settings.Read(L"Settings", L"Empty", L"absent"), L"");
    const std::wstring text = L" Größe „€“\t\r\nŁódź " + std::wstring(5000, L'x');
    EXPECT_TRUE(settings.Write(L"Settings", L"Schlüssel &.%", text));
    EXPECT_EQ(settings.Read(L"Settings", L"Schlüssel &.%", L""), text);
    EXPECT_TRUE(settings.Write(L"Settings", L"Zero", std::wstring(L"ab\0cd", 5)));
    EXPECT_EQ(settings.Read(L"Settings", L"Zero", L""), L"ab");
}

TEST_F(SettingsContract, Delete_TakesTheKeyAndNothingElse) {
    EXPECT_TRUE(settings.Write(L"Profiles", L"1", L"a"));
    EXPECT_TRUE(settings.Write(L"Profiles", L"2", L"b"));
    EXPECT_TRUE(settings.Write(L"Settings", L"1", L"c"));
    EXPECT_TRUE(settings.Write(L"Profiles", L"3", L"d"));
    EXPECT_TRUE(settings.DeleteValue(L"profiles", L"3"));
    EXPECT_EQ(settings.Read(L"Profiles", L"3", L"absent"), L"absent");
    EXPECT_EQ(settings.Read(L"Profiles", L"1", L"absent"), L"a");
    EXPECT_TRUE(settings.DeleteValue(L"Profiles", L"3"));  // nothing is left to delete
    EXPECT_TRUE(settings.DeleteValue(L"None", L"3"));
    EXPECT_EQ(settings.Read(L"Settings", L"1", L"absent"), L"c");
}

TEST_F(SettingsContract, LogonCommand_IsWhatWasSetUntilItIsTakenBack) {
    EXPECT_EQ(settings.LogonCommand(), L"");
    EXPECT_TRUE(settings.SetLogonCommand(L"\"C:\\Käse & Co\\x.exe\" y"));
    EXPECT_EQ(settings.LogonCommand(), L"\"C:\\Käse & Co\\x.exe\" y");
    EXPECT_TRUE(settings.SetLogonCommand(L""));
    EXPECT_TRUE(settings.SetLogonCommand(L""));
    EXPECT_EQ(settings.LogonCommand(), L"");
}
