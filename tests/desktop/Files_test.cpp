#include "desktop/ProgramTest.h"
#include "desktop/WholeFile.h"

// Clips that leave as ordinary files, and what nxclip-files does beside the program.

namespace {

namespace fs = std::filesystem;

class Files : public ProgramTest {
 protected:
    // Its output and the exit code.
    std::pair<std::string, DWORD> RunFiles(const std::wstring& words) {
        const fs::path output = nxclip_.Directory() / L"Ausgabe.txt";
        const fs::path program = ProgramFile().parent_path() / L"nxclip-files.exe";
        Process files(L"\"" + program.wstring() + L"\" " + words, nxclip_.Directory().wstring(),
                      output.wstring());
        const DWORD code = files.WaitForEnd();
        return {ReadWholeFile(output), code};
    }
    DWORD CodeOf(const std::wstring& words) { return RunFiles(words).second; }
    std::wstring Make(const std::wstring& name, const std::string& bytes) {
        WriteWholeFile(nxclip_.Directory() / name, bytes);
        return (nxclip_.Directory() / name).wstring();
    }
};

TEST_F(Files, Export_WritesTheProfileEvenIntoItsOwnDirectory) {
    StartWithProfile();
    for (const char* text : {"eins", "zwei"})
        SnapOf({{Private(), text}, {CF_TEXT, text + std::string(1, '\0')}});
    nxclip_.Tree().Select(L"Profil");
    for (const wchar_t* made : {L"Profil", L"Profil (2)"}) {
        nxclip_.Command(m_export);
        const Window dialog = nxclip_.WaitForDialog(L"Exportieren nach");
        dialog.SetText(tbDir, nxclip_.ProfileDirectory().wstring());
        dialog.Press(cb_ok);
        Driver::WaitUntilGone(dialog);
        nxclip_.WaitForStatus(L"3 Dateien geschrieben.");
        EXPECT_EQ(ReadWholeFile(nxclip_.ProfileDirectory() / made / L"Clip.txt"), "eins");
        EXPECT_EQ(ReadWholeFile(nxclip_.ProfileDirectory() / made / L"Clip (2).txt"), "zwei");
        EXPECT_TRUE(fs::exists(nxclip_.ProfileDirectory() / made / L"index.html"));
        nxclip_.Command(mnuViewRefresh);
        WaitFor("another status",
                [&] { return nxclip_.StatusBar().Text().find(L"geschrieben") == std::wstring::npos; });
    }
}

TEST_F(Files, Commands_ReadWhatTheProgramHasOpenAndChangeItOnlyAfterwards) {
    StartWithProfile();
    const std::wstring file = Make(L"Übung.txt",
                                   "Stra\xC3\x9F"
                                   "e");
    const std::wstring import = L"import \"" + file + L"\" --to Profil -d Profil";
    SnapOf({{CF_TEXT, std::string("gr\xFCn\0", 5)}});
    const auto refused = RunFiles(import);
    EXPECT_EQ(refused.second, 2u);
    EXPECT_NE(refused.first.find("Das Profil ist geöffnet"), std::string::npos) << refused.first;
    EXPECT_EQ(CodeOf(L"repair Profil --yes"), 2u);
    EXPECT_EQ(CodeOf(L"check Profil"), 0u);
    EXPECT_NE(RunFiles(L"show Clip -d Profil").first.find("grün"), std::string::npos);
    SnapOf({{Private(), "noch einer"}});  // who reads is in nobody's way

    nxclip_.Quit();
    EXPECT_EQ(RunFiles(import), std::pair(std::string("Profil\\Übung\n"), DWORD{0}));
    EXPECT_NE(RunFiles(L"list Profil --json").first.find("\"Profil\\\\Übung\""), std::string::npos);
    EXPECT_EQ(CodeOf(L"search STRASSE -d Profil"), 0u);
    EXPECT_EQ(CodeOf(L"search nirgends -d Profil"), 1u);
    EXPECT_EQ(CodeOf(L"extract Übung -o Ärger.txt -d Profil"), 0u);
    EXPECT_EQ(ReadWholeFile(nxclip_.Directory() / L"Ärger.txt"), ReadWholeFile(file));
    EXPECT_EQ(CodeOf(L"export Profil -o Öffentlich -d Profil"), 0u);
    EXPECT_EQ(ReadWholeFile(nxclip_.Directory() / L"Öffentlich" / L"Profil" / L"Übung.txt"),
              ReadWholeFile(file));
    EXPECT_EQ(CodeOf(L"repair Profil --yes"), 0u);
    EXPECT_EQ(CodeOf(L"prüfe Profil"), 2u);
    nxclip_.Start();
    EXPECT_NE(TreeOutline().find(L"  Übung [Clip]\n"), std::wstring::npos);
}

}  // namespace
