#include "engine/clipboard/CClipBoard.h"

#include "engine/clipboard/ClipboardTest.h"

namespace {

constexpr const wchar_t* kUnreadable =
    L"LoadFormatsByHandle: Schwerer Fehler beim Lesen der Formate aus der Datei";

class ClipBoardTest : public ClipboardTest {
 protected:
    static std::wstring Names(const std::shared_ptr<CFormats>& formats) {
        std::wstring names;
        for (const CFormat& format : *formats)
            names += format.FormatName + L",";
        return names;
    }
};

}  // namespace

TEST_F(ClipBoardTest, GetClipboardFormats_ListsEverythingInTheClipboardsOrder) {
    const FormatNumber richText = Registered("Rich Text Format");
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(richText, "{}"),
                                       FakeClipboard::Bytes(13, std::string("a\0\0\0", 4)),
                                       FakeClipboard::Late(FakeClipboard::Bytes(0x0300, "private"))});
    OpenClipboardScope opened(mainWindow);
    const auto formats = clipBoard.GetClipboardFormats();
    EXPECT_EQ(Names(formats), L"Rich Text Format,Unicode,<unbekannt>,");
    EXPECT_EQ(formats->Item(1).FormatId, richText);
    EXPECT_EQ(formats, clipBoard.Formats());
    // Listing asks nobody for data.
    EXPECT_EQ(fake.failures.Calls(Operation::ClipboardData), 0);
}

TEST_F(ClipBoardTest, LoadFormatsByHandle_ReadsHeadersOnlyAndKnowsWhereTheDataLies) {
    const std::string bytes =
        RecordBytes(1, "Text", "abc") + RecordBytes(8, "DIB", "0123456789") + RecordBytes(0xC123, "", "");
    const auto formats = Headers(bytes, 3);
    ASSERT_EQ(Names(formats), L"Text,DIB,,");
    EXPECT_EQ(formats->Item(1).DataOffset, 14);
    EXPECT_EQ(formats->Item(1).DataSize, 3);
    EXPECT_EQ(formats->Item(2).DataOffset, 30);
    EXPECT_EQ(formats->Item(2).DataSize, 10);
    EXPECT_FALSE(formats->Item(2).Loaded);
    // Fewer than there are, and none at all.
    EXPECT_EQ(Names(Headers(bytes, 2)), L"Text,DIB,");
    EXPECT_EQ(Headers(bytes, 0), nullptr);
    EXPECT_EQ(Headers(bytes, -7), nullptr);
}

TEST_F(ClipBoardTest, LoadFormatsByHandle_ReadsNoDataOfLargeFormats) {
    fake.files.SetBytes(kClip,
                        RecordBytes(8, "DIB", std::string(1'000'000, 'x')) + RecordBytes(1, "Text", "a"));
    FileOwner file(OpenClipFile(kClip, false, true));
    clipBoard.LoadFormatsByHandle(file.Get(), 2);
    for (const CFormat& format : *clipBoard.Formats())
        EXPECT_LT(format.BytesTransferred, 100u);
    EXPECT_EQ(fake.failures.Calls(Operation::FilesRead), 4);
}

TEST_F(ClipBoardTest, LoadFormatsByHandle_TellsEachRecordThatCannotBeReadUpToALimit) {
    const std::string text = RecordBytes(1, "Text", "abc");
    EXPECT_EQ(Names(Headers(text, 3)), L"Text,");
    ASSERT_EQ(fake.user.messages.size(), 2u);
    EXPECT_EQ(fake.user.messages[0].text, kUnreadable);

    fake.user.messages.clear();
    EXPECT_EQ(Headers("", 32767)->Count(), 0);
    EXPECT_EQ(fake.user.messages.size(), static_cast<std::size_t>(CClipBoard::kMostUnreadableRecords));
}

TEST_F(ClipBoardTest, LoadFormatsByHandle_TakesNothingFromDamagedRecords) {
    const std::string good = RecordBytes(1, "Text", "abc");
    const std::pair<const char*, std::string> cases[] = {
        {"negative name length", std::string("\x01\0\0\0\xFF\xFF", 6) + std::string(60, '\0')},
        {"name longer than the file", std::string("\x01\0\0\0\xFF\x7F", 6) + "Text"},
        {"negative data size", std::string("\x01\0\0\0\x04\0Text\xFF\xFF\xFF\xFF", 14)},
        {"the largest data size", std::string("\x01\0\0\0\x04\0Text\xFF\xFF\xFF\x7F", 14) + "abc"},
        {"data one byte longer than the file", std::string("\x01\0\0\0\x04\0Text\x04\0\0\0", 14) + "abc"},
    };
    for (const auto& [damage, bytes] : cases) {
        fake.user.messages.clear();
        EXPECT_EQ(Names(Headers(good + bytes, 2)), L"Text,") << damage;
        EXPECT_EQ(fake.user.messages.size(), 1u) << damage;
    }
    // A record behind one that overshoots the file is not looked for in the middle of that one's data.
    fake.user.messages.clear();
    EXPECT_EQ(Headers(std::string("\x01\0\0\0\x04\0Text\xFF\0\0\0", 14) + good, 2)->Count(), 0);
}
