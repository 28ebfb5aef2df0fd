#include "engine/views/PreviewPicture.h"

#include <algorithm>

#include "engine/clipboard/ClipboardTest.h"

namespace {

class PreviewPictureTest : public ClipboardTest {
 protected:
    // A clip's only record is a picture of 3 x 5 pixels with this behind its header.
    std::optional<PreviewPicture> Store(std::size_t headerSize, int bits, bool topDown, int compression,
                                        int coloursUsed, const std::string& behind) {
        std::string header(headerSize, '\0');
        const auto put = [&](std::size_t at, int value, int width) {
            for (int i = 0; i < width; ++i)
                header.at(at++) = static_cast<char>(value >> (8 * i));
        };
        const bool core = headerSize == 12;
        put(0, static_cast<int>(headerSize), 4);
        put(4, 3, core ? 2 : 4);
        put(core ? 6 : 8, topDown ? -5 : 5, core ? 2 : 4);
        put(core ? 10 : 14, bits, 2);
        if (!core) put(16, compression, 4);
        if (!core) put(32, coloursUsed, 4);
        front_ = header + behind;
        const auto formats = Headers(RecordBytes(kDibFormat, "DIB", front_), 1);
        return PreviewPicture::In(PreviewData(kClip, formats->Item(1)));
    }
    // From now on each of its pixels' bytes is another one.
    void ChangePixels(std::size_t bytes) {
        front_.replace(front_.size() - bytes, bytes, bytes, '-');
        fake.files.SetBytes(kClip, RecordBytes(kDibFormat, "DIB", front_));
    }
    // A row's bytes are all its letter. From the top; "?" for rows that cannot be had.
    static std::string Letters(PreviewPicture& picture, int first, int count) {
        if (!picture.Need(first, count)) return "?";
        std::string letters;
        for (int row = 0; row < count; ++row) {
            const int place = picture.Layout().topDown ? row : count - 1 - row;
            const std::size_t size = picture.Layout().rowBytes;
            const std::uint8_t* const begin =
                picture.Rows(first, count) + static_cast<std::size_t>(place) * size;
            const bool one =
                std::all_of(begin, begin + size, [&](std::uint8_t byte) { return byte == *begin; });
            letters += one ? static_cast<char>(*begin) : '!';
        }
        return letters;
    }

 private:
    std::string front_;
};

TEST_F(PreviewPictureTest, Need_ReadsTheRowsThatAreNotThere) {
    struct Case {
        std::size_t header;
        int bits;
        bool topDown;
        int coloursUsed;
        std::size_t colours, rowBytes;
    };
    for (const Case& c :
         {Case{40, 24, false, 0, 0, 12}, Case{40, 32, true, 0, 0, 12}, Case{12, 1, false, 0, 6, 4},
          Case{40, 8, true, 0, 1024, 4}, Case{124, 16, false, 1000, 4000, 8}}) {
        SCOPED_TRACE(c.bits);
        std::string behind(c.colours, 'c');
        for (const char letter : std::string(c.topDown ? "ABCDE" : "EDCBA"))
            behind.append(c.rowBytes, letter);
        auto picture = Store(c.header, c.bits, c.topDown, 0, c.coloursUsed, behind);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->Header().size(), c.header + c.colours);
        EXPECT_EQ(Letters(*picture, 0, 5), "ABCDE");
        EXPECT_EQ(Letters(*picture, 1, 2), "BC");
        picture->LetGo();
        EXPECT_EQ(picture->Rows(1, 2), nullptr);
        EXPECT_EQ(Letters(*picture, 1, 2), "BC");

        ChangePixels(5 * c.rowBytes);
        EXPECT_EQ(Letters(*picture, 1, 2), "BC");
        EXPECT_EQ(Letters(*picture, 2, 2), "C-") << "scrolled down";
        EXPECT_EQ(Letters(*picture, 1, 3), "-C-") << "and back, in a larger box";
        EXPECT_EQ(Letters(*picture, 4, 1), "-") << "far away";
        fake.files.Remove(kClip);
        EXPECT_EQ(Letters(*picture, 4, 1), "-");
        EXPECT_EQ(Letters(*picture, 3, 2), "?");
    }
}

TEST_F(PreviewPictureTest, In_ReadsRunLengthCodedPixelsWhole) {
    const std::string colours(1024, 'c'), runs("\3\7\0\0\3\7\0\0\3\7\0\0\3\7\0\0\3\7\0\1", 20);
    const auto picture = Store(40, 8, false, 1, 0, colours + runs);
    ASSERT_TRUE(picture);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(picture->Runs()), runs.size()), runs);
    EXPECT_FALSE(Store(40, 8, false, 1, 0, colours + "\4" + runs.substr(1))) << "past the right edge";
    EXPECT_FALSE(Store(41, 8, false, 0, 0, colours)) << "no such header";
}

}  // namespace
