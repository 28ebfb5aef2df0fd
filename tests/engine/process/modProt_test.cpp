#include "engine/process/modProt.h"

#include "engine/process/AppTest.h"

namespace {

class modProtTest : public AppTest {};

TEST_F(modProtTest, WriteLog_AppendsOneLineWithItsTimeAndClosesTheFile) {
    EXPECT_TRUE(WriteLog(L"Erster für den Test"));
    EXPECT_EQ(fake.ledger.Owned(ResourceKind::File), 0);
    fake.clock.Advance(std::chrono::minutes(5));
    EXPECT_TRUE(WriteLog(L"Zweiter"));
    EXPECT_EQ(Log(),
              "15.11.1999 13:10:00: Erster f\xFCr den Test\r\n"
              "15.11.1999 13:15:00: Zweiter\r\n");
}

TEST_F(modProtTest, LogDebug_WritesOnlyInDebugMode) {
    LogDebug(L"nichts");
    EXPECT_FALSE(fake.files.Has(kLog));
    DebugMode = true;
    LogDebug(L"etwas");
    EXPECT_EQ(Log(), "15.11.1999 13:10:00: etwas\r\n");
}

TEST_F(modProtTest, ResetLog_DeletesTheLogAndTellsWhyItCannot) {
    ResetLog();
    EXPECT_TRUE(fake.user.messages.empty());
    fake.files.SetBytes(kLog, "old");
    ResetLog();
    EXPECT_FALSE(fake.files.Has(kLog));

    fake.files.SetBytes(kLog, "old");
    fake.files.LockByOther(kLog);
    ResetLog();
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_NE(fake.user.LastMessage().find(L"protokol.txt"), std::wstring::npos);
    EXPECT_EQ(Log(), "old");
}

}  // namespace
