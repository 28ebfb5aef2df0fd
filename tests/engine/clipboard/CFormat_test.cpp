#include "engine/clipboard/CFormat.h"

#include "engine/clipboard/ClipboardTest.h"
#include "fake/DocumentedBytes.h"

namespace {

using namespace std::string_literals;

std::string TextBlock(const std::string& text, std::size_t junk) {
    return text + std::string(1, '\0') + std::string(junk, '#');
}

// Bits of a metafile, so many bytes of them.
std::string PictureOf(std::size_t size) {
    return MetafileBitsWith(std::string(size - MetafileBitsWith("").size(), 'm'));
}
std::string EnhancedOf(std::size_t size) {
    return EnhancedMetafileBitsWith(std::string(size - EnhancedMetafileBitsWith("").size(), 'm'));
}

class FormatTest : public ClipboardTest {
 protected:
    // Loads the data of the format whose record begins the file.
    bool LoadFirst(CFormat& format) {
        FileOwner file(OpenClipFile(kClip, false, true));
        return format.LoadFromFile(file.Get(), true);
    }
    static std::string BlockOf(CFormat& format) {
        const char* bytes = static_cast<const char*>(format.LockMemo());
        const std::string block(bytes, static_cast<std::size_t>(format.DataLength));
        format.UnlockMemo();
        return block;
    }
};

}  // namespace

TEST_F(FormatTest, LoadAndSaveFormat_StoresTextUpToItsZero) {
    EXPECT_EQ(Capture({FakeClipboard::Bytes(1, TextBlock("abc", 60))}), 1);
    EXPECT_EQ(ClipBytes(), RecordBytes(1, "Text", std::string("abc\0", 4)));
    EXPECT_EQ(Capture({FakeClipboard::Bytes(1, std::string(1, '\0'))}), 1);
    EXPECT_EQ(ClipBytes(), RecordBytes(1, "Text", std::string(1, '\0')));
    // Of other formats nothing is cut.
    EXPECT_EQ(Capture({FakeClipboard::Bytes(4, TextBlock("abc", 5))}), 1);
    EXPECT_EQ(ClipBytes(), RecordBytes(4, "Sylk", TextBlock("abc", 5)));
}

TEST_F(FormatTest, LoadAndSaveFormat_WritesTheDocumentedExample) {
    fake.clipboard.OtherProgramCopies({FakeClipboard::Bytes(1, TextBlock("Gru\xDF", 11)),
                                       FakeClipboard::Bytes(0xC0A5, std::string("{\\rtf1}\0", 8))});
    {
        OpenClipboardScope clipboard(mainWindow);
        FileOwner file(OpenClipFile(kClip, true, false));
        const auto formats = clipBoard.GetClipboardFormats();
        formats->Item(2).FormatName = L"Rich Text Format";
        for (CFormat& format : *formats)
            EXPECT_TRUE(format.LoadAndSaveFormat(file.Get()));
    }
    EXPECT_EQ(ClipBytes(), DocumentedBytes("clip-nxc.md"));
}

TEST_F(FormatTest, LoadAndSaveFormat_TestsTheSizeLimitAgainstWhatTheClipboardHolds) {
    Options().MaxClipSize = 1000;
    EXPECT_EQ(Capture({FakeClipboard::Bytes(8, std::string(1001, 'x'))}), 0);
    EXPECT_EQ(Capture({FakeClipboard::Bytes(8, std::string(1000, 'x'))}), 1);
    // The text itself is short; its block is not.
    EXPECT_EQ(Capture({FakeClipboard::Bytes(1, TextBlock("abc", 997))}), 0);
    EXPECT_EQ(Capture({FakeClipboard::Bytes(1, TextBlock("abc", 996))}), 1);
    EXPECT_EQ(Capture({FakeClipboard::Picture(PictureOf(1004))}), 0);
    EXPECT_EQ(Capture({FakeClipboard::Picture(PictureOf(1000))}), 1);
    EXPECT_EQ(Capture({FakeClipboard::Enhanced(EnhancedOf(1004))}), 0);
    EXPECT_EQ(Capture({FakeClipboard::Enhanced(EnhancedOf(1000))}), 1);
    Options().MaxClipSize = 0;
    EXPECT_EQ(Capture({FakeClipboard::Enhanced(EnhancedOf(1004))}), 1);
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(FormatTest, LoadAndSaveFormat_NeverAsksForObjectsThatCannotBeStored) {
    EXPECT_EQ(Capture({FakeClipboard::Late(FakeClipboard::GdiObject(2)), FakeClipboard::Bytes(8, "dib"),
                       FakeClipboard::Late(FakeClipboard::GdiObject(9)),
                       FakeClipboard::Late(FakeClipboard::Enhanced(EnhancedOf(200)))}),
              2);
    EXPECT_EQ(fake.clipboard.rendered, std::vector<FormatNumber>{14});
    EXPECT_EQ(ClipBytes(),
              RecordBytes(8, "DIB", "dib") + RecordBytes(14, "Enhanced Metafile", EnhancedOf(200)));
    // An object under another number has no size either.
    EXPECT_EQ(Capture({FakeClipboard::GdiObject(130)}), 0);
    EXPECT_EQ(ClipBytes(), "");
    EXPECT_TRUE(fake.user.messages.empty());
}

TEST_F(FormatTest, LoadAndSaveFormat_RefusesAMetafilePictureThatIsTooSmall) {
    EXPECT_EQ(Capture({FakeClipboard::Picture(PictureOf(100), 7, -300, 400, 8)}), 1);
    const std::string stored = ClipBytes();
    ASSERT_EQ(stored.size(), 10u + 8 + 16 + 100);
    EXPECT_EQ(stored.substr(14, 4), std::string("\x74\0\0\0", 4));
    EXPECT_EQ(stored.substr(18, 12), std::string("\x07\0\0\0\xD4\xFE\xFF\xFF\x90\x01\0\0", 12));
    EXPECT_EQ(stored.substr(34), PictureOf(100));

    EXPECT_EQ(Capture({FakeClipboard::Bytes(3, std::string(15, 'p'))}), 0);
    EXPECT_EQ(Capture({FakeClipboard::Bytes(3, std::string(17, 'p'))}), 0);
    // The right size, but no metafile behind it.
    EXPECT_EQ(Capture({FakeClipboard::Bytes(3, std::string(16, 'p'))}), 0);
    EXPECT_EQ(ClipBytes(), "");
}

TEST_F(FormatTest, LoadFromFile_BringsBackDataAndPictureHeader) {
    fake.files.SetBytes(kClip, RecordBytes(0xC123,
                                           "Gr\xF6\xDF"
                                           "e",
                                           "data"));
    CFormat format;
    ASSERT_TRUE(LoadFirst(format));
    EXPECT_TRUE(format.Loaded);
    EXPECT_EQ(format.FormatId, 0xC123);
    EXPECT_EQ(format.FormatName, L"Größe");
    EXPECT_EQ(BlockOf(format), "data");

    Capture({FakeClipboard::Picture(PictureOf(100), 7, -300, 400)});
    ASSERT_TRUE(LoadFirst(format));
    EXPECT_EQ(format.DataSize, 116);
    EXPECT_EQ(format.DataLength, 100);
    EXPECT_EQ(BlockOf(format), PictureOf(100));
    EXPECT_EQ(format.MetaFilePict.xExtent, -300);
    format.LockMemo();
    EXPECT_EQ(format.GetText(8).size(), 8u);
    // Not a byte more than the block has, although the record is longer.
    EXPECT_EQ(format.GetText(0).size(), 100u);
    format.ReleaseGlobalData(true);
    EXPECT_NE(format.MemHandle, DataHandle::None);
    format.ReleaseGlobalData(false);
    EXPECT_EQ(format.MemHandle, DataHandle::None);
    EXPECT_FALSE(format.Loaded);
}

TEST_F(FormatTest, LoadFromFile_TellsThatDataIsMissing) {
    for (const std::string& noData :
         {RecordBytes(3, "Metafile", std::string(16, 'p')), RecordBytes(8, "DIB", "")}) {
        fake.files.SetBytes(kClip, noData);
        CFormat format;
        EXPECT_FALSE(LoadFirst(format));
        EXPECT_EQ(fake.user.LastMessage(), L"LoadFromFile fehlgeschlagen mit Fehlercode: 38");
        EXPECT_FALSE(format.Loaded);
    }
}

TEST_F(FormatTest, LoadDataFromFile_AsksForNoMemoryThatTheFileCannotFill) {
    const auto formats = Headers(RecordBytes(8, "DIB", "0123456789"), 1);
    CFormat& format = formats->Item(1);
    FileOwner file(OpenClipFile(kClip, false, true));
    const int before = fake.failures.Calls(Operation::MemoryAllocate);

    fake.files.SetBytes(kClip, ClipBytes().substr(0, 20));  // since the header was read
    EXPECT_FALSE(format.LoadDataFromFile(file.Get(), true));
    format.DataSize = -1;
    EXPECT_FALSE(format.LoadDataFromFile(file.Get(), true));
    format.DataSize = 1;
    format.DataOffset = -1;
    EXPECT_FALSE(format.LoadDataFromFile(file.Get(), true));
    EXPECT_EQ(fake.failures.Calls(Operation::MemoryAllocate), before);
}

TEST_F(FormatTest, Register_RenewsRegisteredNamesOnly) {
    const FormatNumber now = Registered("Rich Text Format");
    const auto registeredAs = [](FormatNumber id, const wchar_t* name) {
        CFormat format;
        format.FormatId = id;
        format.FormatName = name;
        return format.Register();
    };
    EXPECT_EQ(registeredAs(0xC999, L"Rich Text Format"), now);
    EXPECT_EQ(registeredAs(17, L"MAX"), Registered("MAX"));
    EXPECT_EQ(registeredAs(8, L"Rich Text Format"), 8);
    EXPECT_EQ(registeredAs(0, L"Rich Text Format"), 0);
    EXPECT_EQ(registeredAs(0xC999, L"<unbekannt>"), 0xC999);
    fake.FailNth(Operation::ClipboardRegisterName, 1);
    EXPECT_EQ(registeredAs(0xC999, L"Rich Text Format"), 0xC999);
}

TEST(FormatText, ConvertHandleToString_TakesNoMoreThanThereIs) {
    const std::string text(100, 'x');
    EXPECT_EQ(CFormat::ConvertHandleToString(text.data(), 100, 20).size(), 20u);
    EXPECT_EQ(CFormat::ConvertHandleToString(text.data(), 100, 0).size(), 100u);
    EXPECT_EQ(CFormat::ConvertHandleToString(text.data(), 10, 20).size(), 10u);
    EXPECT_EQ(CFormat::ConvertHandleToString(text.data(), 0, 20), L"");
    EXPECT_EQ(CFormat::ConvertHandleToString(nullptr, 5, 20), L"");
    EXPECT_EQ(CFormat::ConvertHandleToString("a\0b\xE4", 4, 0), std::wstring(L"a\0bä", 4));
}
