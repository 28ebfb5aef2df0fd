#include "engine/clipboard/Diagnosis.h"

#include "fake/FakePlatformTest.h"

using DiagnosisTest = FakePlatformTest;

TEST_F(DiagnosisTest, DescribeWindow_ShowsTitleAndNumber) {
    EXPECT_EQ(DescribeAddress(static_cast<ProcedureAddress>(0x1A0F)), L"1A0F");
    EXPECT_EQ(DescribeAddress(ProcedureAddress::None), L"0");
    EXPECT_EQ(DescribeWindow(WindowHandle::None, L"keines"), L"keines");
    const WindowHandle titled = fake.windows.AddWindow(L"Brief");
    EXPECT_EQ(DescribeWindow(titled, L"keines"),
              L"Brief (" + DescribeAddress(static_cast<ProcedureAddress>(titled)) + L")");
    EXPECT_TRUE(DescribeWindow(fake.windows.AddWindow(L""), L"").starts_with(L"<unbekannt> ("));
}
