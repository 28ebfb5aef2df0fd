#include "engine/clipboard/PrivateContent.h"

#include "engine/clipboard/ClipboardTest.h"

namespace {

class PrivateContentTest : public ClipboardTest {
 protected:
    bool IsPrivate(const Offer& mark) {
        fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(kTextFormat, "geheim\0"), mark});
        const OpenClipboardScope opened(mainWindow);
        return IsPrivateContent(*clipBoard.GetClipboardFormats());
    }
    bool IsPrivate(const char* mark, const std::string& data) {
        return IsPrivate(FakeClipboard::Bytes(Registered(mark), data));
    }
};

TEST_F(PrivateContentTest, IsPrivateContent_KnowsTheMarks) {
    const std::string zero(4, '\0'), one("\1\0\0\0", 4);
    EXPECT_TRUE(IsPrivate("ExcludeClipboardContentFromMonitorProcessing", "x"));
    EXPECT_TRUE(IsPrivate("clipboard viewer ignore", "x"));
    EXPECT_TRUE(IsPrivate(FakeClipboard::Refused(Registered("Clipboard Viewer Ignore"))));
    EXPECT_TRUE(IsPrivate("CanIncludeInClipboardHistory", zero));
    EXPECT_TRUE(IsPrivate("CanIncludeInClipboardHistory", zero + "more"));
    EXPECT_FALSE(IsPrivate("CanIncludeInClipboardHistory", one));
    EXPECT_FALSE(IsPrivate("CanIncludeInClipboardHistory", "\0"));
    EXPECT_FALSE(IsPrivate(FakeClipboard::Refused(Registered("CanIncludeInClipboardHistory"))));
    EXPECT_FALSE(IsPrivate("Rich Text Format", zero));
    EXPECT_TRUE(IsPrivate("x-kde-passwordManagerHint", "secret"));
    EXPECT_FALSE(IsPrivate("x-kde-passwordManagerHint", "public"));
}

}  // namespace
