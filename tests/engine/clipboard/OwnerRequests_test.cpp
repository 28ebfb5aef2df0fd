#include "engine/clipboard/OwnerRequests.h"

#include <algorithm>

#include "engine/clipboard/ClipboardTest.h"

namespace {

using std::chrono::milliseconds;

class OwnerRequestsTest : public ClipboardTest {
 protected:
    // Promised by a program that takes its time, and gives something from the `givesAt`th request on.
    Offer Taking(FormatNumber format, milliseconds time, int givesAt = 1) {
        return {format,
                [=, this](FakeClipboard& clipboard) {
                    asked.push_back(format);
                    fake.clock.Advance(time);
                    const bool gives = std::count(asked.begin(), asked.end(), format) >= givesAt;
                    return gives ? FakeClipboard::Bytes(format, "x").make(clipboard) : DataHandle::None;
                },
                true};
    }
    // How many of the formats are owed when all of them are asked for.
    std::size_t Owed(const Offers& offers) {
        asked.clear();
        fake.clipboard.OtherProgramCopies(offers);
        const OpenClipboardScope opened(mainWindow);
        const auto all = clipBoard.GetClipboardFormats();
        std::vector<CFormat*> formats;
        for (CFormat& format : *all)
            formats.push_back(&format);
        const std::size_t owed = RequestData(formats).size();
        // Whoever saves them asks no more.
        for (CFormat* const format : formats)
            EXPECT_TRUE(format->Delivered.has_value());
        return owed;
    }

    using Numbers = std::vector<FormatNumber>;
    const FormatNumber one = Registered("One"), two = Registered("Two"), three = Registered("Three"),
                       four = Registered("Four"), object = Registered("Embed Source");
    Numbers asked;
};

constexpr milliseconds kQuick(10), kBridge(500), kSlow(4000), kNever(30000);
constexpr int kNot = 100;

TEST_F(OwnerRequestsTest, RequestData_AsksForTheCheapFormatsFirstAndNeverForObjects) {
    EXPECT_EQ(Owed({Taking(object, kQuick), Taking(8, kQuick), FakeClipboard::GdiObject(2),
                    Taking(one, kQuick), Taking(1, kQuick)}),
              0u);
    EXPECT_EQ(asked, (Numbers{1, one, 8, object}));
}

TEST_F(OwnerRequestsTest, RequestData_HoldsTheClipboardForABoundedTime) {
    EXPECT_EQ(Owed({Taking(one, kSlow), Taking(two, kSlow), Taking(three, kSlow), Taking(four, kSlow)}), 1u);
    EXPECT_EQ(asked, (Numbers{one, two, three}));
    EXPECT_EQ(Owed({Taking(one, kQuick), Taking(two, kNever, kNot), Taking(three, kQuick)}), 2u);
    EXPECT_EQ(asked, (Numbers{one, two}));
    fake.windows.hung = fake.clipboard.otherProgram;
    EXPECT_EQ(Owed({Taking(one, kNever), Taking(two, kNever)}), 2u);
    EXPECT_TRUE(asked.empty());
    fake.clock.duringPause = [this] { fake.windows.hung = WindowHandle::None; };
    EXPECT_EQ(Owed({Taking(one, kQuick)}), 0u) << "he was only busy with the format before";
    fake.windows.unanswered = 3;
    EXPECT_EQ(Owed({Taking(one, kQuick), Taking(two, kQuick)}), 0u);
    fake.windows.unanswered = 100;
    EXPECT_EQ(Owed({Taking(one, kNever), Taking(two, kNever)}), 2u);
    EXPECT_TRUE(asked.empty());
    EXPECT_EQ(fake.windows.unanswered, 100 - 15) << "three seconds for all formats together";
}

TEST_F(OwnerRequestsTest, RequestData_AsksOnceMoreForWhatCameTooLate) {
    EXPECT_EQ(Owed({Taking(one, kBridge, 2), Taking(two, kBridge, kNot), Taking(three, kQuick, kNot)}), 1u);
    EXPECT_EQ(asked, (Numbers{one, two, three, one, two}));
}

TEST_F(OwnerRequestsTest, RequestData_LeavesAloneWhoHangsSinceTheFormatBefore) {
    Offer last = Taking(one, kBridge);
    last.make = [this, gives = last.make](FakeClipboard& clipboard) {
        fake.windows.hung = fake.clipboard.otherProgram;
        return gives(clipboard);
    };
    EXPECT_EQ(Owed({last, Taking(two, kNever)}), 1u);
    EXPECT_EQ(asked, (Numbers{one}));
}

}  // namespace
