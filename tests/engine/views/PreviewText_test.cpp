#include "engine/views/PreviewText.h"

#include "engine/clipboard/ClipboardTest.h"

using namespace std::string_literals;

namespace {

class PreviewTextTest : public ClipboardTest {
 protected:
    // A clip file with one text record, whose header is read.
    void Store(const std::string& text, FormatNumber id = kTextFormat) {
        fake.files.SetBytes(kFile, RecordBytes(id, "Text", text));
        const FileOwner file(OpenClipFile(kFile, false, true));
        ASSERT_TRUE(format.LoadFromFile(file.Get(), false));
    }
    // The whole text, read in pieces of `size` bytes.
    std::wstring ReadAll(std::size_t size) {
        PreviewTextReader reader(kFile, format);
        std::wstring all;
        while (reader.HasMore())
            all += reader.Next(size).value_or(L"!");
        return all;
    }

    const std::wstring kFile = L"C:\\C1.nxc";
    CFormat format;
};

TEST_F(PreviewTextTest, Next_TearsNoLineEndWhereverThePiecesEnd) {
    Store("ab\r\nc\rd\n\r\n\r\re\r" + std::string("\0hidden", 7));
    for (std::size_t size = 2; size < 30; ++size)
        EXPECT_EQ(ReadAll(size), L"ab\r\nc\r\nd\r\n\r\n\r\n\r\ne\r\n") << size;
    Store("x");
    EXPECT_EQ(ReadAll(kFirstPreviewBytes), L"x");
    // A piece ends behind the last line that it holds whole, be that an empty one.
    for (const auto& [text, first] : {std::pair("\nabc", L"\r\n"), std::pair("a\r\nb\nc", L"a\r\nb\r\n")}) {
        Store(text);
        EXPECT_EQ(PreviewTextReader(kFile, format).Next(std::string(text).size() - 1), first);
    }
}

TEST_F(PreviewTextTest, Next_TearsNoLetterOfUnicodeEither) {
    const std::string smile("\x3D\xD8\0\xDE", 4), lineEnd("\r\0\n\0", 4);
    const std::string text = smile + smile + lineEnd + "\xE5\x65"s + lineEnd + smile;
    for (const std::string& rest : {""s, "!"s, "\0\0x\0"s}) {
        Store(text + rest, kUnicodeFormat);
        for (std::size_t size = 4; size < 30; ++size)
            EXPECT_EQ(ReadAll(size), L"😀😀\r\n日\r\n😀") << size << " " << rest.size();
    }
}

TEST_F(PreviewTextTest, Next_StopsAtTheMostThatIsShown) {
    Store(std::string(kMostPreviewBytes - 1, 'x') + "y");
    EXPECT_EQ(ReadAll(kNextPreviewBytes).size(), kMostPreviewBytes);
    Store(std::string(kMostPreviewBytes - 1, 'x') + "yz");
    const std::wstring shown = ReadAll(kNextPreviewBytes);
    EXPECT_EQ(shown.substr(kMostPreviewBytes - 2), L"xy\r\n[...]");
}

TEST_F(PreviewTextTest, NextOfWhatCannotBeRead_NothingComesAfterIt) {
    Store("0123456789");
    PreviewTextReader reader(L"C:\\missing", format);
    EXPECT_FALSE(reader.Next(10));
    EXPECT_FALSE(reader.HasMore());
}

}  // namespace
