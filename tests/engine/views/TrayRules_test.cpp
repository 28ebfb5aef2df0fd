#include "engine/views/TrayRules.h"

#include <gtest/gtest.h>

namespace {

TEST(TrayRules, TrayEventOf_KnowsExactlyTheSevenMouseMessages) {
    using enum TrayMouse;
    const TrayMouseEvent expected[] = {{Move, 0}, {Down, 1}, {Up, 1},         {DoubleClick, 1},
                                       {Down, 2}, {Up, 2},   {DoubleClick, 2}};
    for (std::uint32_t i = 0; i < 7; ++i)
        EXPECT_EQ(TrayEventOf(512 + i), expected[i]) << 512 + i;
    for (const std::uint32_t other : {0u, 511u, 519u, 520u, 521u, 1024u, 0xFFFFFFFFu}) {
        EXPECT_FALSE(TrayEventOf(other)) << other;
    }
}

TEST(TrayRules, CaptureStateOf_TheLockComesFirst) {
    EXPECT_EQ(CaptureStateOf(true, true, true), CaptureState::Locked);
    EXPECT_EQ(CaptureStateOf(false, true, false), CaptureState::Locked);
    EXPECT_EQ(CaptureStateOf(false, false, true), CaptureState::Off);
    EXPECT_EQ(CaptureStateOf(true, false, true), CaptureState::Waiting);
    EXPECT_EQ(CaptureStateOf(true, false, false), CaptureState::On);
    for (int state = 0; state < 4; ++state) {
        const std::wstring tip = TrayTipOf(static_cast<CaptureState>(state));
        EXPECT_LT(tip.size(), kTrayTipSize) << "it would be cut";
    }
}

TEST(TrayRules, TrayTipBytes_LeavesRoomForTheTerminator) {
    EXPECT_EQ(TrayTipBytes(L"NXClip für alle"), "NXClip f\xFCr alle");
    EXPECT_EQ(TrayTipBytes(std::wstring(63, L'x')).size(), 63u);
    EXPECT_EQ(TrayTipBytes(std::wstring(64, L'ü')), std::string(63, '\xFC'));
    EXPECT_EQ(TrayTipBytes(std::wstring(L"Tip\0Rest", 8)), "Tip");
}

}  // namespace
