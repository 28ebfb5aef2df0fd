#include <gtest/gtest.h>

#include <algorithm>

#include "desktop/ClipboardData.h"
#include "desktop/Process.h"
#include "desktop/ScratchDirectory.h"
#include "desktop/Utf8.h"
#include "desktop/WholeFile.h"

// The two small programs that stand for the rest of the world: what one puts on the clipboard, the other must
// read, byte for byte, or no test of the program between them means anything.

namespace {

constexpr wchar_t kPrivateFormat[] = L"NXClip Probe äöü";

std::string EnhancedMetafileBits() {
    HDC context = CreateEnhMetaFileW(nullptr, nullptr, nullptr, L"probe");
    Ellipse(context, 10, 10, 200, 100);
    HENHMETAFILE metafile = CloseEnhMetaFile(context);
    std::string bits(GetEnhMetaFileBits(metafile, 0, nullptr), '\0');
    GetEnhMetaFileBits(metafile, static_cast<UINT>(bits.size()), reinterpret_cast<BYTE*>(bits.data()));
    DeleteEnhMetaFile(metafile);
    return bits;
}

std::string MetafilePicture() {
    HDC context = CreateMetaFileW(nullptr);
    Rectangle(context, 1, 2, 30, 40);
    HMETAFILE metafile = CloseMetaFile(context);
    std::string bits(GetMetaFileBitsEx(metafile, 0, nullptr), '\0');
    GetMetaFileBitsEx(metafile, static_cast<UINT>(bits.size()), bits.data());
    DeleteMetaFile(metafile);
    const std::int32_t header[4] = {MM_ANISOTROPIC, 1000, 500, 0};
    return std::string(reinterpret_cast<const char*>(header), sizeof header) + bits;
}

class ClipTools : public testing::TestWithParam<bool> {
 protected:
    std::wstring Tool(const std::wstring& arguments) { return OwnDirectory().wstring() + L"\\" + arguments; }
    DWORD Run(const std::wstring& arguments) {
        return Process(Tool(arguments), scratch_.Path(), scratch_.Path() / L"out").WaitForEnd();
    }
    std::string Output() { return ReadWholeFile(scratch_.Path() / L"out"); }

    ScratchDirectory scratch_;
};

TEST_P(ClipTools, Put_ComesBackByteForByteInOrder) {
    const std::string texts[] = {std::string("a\0b", 3), EnhancedMetafileBits(), std::string(2, '\0'),
                                 MetafilePicture(), std::string(100000, 'x') + "\xE4"};
    const wchar_t* formats[] = {L"Rich Text Format", L"14", L"13", L"3", kPrivateFormat};
    std::wstring arguments = GetParam() ? L"clipput.exe --delayed" : L"clipput.exe";
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        WriteWholeFile(scratch_.Path() / (L"in" + std::to_wstring(i)), texts[i]);
        arguments += L" \"" + std::wstring(formats[i]) + L"=in" + std::to_wstring(i) + L"\"";
    }
    Process owner(Tool(arguments), scratch_.Path(), scratch_.Path() / L"said");
    const auto said = [&] { return ReadWholeFile(scratch_.Path() / L"said"); };
    WaitFor("the owner to be ready", [&] { return said().find("ready") != std::string::npos; });

    ASSERT_EQ(Run(L"clipget.exe --all ."), 0u);
    const std::string list = Output();
    std::string expected;
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        const UINT format = FormatNumber(formats[i]);
        expected += std::to_string(format) + "\t" + Utf8(FormatName(format)) + "\t" +
                    std::to_string(texts[i].size()) + "\r\n";
        EXPECT_EQ(ReadWholeFile(scratch_.Path() / std::to_wstring(i + 1)), texts[i]) << Utf8(formats[i]);
    }
    // What the system makes of the offered formats by itself stands behind them.
    EXPECT_TRUE(list.starts_with(expected)) << list << "instead of\n" << expected;
    EXPECT_EQ(said().find("rendered Rich Text Format") != std::string::npos, GetParam());

    // What was only announced is made before the owner goes, so it stays.
    owner.MayEnd();
    ASSERT_EQ(Run(L"clipput.exe --quit"), 0u);
    EXPECT_EQ(owner.WaitForEnd(), 0u);
    ASSERT_EQ(Run(L"clipget.exe 14 again"), 0u);
    EXPECT_EQ(ReadWholeFile(scratch_.Path() / L"again"), texts[1]);
    EXPECT_EQ(Run(L"clipget.exe \"Not There\" again"), 2u);
}

INSTANTIATE_TEST_SUITE_P(BothWays, ClipTools, testing::Bool(),
                         [](const auto& test) { return test.param ? "Delayed" : "AtOnce"; });

}  // namespace
