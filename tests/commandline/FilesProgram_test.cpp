#include "commandline/FilesProgram.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <tuple>
#include <utility>

#include "engine/clipboard/ClipRecords.h"
#include "engine/tree/TreeFile.h"
#include "fake/ProcessState.h"
#include "platform/Text.h"
#ifdef _WIN32
#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32Files.h"
using RealFiles = Win32Files;
using RealClock = Win32Clock;
#else
#include "platform/posix/PosixClock.h"
#include "platform/posix/PosixFiles.h"
using RealFiles = PosixFiles;
using RealClock = PosixClock;
#endif

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::wstring>;

class HeardConsole : public ConsolePort {
 public:
    void Write(const std::wstring& text) override { output += text; }
    void WriteError(const std::wstring& text) override { errors += text; }
    bool IsWatched() override { return false; }
    std::optional<std::wstring> ReadLine() override { return std::exchange(answer, std::nullopt); }
    std::wstring FullPath(const std::wstring& named) override { return named; }

    std::wstring output, errors;
    std::optional<std::wstring> answer;
};

// The program over real files, in a directory of its own.
class FilesProgramTest : public testing::Test {
 protected:
    FilesProgramTest() {
        root = fs::temp_directory_path() / "nxclip-files-test" /
               testing::UnitTest::GetInstance()->current_test_info()->name();
        fs::remove_all(root);
        fs::create_directories(root / "Profil");
        profile = (root / "Profil").wstring();
    }
    ~FilesProgramTest() override {
        std::error_code ignored;
        fs::remove_all(root, ignored);
    }

    int Run(const Words& words) {
        console.output.clear();
        console.errors.clear();
        ConsolePlatform platform(files, clock, console);
        const ProcessStateScope process;
        return RunFilesProgram(words, platform, console);
    }
    // In the profile, whatever the command.
    int RunThere(Words words) {
        words.insert(words.end(), {L"-d", profile});
        return Run(words);
    }

    std::string BytesOf(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void SetBytes(const fs::path& path, const std::string& bytes) {
        std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
    }
    void SetBytes(const fs::path& path, const std::vector<std::uint8_t>& bytes) {
        SetBytes(path, std::string(bytes.begin(), bytes.end()));
    }
    // A profile with a folder and nothing in it.
    void MakeProfile() {
        TreeData data;
        for (const auto& [tag, text, depth] :
             {std::tuple(L"P&0&D:\\Elsewhere&0&", L"Texte", 0), std::tuple(L"S&Info", L"Briefe", 1)}) {
            TreeNodeRecord node;
            node.Tag = tag;
            node.Text = text;
            node.Depth = static_cast<std::int16_t>(depth);
            data.Nodes.push_back(node);
        }
        data.Count = 2;
        SetBytes(root / "Profil/nxclip.nxp", EncodeTreeData(data));
    }
    std::map<std::string, std::string> WholeDirectory() {
        std::map<std::string, std::string> all;
        for (const auto& entry : fs::recursive_directory_iterator(root / "Profil"))
            if (entry.is_regular_file()) all[entry.path().filename().string()] = BytesOf(entry.path());
        return all;
    }
    // Whatever the locale says about letters beyond plain English.
    static fs::path Named(const std::string& utf8) { return std::u8string(utf8.begin(), utf8.end()); }
    static std::wstring TextOf(const fs::path& path) {
        const std::u8string utf8 = path.u8string();
        return TextFromUtf8({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
    }
    std::wstring Path(const char* name) { return (root / name).wstring(); }

    fs::path root;
    std::wstring profile;
    RealFiles files;
    RealClock clock;
    HeardConsole console;
};

// A picture of one pixel, as files have it.
const std::string kBitmap(
    "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\1\0\0\0\1\0\0\0\1\0\x18\0\0\0\0\0\4\0\0\0"
    "\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x11\x22\x33\0",
    58);
const std::string kPng = std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\7\0\0\0\5\x08\2\0\0\0", 29);

}  // namespace

TEST_F(FilesProgramTest, ImportAndExport_BringBackEveryByte) {
    MakeProfile();
    const std::map<std::string, std::string> contents = {
        {"Gruß.txt", "Grüße ☃ 𝄞\r\nzweite Zeile\n"},
        {"Bild.bmp", kBitmap},
        {"Foto.png", kPng},
        {"Brief.rtf", "{\\rtf1\\ansi Hallo}"},
        {"Seite.html", "<html><body><b>fett & breit</b></body></html>"},
    };
    Words import = {L"import"};
    for (const auto& [name, bytes] : contents) {
        const fs::path file = root / Named(name);
        SetBytes(file, bytes);
        import.push_back(TextOf(file));
    }
    import.insert(import.end(), {L"--to", L"briefe"});
    EXPECT_EQ(RunThere(import), 0) << Utf8FromText(console.errors);
    EXPECT_EQ(Run({L"check", profile}), 0) << Utf8FromText(console.output);
    EXPECT_NE(console.output.find(L"1 Ordner, 5 Clips"), std::wstring::npos);

    EXPECT_EQ(RunThere({L"export", L"-o", Path("Ausgabe")}), 0) << Utf8FromText(console.errors);
    const fs::path made = root / "Ausgabe/Texte/Briefe";
    for (const auto& [name, bytes] : contents)
        EXPECT_EQ(BytesOf(made / Named(name)), bytes) << name;
    const std::string page = BytesOf(root / "Ausgabe/Texte/index.html");
    EXPECT_NE(page.find("href=\"Briefe/Gru%C3%9F.txt\""), std::string::npos);
    EXPECT_NE(page.find("Grüße ☃ 𝄞"), std::string::npos);
    EXPECT_NE(page.find("<pre>fett &amp; breit</pre>"), std::string::npos) << "what is seen of a page";
    EXPECT_NE(page.find("5 Clips in 1 Ordner<"), std::string::npos);
    EXPECT_NE(page.find("src=\"Briefe/Foto.png\""), std::string::npos);
    // Another time nothing is replaced.
    EXPECT_EQ(RunThere({L"export", L"Briefe", L"-o", Path("Ausgabe/Texte")}), 0);
    EXPECT_TRUE(fs::exists(root / "Ausgabe/Texte/Briefe (2)/Bild.bmp"));

    EXPECT_EQ(Run({L"list", profile}), 0);
    EXPECT_NE(console.output.find(L"  Briefe/  Info\n"), std::wstring::npos);
    EXPECT_NE(console.output.find(L" Foto  "), std::wstring::npos);
    EXPECT_EQ(Run({L"list", L"--json", profile}), 0);
    EXPECT_NE(console.output.find(L"\"path\":\"Texte\\\\Briefe\\\\Foto\""), std::wstring::npos);
    EXPECT_EQ(RunThere({L"show", L"Texte/Briefe/Foto"}), 0);
    EXPECT_NE(console.output.find(L"7 x 5 Pixel"), std::wstring::npos);
    EXPECT_EQ(RunThere({L"show", L"Briefe/Gruß"}), 0);
    EXPECT_NE(console.output.find(L"1  Unicode (13)"), std::wstring::npos);
    EXPECT_NE(console.output.find(L"Grüße ☃ 𝄞 zweite Zeile"), std::wstring::npos);

    EXPECT_EQ(RunThere({L"extract", L"Briefe/Gruß", L"Text", L"-o", Path("roh.bin"), L"--raw"}), 0);
    EXPECT_EQ(BytesOf(root / "roh.bin").substr(0, 4), "Gr\xFC\xDF");
    EXPECT_EQ(RunThere({L"extract", L"Briefe/Seite", L"-o", Path("roh.bin")}), 2) << "it is there already";
    EXPECT_EQ(RunThere({L"search", L"fett"}), 0);
    EXPECT_NE(console.output.find(L"Texte\\Briefe\\Seite"), std::wstring::npos);
    EXPECT_EQ(RunThere({L"search", L"nirgends"}), 1);

    // A clip of the folder's name: each command takes the one that it works on.
    SetBytes(root / "Briefe.txt", "noch einer");
    for (const wchar_t* to : {L"Texte", L"Briefe"})
        EXPECT_EQ(RunThere({L"import", Path("Briefe.txt"), L"--to", to}), 0) << Utf8FromText(console.errors);
    EXPECT_EQ(console.output, L"Texte\\Briefe\\Briefe\n");
    EXPECT_EQ(RunThere({L"show", L"Briefe"}), 0) << Utf8FromText(console.errors);
}

TEST_F(FilesProgramTest, Repair_AsksAndLeavesWhatCheckCallsWhole) {
    MakeProfile();
    SetBytes(root / "a.txt", "Inhalt");
    ASSERT_EQ(RunThere({L"import", Path("a.txt"), Path("a.txt"), L"--to", L"Texte"}), 0);
    fs::copy_file(root / "Profil/C1.nxc", root / "Profil/C7.nxc");
    fs::resize_file(root / "Profil/C2.nxc", 20);
    const auto before = WholeDirectory();
    EXPECT_EQ(Run({L"check", profile}), 1);
    EXPECT_NE(console.output.find(L"C7.nxc: Zur Datei gibt es keinen Eintrag im Baum. Der Start"),
              std::wstring::npos);
    EXPECT_EQ(WholeDirectory(), before);

    console.answer = L"n";
    EXPECT_EQ(Run({L"repair", profile}), 1);
    EXPECT_EQ(WholeDirectory(), before) << "nothing is changed without a yes";
    {
        const FileHandle lock = files.Open(profile + L"\\nxclip.lck", FileUse::Lock);
        EXPECT_EQ(Run({L"repair", profile, L"--yes"}), 2);
        EXPECT_NE(console.errors.find(L"Das Profil ist geöffnet"), std::wstring::npos);
        EXPECT_EQ(RunThere({L"import", Path("a.txt"), L"--to", L"Texte"}), 2);
        EXPECT_EQ(RunThere({L"show", L"1"}), 0) << "what is open elsewhere can be read";
        files.Close(lock);
    }
    EXPECT_EQ(WholeDirectory(), before);
    SetBytes(root / "Profil/nxclip.lck", "");  // left by a program that was killed
    console.answer = L"ja";
    EXPECT_EQ(Run({L"repair", profile}), 0) << Utf8FromText(console.output + console.errors);
    EXPECT_EQ(Run({L"check", profile}), 0) << Utf8FromText(console.output);
    EXPECT_EQ(WholeDirectory().at("nxclip.bak"), before.at("nxclip.nxp"));
    EXPECT_EQ(WholeDirectory().at("C2.nxc.defekt"), before.at("C2.nxc"));
    EXPECT_EQ(RunThere({L"show", L"7"}), 0);
}

TEST_F(FilesProgramTest, Run_WrongUseIsOneSentenceAndChangesNothing) {
    MakeProfile();
    SetBytes(root / "a.txt", "Inhalt");
    const auto before = WholeDirectory();
    const Words wrong[] = {{L"list", Path("fehlt")},
                           {L"list", root.wstring()},
                           {L"check", Path("fehlt")},
                           {L"repair", Path("fehlt")},
                           {L"list", L"--jsn"},
                           {L"tanzen"},
                           {L"show", L"Briefe", L"-d", profile},
                           {L"show", L"99", L"-d", profile},
                           {L"show"},
                           {L"extract", L"1", L"-o"},
                           {L"export", L"-d", profile},
                           {L"import", Path("fehlt.txt"), L"-d", profile},
                           {L"search", L"", L"-d", profile}};
    for (const Words& words : wrong) {
        EXPECT_EQ(Run(words), 2) << Utf8FromText(words[0]);
        EXPECT_EQ(std::ranges::count(console.errors, L'\n'), 1) << Utf8FromText(console.errors);
        EXPECT_EQ(console.output, L"");
    }
    EXPECT_EQ(RunThere({L"export", L"-o", Path("fehlt/a")}), 1);
    EXPECT_EQ(std::ranges::count(console.errors, L'\n'), 1) << Utf8FromText(console.errors);
    EXPECT_EQ(Run({L"search", L"-d", profile, L"--", L"--help"}), 1) << "a text like an option";
    EXPECT_EQ(RunThere({L"import", Path("fehlt.txt"), L"--to", L"Texte"}), 1);
    EXPECT_EQ(WholeDirectory(), before);
    for (const wchar_t* command :
         {L"list", L"show", L"extract", L"export", L"check", L"repair", L"search", L"import"}) {
        EXPECT_EQ(Run({command, L"--help"}), 0);
        EXPECT_TRUE(console.output.starts_with(std::wstring(L"Aufruf: nxclip-files ") + command));
    }
    SetBytes(root / "Profil/nxclip.nxp", "kein Baum");
    EXPECT_EQ(Run({L"check", profile}), 2);
    EXPECT_EQ(Run({L"list", profile}), 2);
}
