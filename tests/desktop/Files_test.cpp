#include "desktop/DropPeers.h"
#include "desktop/WholeFile.h"

// Clips that leave as ordinary files, and files that become clips.

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
    static void DragOut(POINT from) { Drag(from, FileTaker::PlaceAt(from.y)); }
    std::wstring Make(const std::wstring& name, const std::string& bytes) {
        WriteWholeFile(nxclip_.Directory() / name, bytes);
        return (nxclip_.Directory() / name).wstring();
    }

    const OleHere ole_;
};

TEST_F(Files, ClipDraggedOut_ArrivesAsFilesAndTheTreesOwnDragStillWorks) {
    StartWithProfile();
    SnapOf({{CF_UNICODETEXT, std::string("G\0r\0\xFC\0\xDF\0e\0\0\0", 12)}});
    MakeFolder(L"Ordner");
    nxclip_.Tree().Select(L"Profil");
    WaitFor("the list", [&] { return nxclip_.List().Count() == 2; });
    const auto names = nxclip_.List().Names();
    const int row = static_cast<int>(std::find(names.begin(), names.end(), L"Clip") - names.begin());
    FileTaker taker;
    BringToFront(nxclip_.Main());
    DragOut(nxclip_.List().PlaceOf(row));
    WaitFor("the drop", [&] { return taker.Dropped(); });
    ASSERT_EQ(taker.Files().size(), 1u);
    EXPECT_EQ(taker.Files().at(L"Clip.txt"),
              "Gr\xC3\xBC\xC3\x9F"
              "e");

    // The file of the clip is gone when its bytes are asked for.
    FileTaker late;
    late.beforeTheBytes = [&] { fs::rename(ClipFileAt(1), nxclip_.Directory() / L"weg"); };
    DragOut(nxclip_.List().PlaceOf(row));
    WaitFor("the late drop", [&] { return late.Dropped(); });
    EXPECT_EQ(late.Files().at(L"Clip.txt"), std::nullopt);
    fs::rename(nxclip_.Directory() / L"weg", ClipFileAt(1));
    EXPECT_TRUE(nxclip_.Quiet());

    Drag(nxclip_.List().PlaceOf(row), nxclip_.Tree().PlaceOf(L"Profil\\Ordner"));
    nxclip_.WaitForTree(L"Profil [Camera] open\n  Ordner [Structure] open\n    Clip [Clip]\n");
}

TEST_F(Files, FilesDroppedOnAFolder_BecomeClips) {
    StartWithProfile();
    MakeFolder(L"Ordner");
    const std::wstring huge = Make(L"groß.bin", "x");
    fs::resize_file(huge, 300'000'000);
    const std::vector<std::wstring> paths = {Make(L"Gruß.txt",
                                                  "Gr\xC3\xBC\xC3\x9F"
                                                  "e"),
                                             nxclip_.ProfileDirectory().wstring(), huge,
                                             (nxclip_.Directory() / L"weg.txt").wstring()};
    EXPECT_EQ(DragFiles(paths, nxclip_.Tree().PlaceOf(L"Profil\\Ordner")), DWORD{DROPEFFECT_COPY});
    EXPECT_NE(nxclip_.AnswerNotice().find(L"weg.txt"), std::wstring::npos);
    nxclip_.WaitForTree(
        L"Profil [Camera] open\n  Ordner [Structure] open\n    Gruß [Clip]\n    Profil [Clip]\n    groß "
        L"[Clip]\n");
    const auto records = ReadClipFile(ClipFileAt(1));
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(records[0].bytes, std::string("G\0r\0\xFC\0\xDF\0e\0\0\0", 12));
    EXPECT_LT(fs::file_size(ClipFileAt(3)), 1000u) << "of a huge file only the way is taken";
    EXPECT_TRUE(fs::exists(paths[0])) << "the file stays where it is";

    // The lock lets nothing new come in.
    nxclip_.Command(m_edit_lock);
    EXPECT_EQ(DragFiles(paths, nxclip_.Tree().PlaceOf(L"Profil\\Ordner"), std::chrono::seconds(1)),
              DWORD{DROPEFFECT_NONE});
}

// And a search in the many that came leaves the list as it was.
TEST_F(Files, ManyFilesDropped_AreCountedAndCanBeStopped) {
    StartWithProfile();
    MakeFolder(L"Ordner");
    const std::vector<std::wstring> paths(4000, Make(L"Text.txt", std::string(50'000, 'x')));
    EXPECT_EQ(DragFiles(paths, nxclip_.Tree().PlaceOf(L"Profil\\Ordner")), DWORD{DROPEFFECT_COPY});
    const Window dialog = nxclip_.WaitForDialog(L"Aufnehmen");
    EXPECT_TRUE(dialog.TextOf(lblProgress).ends_with(L" von 4000"));
    WaitFor("more than the list shows", [&] { return std::stoi(dialog.TextOf(lblProgress)) > 100; });
    dialog.Press(cb_cancel);
    Driver::WaitUntilGone(dialog);
    nxclip_.WaitForStatus(L"Abgebrochen. ");
    nxclip_.Tree().Select(L"Profil\\Ordner");
    const ListControl list = nxclip_.List();
    WaitFor("the list", [&] { return list.Count() > 50; });
    const int count = list.Count();
    EXPECT_LT(count, 4000);
    EXPECT_TRUE(fs::exists(ClipFileAt(count)));
    EXPECT_FALSE(fs::exists(ClipFileAt(count + 1)));

    BringToFront(nxclip_.Main());
    ChooseRow(0);
    PressKeys({VK_END});
    WaitFor("the last row", [&] { return ChosenRow() == count - 1; });
    const auto firstSeen = [&] { return list.window().Send(LVM_GETTOPINDEX, 0, 0); };
    const auto scrolled = firstSeen();
    ASSERT_GT(scrolled, 0);
    PressKeys({VK_CONTROL, VK_SHIFT, 'F'});
    Type(L"nirgends");
    WaitFor("no hits", [&] { return list.Count() == 0; });
    PressKeys({VK_ESCAPE});
    WaitFor("the rows as before", [&] { return list.Count() == count && ChosenRow() == count - 1; });
    EXPECT_EQ(firstSeen(), scrolled);
}

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
    Make(L"Rest.bin", std::string(2, '\0'));
    const std::wstring import = L"import \"" + file + L"\" Rest.bin --to Profil -d Profil";
    SnapOf({{CF_TEXT, std::string("gr\xFCn\0", 5)}});
    const auto refused = RunFiles(import);
    EXPECT_EQ(refused.second, 2u);
    EXPECT_NE(refused.first.find("Das Profil ist geöffnet"), std::string::npos) << refused.first;
    EXPECT_EQ(CodeOf(L"repair Profil --yes"), 2u);
    WaitFor("the end of the journal, with which a check finds nothing",
            [&] { return CodeOf(L"check Profil") == 0u; });
    EXPECT_NE(RunFiles(L"show Clip -d Profil").first.find("grün"), std::string::npos);
    SnapOf({{Private(), "noch einer"}});  // who reads is in nobody's way

    nxclip_.Quit();
    EXPECT_EQ(RunFiles(import), std::pair(std::string("Profil\\Übung\nProfil\\Rest\n"), DWORD{0}));
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
