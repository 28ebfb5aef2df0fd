#include "commandline/FilesProgram.h"

#include <algorithm>
#include <optional>

#include "commandline/CheckCommands.h"
#include "commandline/ImportCommand.h"
#include "commandline/LookCommands.h"
#include "commandline/SearchCommand.h"
#include "commandline/TakeCommands.h"
#include "platform/RuntimeError.h"

namespace {

constexpr int kWrongUse = 2;
constexpr std::size_t kAnyNumber = static_cast<std::size_t>(-1);

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {L"list",
         L"[VERZEICHNIS] [--json]",
         L"zeigt den Baum mit Nummern, Zeiten, Formaten und Größen",
         L"Ohne VERZEICHNIS ist das aktuelle gemeint.\n"
         L"  --json   schreibt eine JSON-Liste aller Einträge, für Skripte\n",
         0,
         1,
         {{L"--json", L"", false}},
         RunList},
        {L"show",
         L"CLIP [-d VERZEICHNIS]",
         L"zeigt einen Clip mit allen Formaten und ihrem Anfang",
         L"CLIP ist die Nummer des Clips oder sein Weg im Baum, etwa \"Briefe/Gruß\".\n"
         L"  -d, --directory   das Verzeichnis des Profils, sonst das aktuelle\n",
         1,
         1,
         {kDirectoryOption},
         RunShow},
        {L"extract",
         L"CLIP [FORMAT] -o DATEI [--raw] [-d VERZEICHNIS]",
         L"schreibt ein Format eines Clips in eine Datei",
         L"FORMAT ist die laufende Nummer oder der Name, wie \"show\" sie zeigt; sonst wird das gewählt,\n"
         L"das am meisten sagt. Text wird UTF-8, Bilder, Zeichnungen, HTML und RTF werden Dateien, wie\n"
         L"andere Programme sie öffnen. DATEI darf es noch nicht geben.\n"
         L"  -o, --output      die neue Datei\n"
         L"  --raw             die Bytes, wie sie im Clip stehen\n"
         L"  -d, --directory   das Verzeichnis des Profils, sonst das aktuelle\n",
         1,
         2,
         {kOutputOption, {L"--raw", L"", false}, kDirectoryOption},
         RunExtract},
        {L"export",
         L"[EINTRAG] -o VERZEICHNIS [-d VERZEICHNIS]",
         L"schreibt einen Clip, einen Ordner oder das ganze Profil als Dateien",
         L"Ordner werden Verzeichnisse, und die Seite index.html zeigt alles. Nichts wird überschrieben.\n"
         L"  -o, --output      wohin; das Verzeichnis wird angelegt, wenn es fehlt\n"
         L"  -d, --directory   das Verzeichnis des Profils, sonst das aktuelle\n",
         0,
         1,
         {kOutputOption, kDirectoryOption},
         RunExport},
        {L"check",
         L"[VERZEICHNIS]",
         L"prüft den Baum, das Journal und die Datei jedes Clips",
         L"Verändert nichts. Sagt zu einem Befund, was der Start von NXClip daran täte.\n"
         L"Ergebnis: 0 alles ist ganz, 1 es gibt Befunde, 2 das Profil ist nicht zu lesen.\n",
         0,
         1,
         {},
         RunCheck},
        {L"repair",
         L"[VERZEICHNIS] [--yes]",
         L"bringt in Ordnung, was check findet",
         L"Eine Kopie der Profildatei bleibt als nxclip.bak erhalten, beschädigte Clipdateien als\n"
         L"C<Nummer>.nxc.defekt.\n"
         L"  --yes   fragt nicht\n",
         0,
         1,
         {{L"--yes", L"-y", false}},
         RunRepair},
        {L"search",
         L"TEXT [-d VERZEICHNIS]",
         L"sucht in Namen, Informationen und Inhalten",
         L"Es gilt, was das Suchfeld des Programms versteht, auch name:, datei:, typ: und seit:\n"
         L"Ergebnis: 0 gefunden, 1 nichts gefunden.\n"
         L"  -d, --directory   das Verzeichnis des Profils, sonst das aktuelle\n",
         1,
         1,
         {kDirectoryOption},
         RunSearch},
        {L"import",
         L"DATEI... --to ORDNER [-d VERZEICHNIS]",
         L"nimmt gewöhnliche Dateien als Clips auf",
         L"Texte, HTML, RTF, Bilder und Zeichnungen werden ihr Inhalt; von anderen Dateien wird der Weg\n"
         L"aufgenommen, so dass sie sich einfügen lassen.\n"
         L"  --to              der Ordner im Baum, oder der Name des Profils\n"
         L"  -d, --directory   das Verzeichnis des Profils, sonst das aktuelle\n",
         1,
         kAnyNumber,
         {{L"--to", L"", true}, kDirectoryOption},
         RunImport},
    };
    return commands;
}

const Command* CommandNamed(const std::wstring& name) {
    const auto& commands = Commands();
    const auto found =
        std::find_if(commands.begin(), commands.end(), [&](const Command& one) { return name == one.name; });
    return found == commands.end() ? nullptr : &*found;
}

bool IsHelp(const std::wstring& word) {
    return word == L"--help" || word == L"-h" || word == L"/?";
}

std::wstring UsageOf(const Command& command) {
    return L"Aufruf: nxclip-files " + std::wstring(command.name) + L" " + command.usage + L"\n";
}

std::wstring Overview() {
    std::wstring text = L"nxclip-files: die Dateien von NXClip ansehen, prüfen und mitnehmen.\n\n";
    for (const Command& command : Commands()) {
        const std::wstring name = command.name;
        text += L"  " + name + std::wstring(9 - name.size(), L' ') + command.summary + L"\n";
    }
    return text + L"\nMehr zu einem Befehl: nxclip-files BEFEHL --help\n";
}

// What the words ask to be told instead of a command; none when they are one.
std::optional<std::wstring> HelpFor(const std::vector<std::wstring>& words) {
    if (IsHelp(words[0]) || words[0] == L"help") {
        const Command* const named = words.size() > 1 ? CommandNamed(words[1]) : nullptr;
        return named == nullptr ? Overview()
                                : UsageOf(*named) + L"\n" + named->summary + L".\n\n" + named->help;
    }
    const Command* const command = CommandNamed(words[0]);
    const auto options = std::find(words.begin(), words.end(), L"--");
    if (command == nullptr || std::none_of(words.begin(), options, IsHelp)) return std::nullopt;
    return HelpFor({L"help", words[0]});
}

int Run(const Command& command, const std::vector<std::wstring>& words, ConsolePlatform& platform,
        ConsolePort& console) {
    const Arguments arguments({words.begin() + 1, words.end()}, command.options);
    const std::size_t count = arguments.Values().size();
    if (count < command.leastValues) throw CommandError{L"Es fehlt eine Angabe. " + UsageOf(command)};
    if (count > command.mostValues)
        throw CommandError{L"Eine Angabe ist zu viel: " + arguments.Values().back() + L". " +
                           UsageOf(command)};
    return command.run({arguments, platform, console});
}

std::wstring AsLine(std::wstring text) {
    if (!text.ends_with(L'\n')) text += L'\n';
    return text;
}

}  // namespace

int RunFilesProgram(const std::vector<std::wstring>& words, ConsolePlatform& platform, ConsolePort& console) {
    if (words.empty()) {
        console.WriteError(Overview());
        return kWrongUse;
    }
    if (const auto help = HelpFor(words)) {
        console.Write(*help);
        return 0;
    }
    try {
        const Command* const command = CommandNamed(words[0]);
        if (command == nullptr)
            throw CommandError{L"Den Befehl \"" + words[0] + L"\" gibt es nicht. Siehe nxclip-files --help"};
        return Run(*command, words, platform, console);
    } catch (const CommandError& error) {
        console.WriteError(AsLine(error.text));
        return error.exitCode;
    } catch (const std::exception&) {
        console.WriteError(AsLine(ErrorBeingHandled().Description()));
        return kWrongUse;
    }
}
