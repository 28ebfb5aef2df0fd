#include <windows.h>

#include "desktop/Input.h"
#include "desktop/ProgramTest.h"

// What a new user gets who takes the recommended settings as they are offered.

namespace {

constexpr wchar_t kWelcome[] = L"Norvale - Der Manger für die Zwischenablage";

class FirstDay : public ProgramTest {
 protected:
    // Text in all letters, as the system's own programs copy it.
    static ClipboardOffer Unicode(const std::wstring& text) {
        std::string bytes(reinterpret_cast<const char*>(text.c_str()), (text.size() + 1) * sizeof(wchar_t));
        return {CF_UNICODETEXT, bytes};
    }
};

TEST_F(FirstDay, RecommendedSettings_NameShowAndSpareWhatIsCopied) {
    WriteSetting(L"Settings", L"EditPropAfterSnap", L"1");
    WriteSetting(L"Settings", L"UnknownFormats", L"5");
    WriteSetting(L"Settings", L"Dialog", L"0");
    nxclip_.Start();
    const Window first = nxclip_.WaitForDialog(kWelcome);
    BringToFront(first);
    PressKeys({VK_RETURN});
    nxclip_.WaitForTree(L"Clips [Camera]\n");
    EXPECT_TRUE(nxclip_.Quiet()) << "nothing is asked";
    // Once more it changes nothing unasked.
    nxclip_.Command(m_quickstart);
    const Window again = nxclip_.WaitForDialog(kWelcome);
    EXPECT_FALSE(again.Checked(chkRecommended));
    EXPECT_FALSE(again.Checked(chkPlainProfile));
    again.Press(cb_ok);
    Driver::WaitUntilGone(again);
    nxclip_.SetAutoDetect(true);

    const std::wstring text = L"Grüße 😀 nach 日本";
    const std::set<HTREEITEM> before = nxclip_.Items();
    PutFormats({Unicode(text)});
    EXPECT_EQ(nxclip_.WaitForNewClip(before).text, L"Grüße nach");
    WaitFor("the preview", [&] { return nxclip_.Main().TextOf(tbPreviewText) == text; });
    PutFormats({Unicode(text)});
    nxclip_.WaitForStatus(L"Der Inhalt steht schon im neuesten Clip, 'Grüße nach'.");

    PutFormats({Unicode(L"geheim"),
                {FormatNumber(L"CanIncludeInClipboardHistory"), std::string(sizeof(DWORD), '\0')}});
    nxclip_.WaitForStatus(L"Vertraulicher Inhalt nicht erfasst");
    nxclip_.Command(m_edit_insert);
    EXPECT_NE(nxclip_.AnswerNotice(IDNO).find(L"als vertraulich gekennzeichnet"), std::wstring::npos);
    EXPECT_EQ(nxclip_.Items().size(), before.size() + 1);

    EXPECT_EQ(nxclip_.Quit(), 0u);
    for (const auto& [key, value] : {std::pair(L"UnknownFormats", L"255"), std::pair(L"NewTextMode", L"1"),
                                     std::pair(L"EditPropAfterSnap", L"0"), std::pair(L"SkipSame", L"1"),
                                     std::pair(L"SkipPrivate", L"1")})
        EXPECT_EQ(ReadSetting(L"Settings", key), value);
}

}  // namespace
