#include "engine/flows/Export.h"

#include <algorithm>

#include "engine/clipboard/ClipboardTest.h"
#include "engine/flows/Import.h"
#include "engine/profiles/ProfileWorldTest.h"

// Clips that become ordinary files, and files that become clips.

namespace {

class ExportTest : public ProfileWorldTest {
 protected:
    // Below the directory that is written into, without the one of the profile.
    std::set<std::wstring> Written() const {
        std::set<std::wstring> names;
        const std::wstring top = L"C:\\OUT\\P\\";
        for (const std::wstring& file : fake.files.AllFiles()) {
            const std::wstring path = UpperCase(file);
            if (path.starts_with(top)) names.insert(path.substr(top.size()));
        }
        return names;
    }
    std::string Page() { return fake.files.Bytes(L"C:\\Out\\P\\index.html").value_or(""); }
    static void RunWhole(LongWork& work) {
        while (work.Step()) {
        }
    }
};

TEST_F(ExportTest, Names_AreThoseThatWindowsTakesEachOnce) {
    Node& p = AddProfile(L"P");
    const std::wstring tooLong(300, L'x');
    for (const std::wstring& name :
         {std::wstring(L"CON"), std::wstring(L"com1.txt"), std::wstring(L"Ende..."), tooLong,
          std::wstring(L"gleich"), std::wstring(L"GLEICH"), std::wstring(L"a/b\\c:d*?"), std::wstring(L" . "),
          std::wstring(L"index")})
        AddClip(p, name);
    Export files(std::vector<const Node*>{&p}, L"C:\\Out");
    RunWhole(files);
    EXPECT_EQ(files.Failures(), std::vector<std::wstring>());
    std::set<std::wstring> names = Written();
    EXPECT_EQ(names.size(), 2 * 9 + 1u) << "a text and a rich text of each, and the page";
    for (const wchar_t* one : {L"GLEICH.TXT", L"GLEICH (2).TXT", L"A_B_C_D__.RTF", L"INDEX (2).TXT",
                               L"CLIP.TXT", L"ENDE.TXT", L"INDEX.HTML"})
        EXPECT_TRUE(names.contains(one)) << AnsiFromText(one);
    for (const std::wstring& name : names) {
        EXPECT_LT(name.size(), 250u);
        const std::wstring stem = name.substr(0, name.find(L'.'));
        EXPECT_TRUE(stem != L"CON" && stem != L"COM1") << AnsiFromText(name);
    }
    // Into the profile's own directory, and once more: nothing is replaced, and the profile stays whole.
    for (int i = 0; i < 2; ++i) {
        Export own(std::vector<const Node*>{&p}, L"C:\\P");
        RunWhole(own);
        EXPECT_EQ(own.Files(), 2 * 9 + 1u);
    }
    SaveAllProfiles(tree);
    FinishSaves();
    EXPECT_TRUE(CheckDirectory(L"C:\\P").IsWhole());
}

TEST_F(ExportTest, StopAndFailures_LeaveWhatWasWrittenAndAPageThatSaysIt) {
    Fill();
    // One byte is the least that there can be of a format.
    fake.files.SetBytes(L"C:\\P\\C3.nxc",
                        RecordBytes(1, "Text", "x") + RecordBytes(0xC0A5, "Rich Text Format", ""));
    Export letter(std::vector<const Node*>{&Get(L"c3")}, L"C:\\P");
    RunWhole(letter);
    EXPECT_EQ(fake.files.Bytes(L"C:\\P\\c3.txt"), "x");
    EXPECT_EQ(letter.Files(), 1u);
    // What is exported may go meanwhile.
    Export files(std::vector<const Node*>{&Get(L"P")}, L"C:\\Out");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(files.Step());
    fake.files.Vanish(L"C:\\P\\C2.nxc");
    EXPECT_TRUE(files.Step());
    EXPECT_TRUE(files.Step());
    EXPECT_EQ(files.Failures().size(), 1u);
    files.Stop();
    EXPECT_FALSE(files.Step());
    EXPECT_TRUE(Written().contains(L"S\\C1.TXT"));
    EXPECT_FALSE(Written().contains(L"C3.TXT"));
    EXPECT_NE(Page().find("wurde hier beendet"), std::string::npos);

    Export full(std::vector<const Node*>{&Get(L"P")}, L"C:\\Out2");
    EXPECT_TRUE(full.Step());
    fake.files.capacity = 0;
    RunWhole(full);
    EXPECT_FALSE(full.Failures().empty());
    EXPECT_EQ(full.Files(), 0u);
    for (const std::wstring& file : fake.files.AllFiles())
        EXPECT_FALSE(UpperCase(file).starts_with(L"C:\\OUT2\\")) << "a half file: " << AnsiFromText(file);
    leavesWhole = false;
}

TEST_F(ExportTest, Import_EndsWithItsContainerAndTellsOfEachFileThatFails) {
    Fill();
    fake.files.SetBytes(L"C:\\a.txt", "eins");
    fake.files.SetBytes(L"C:\\tief.xyz", std::string("\0\1\2", 3));
    fake.files.AddDirectory(L"C:\\Ordner");
    Node& folder = Get(L"U");
    Import files(nodes, folder, {L"C:\\a.txt", L"C:\\weg.txt", L"C:\\Ordner", L"C:\\tief.xyz", L"C:\\a.txt"});
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(files.Step());
    EXPECT_EQ(files.Failures().size(), 1u);
    EXPECT_EQ(files.Summary(), L"3 Dateien aufgenommen; 1 Fehler.");
    EXPECT_EQ(folder.LastChild()->Text(), L"tief");
    SaveAllProfiles(tree);
    FinishSaves();
    nodes.Remove(folder);
    EXPECT_FALSE(files.Step());
    EXPECT_TRUE(CheckDirectory(L"C:\\Q").IsWhole());
    EXPECT_TRUE(fake.user.messages.empty());
}

}  // namespace
