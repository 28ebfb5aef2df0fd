#include "engine/process/modHelp.h"

#include "engine/process/AppTest.h"

namespace {

class Browser : public HelpPages {
 public:
    bool ViewerWorks() override { return viewerWorks; }
    bool OpenPage(const std::wstring& file) override {
        pages.push_back(file);
        return true;
    }

    bool viewerWorks = false;
    std::vector<std::wstring> pages;
};

class modHelpTest : public AppTest {
 protected:
    modHelpTest() {
        UseHelpPages(&browser);
        for (const wchar_t* file :
             {L"NXCLIP.HLP", L"HILFE\\INHALT.HTML", L"HILFE\\STICHWOERTER.HTML", L"HILFE\\SUCHEN.HTML"})
            fake.files.SetBytes(AppPath + file, "help");
    }
    ~modHelpTest() override { UseHelpPages(nullptr); }

    Browser browser;
    const WindowHandle window = fake.windows.AddWindow();
};

TEST_F(modHelpTest, ShowHelp_WithAViewer_OpensTheHelpFileOnTheTopic) {
    browser.viewerWorks = true;
    ShowHelp(window, HelpTopic::Search);
    ShowHelpCommand(window, kHelpFinder, 0);
    ASSERT_EQ(fake.windows.helps.size(), 2u);
    EXPECT_EQ(fake.windows.helps[0].window, window);
    EXPECT_EQ(fake.windows.helps[0].file, L"C:\\NXCLIP\\Nxclip.hlp");
    EXPECT_EQ(fake.windows.helps[0].command, 1u);
    EXPECT_EQ(fake.windows.helps[0].data, 50u);
    EXPECT_EQ(fake.windows.helps[1].command, 11u);
    EXPECT_TRUE(browser.pages.empty());
}

TEST_F(modHelpTest, ShowHelp_WithoutAViewer_OpensTheTopicsPage) {
    ShowHelp(window, HelpTopic::Search);
    ShowHelpCommand(window, kHelpFinder, 50);
    ShowHelpCommand(window, kHelpContext, 4711);
    const std::wstring contents = L"C:\\NXCLIP\\HILFE\\inhalt.html";
    EXPECT_EQ(browser.pages, (std::vector<std::wstring>{L"C:\\NXCLIP\\HILFE\\suchen.html",
                                                        L"C:\\NXCLIP\\HILFE\\stichwoerter.html", contents}));
    EXPECT_TRUE(fake.windows.helps.empty());
}

}  // namespace
