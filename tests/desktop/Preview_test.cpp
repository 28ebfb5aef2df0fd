#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>

#include "desktop/ProgramTest.h"

// What the preview shows of a clip, and what it spares.

namespace {

class Preview : public ProgramTest {
 protected:
    // Two pixels, one of them half transparent.
    static std::string Png() {
        constexpr char kBytes[] =
            "\x89\x50\x4e\x47\x0d\x0a\x1a\x0a\x00\x00\x00\x0d\x49\x48\x44\x52\x00\x00\x00\x02\x00\x00\x00\x01"
            "\x08\x06\x00\x00\x00\xf4\x22\x7f\x8a\x00\x00\x00\x11\x49\x44\x41\x54\x78\x9c\x63\xf8\xcf\xc0\xd0"
            "\xc0\xf0\x9f\xe1\x3f\x00\x0e\x7d\x03\x7e\xea\xf6\x93\xc0\x00\x00\x00\x00\x49\x45\x4e\x44\xae\x42"
            "\x60\x82";
        return {kBytes, sizeof kBytes - 1};
    }
    // The idle program may just be flushing it.
    static void RemoveWhenFree(const std::filesystem::path& file) {
        WaitFor("the file to go", [&] {
            std::error_code held;
            return std::filesystem::remove(file, held);
        });
    }
    // A black square of this many pixels each way, whose header tells another height.
    static std::string LargePng(std::uint32_t side, std::uint32_t told) {
        std::string pixels("\x78\x01");
        const std::string rows((1 + side / 8) * side, '\0');
        for (std::size_t at = 0; at < rows.size(); at += 0xFFFF) {
            const auto size = static_cast<std::uint32_t>(std::min<std::size_t>(rows.size() - at, 0xFFFF));
            pixels += at + size == rows.size() ? '\1' : '\0';
            for (const std::uint32_t part : {size, ~size})
                pixels += {static_cast<char>(part), static_cast<char>(part >> 8)};
            pixels.append(rows, at, size);
        }
        pixels += BigEndian(static_cast<std::uint32_t>(rows.size() % 65521) << 16 | 1);
        return "\x89PNG\r\n\x1A\n" +
               Chunk("IHDR" + BigEndian(side) + BigEndian(told) + std::string("\1\0\0\0\0", 5)) +
               Chunk("IDAT" + pixels) + Chunk("IEND");
    }
    static std::string BigEndian(std::uint32_t number) {
        std::string bytes;
        for (const int shift : {24, 16, 8, 0})
            bytes += static_cast<char>(number >> shift);
        return bytes;
    }
    static std::string Chunk(const std::string& content) {
        std::uint32_t sum = ~0u;
        for (const char byte : content) {
            sum ^= static_cast<std::uint8_t>(byte);
            for (int bit = 0; bit < 8; ++bit)
                sum = sum >> 1 ^ (sum % 2 != 0 ? 0xEDB88320u : 0);
        }
        return BigEndian(static_cast<std::uint32_t>(content.size() - 4)) + content + BigEndian(~sum);
    }
    void WaitForNote(std::wstring_view text) const {
        const Window note = nxclip_.Main().Control(lblPreviewNote);
        WaitFor("the note", [&] { return note.Visible() && note.Text() == text; });
    }
};

TEST_F(Preview, Tabs_ShowTextAndRichTextOfTheClip) {
    StartWithProfile();
    SnapOf(
        {{CF_TEXT, std::string("gr\xFCn und wei\xDF\0", 14)},
         {FormatNumber(L"Rich Text Format"), std::string("{\\rtf1\\ansi Ein \\b fetter\\b0  Brief}\0", 37)}});
    EXPECT_EQ(nxclip_.FormatTab().Names().size(), 3u);
    EXPECT_EQ(nxclip_.FormatTab().Selected(), 0);
    WaitFor("the text", [&] { return nxclip_.Main().TextOf(tbPreviewText) == L"grün und weiß"; });
    nxclip_.FormatTab().Select(1);
    WaitFor("the rich text", [&] {
        return nxclip_.Main().TextOf(tbPreviewRtf).find(L"Ein fetter Brief") != std::wstring::npos;
    });
    nxclip_.Tree().Select(L"Profil");
    WaitFor("an empty preview", [&] { return nxclip_.Main().TextOf(tbPreviewRtf).empty(); });
}

TEST_F(Preview, LongText_IsReadAsItIsScrolledAndCopiedAsItIs) {
    leavesWhole_ = false;
    StartWithProfile();
    std::string lines;
    for (int i = 0; i < 20'000; ++i)
        lines += "Zeile " + std::to_string(i) + "\r\n";
    SnapOf({{CF_TEXT, lines + '\0'}});
    const Window box = nxclip_.Main().Control(tbPreviewText);
    const auto shown = [&] { return box.Text().size(); };
    WaitFor("the beginning", [&] { return shown() > 0; });
    const std::size_t beginning = shown();
    box.Post(WM_VSCROLL, SB_BOTTOM);
    WaitFor("what follows", [&] { return shown() > beginning; });
    EXPECT_LT(shown(), lines.size());
    box.Send(EM_SETSEL, 0, -1);
    EXPECT_EQ(box.Text(), std::wstring(lines.begin(), lines.end()));

    const std::wstring line(500'000, L'x');
    SnapOf({{CF_TEXT, std::string(line.begin(), line.end()) + '\0'}});
    WaitFor("the line", [&] { return box.Text().starts_with(L'x'); });
    box.Send(EM_SETSEL, 0, -1);
    EXPECT_GT(box.Send(EM_GETLINECOUNT), 100) << "broken for showing";
    box.Send(WM_COPY);
    const std::string copied = ReadFormatNow(CF_UNICODETEXT).value_or("");
    const auto* const letters = reinterpret_cast<const char*>(line.c_str());
    EXPECT_TRUE(copied.starts_with(std::string_view(letters, 2 * (line.size() + 1)))) << copied.size();

    // A file that goes away while it is read.
    SnapOf({{CF_TEXT, lines + '\0'}});
    WaitFor("the beginning", [&] { return box.Text().starts_with(L"Zeile"); });
    RemoveWhenFree(ClipFileAt(3));
    box.Post(WM_VSCROLL, SB_BOTTOM);
    WaitFor("what became of the rest",
            [&] { return box.Text().ends_with(L"[Textdaten konnten nicht geladen werden]"); });
    EXPECT_TRUE(nxclip_.Quiet());
}

TEST_F(Preview, OfAHiddenWindow_IsMadeUpWhenItIsShown) {
    StartWithProfile();
    const Window box = nxclip_.Main().Control(tbPreviewText);
    for (const bool iconic : {true, false}) {
        ShowWindow(nxclip_.Main().Handle(), iconic ? SW_MINIMIZE : SW_HIDE);
        WaitFor("the window to go",
                [&] { return iconic ? nxclip_.Main().Minimised() : !nxclip_.Main().Visible(); });
        SnapOf({{CF_TEXT, iconic ? std::string("eins\0", 5) : std::string("zwei\0", 5)}});
        EXPECT_EQ(box.Text(), L"");
        ShowWindow(nxclip_.Main().Handle(), iconic ? SW_RESTORE : SW_SHOW);
        WaitFor("the text", [&] { return box.Text() == (iconic ? L"eins" : L"zwei"); });
    }
}

TEST_F(Preview, Png_IsDecodedOrRefused) {
    StartWithProfile();
    SnapOf({{FormatNumber(L"PNG"), Png()}});
    EXPECT_TRUE(nxclip_.Main().Control(picPreviewDIB).Visible());
    EXPECT_TRUE(nxclip_.Quiet());
    std::string damaged = Png();
    std::fill(damaged.begin() + 40, damaged.end() - 20, '\x55');
    PutFormats({{FormatNumber(L"PNG"), damaged}});
    nxclip_.Command(m_edit_insert);
    WaitForNote(L"DIB konnte nicht geladen werden");
    EXPECT_TRUE(nxclip_.Quiet()) << "nobody asked for it";
}

TEST_F(Preview, ShortText_HasNoBarsOfALongOneBeforeIt) {
    StartWithProfile();
    std::string large = std::string(300, 'x');
    for (int line = 0; line < 100; ++line)
        large += "\r\nZeile";
    SnapOf({{CF_TEXT, large + '\0'}});
    const Window box = nxclip_.Main().Control(tbPreviewText);
    const auto bars = [&] { return GetWindowLongW(box.Handle(), GWL_STYLE) & (WS_HSCROLL | WS_VSCROLL); };
    WaitFor("both bars", [&] { return bars() == (WS_HSCROLL | WS_VSCROLL); });
    SnapOf({{CF_TEXT, std::string("kurz") + '\0'}});
    WaitFor("the other text", [&] { return box.Text() == L"kurz"; });
    EXPECT_EQ(bars(), 0);
}

TEST_F(Preview, LargePng_IsDecodedBesideTheProgramWhateverHappensToIt) {
    leavesWhole_ = false;
    constexpr std::uint32_t kSide = 4208;  // more than is shown as it is
    StartWithProfile();
    SnapOf({{FormatNumber(L"PNG"), LargePng(kSide, kSide)}});
    const Window box = nxclip_.Main().Control(picPreviewDIB);
    const auto scrolls = [&] { return (GetWindowLongW(box.Handle(), GWL_STYLE) & WS_VSCROLL) != 0; };
    WaitFor("the picture", scrolls);
    SnapOf({{FormatNumber(L"PNG"), LargePng(kSide, 2 * kSide)}});
    WaitForNote(L"DIB konnte nicht geladen werden");
    EXPECT_FALSE(scrolls()) << "a picture that lies about its size";

    // From one to the other and on, as quickly as may be; then the file goes away, and the program ends.
    const Window tree = nxclip_.Tree().window();
    const LRESULT liar = tree.Send(TVM_GETNEXTITEM, TVGN_CARET, 0);
    const LRESULT good = tree.Send(TVM_GETNEXTITEM, TVGN_PREVIOUS, liar);
    for (int round = 0; round < 5; ++round)
        for (const LRESULT item : {good, liar, good})
            tree.Send(TVM_SELECTITEM, TVGN_CARET, item);
    WaitFor("the picture again", scrolls);
    tree.Send(TVM_SELECTITEM, TVGN_CARET, liar);
    tree.Send(TVM_SELECTITEM, TVGN_CARET, good);
    RemoveWhenFree(ClipFileAt(1));
    EXPECT_TRUE(nxclip_.Quiet());
    EXPECT_EQ(nxclip_.Quit(), 0u);
}

TEST_F(Preview, PictureWhoseFileIsGone_IsEmptiedAndSaysSo) {
    leavesWhole_ = false;
    StartWithProfile();
    BITMAPINFOHEADER header{sizeof header, 1, 3000, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    SnapOf(
        {{CF_DIB, std::string(reinterpret_cast<char*>(&header), sizeof header) + std::string(12000, 'x')}});
    const Window box = nxclip_.Main().Control(picPreviewDIB);
    const auto scrolls = [&] { return (GetWindowLongW(box.Handle(), GWL_STYLE) & WS_VSCROLL) != 0; };
    EXPECT_TRUE(scrolls());
    RemoveWhenFree(ClipFileAt(1));
    box.Post(WM_VSCROLL, SB_BOTTOM);
    WaitForNote(L"DIB konnte nicht geladen werden");
    EXPECT_FALSE(scrolls()) << "nothing is left to be read";
}

}  // namespace
