#include "commandline/CheckCommands.h"

#include "commandline/OpenedProfile.h"
#include "commandline/Progress.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/DirectoryCheck.h"
#include "engine/profiles/DirectoryRepair.h"
#include "engine/views/FormatTexts.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr int kWhole = 0;
constexpr int kFindings = 1;
constexpr int kUnreadable = 2;

const wchar_t* WhatAStartDoes(Mending mending) {
    switch (mending) {
        case Mending::ByLoad:
            return L" Der Start von NXClip bringt das in Ordnung.";
        case Mending::AfterAnswer:
            return L" Der Start von NXClip fragt, ob er es in Ordnung bringen soll.";
        default:
            return L"";
    }
}

void WriteFindings(const DirectoryState& state, ConsolePort& console) {
    for (const Finding& finding : state.findings)
        console.Write(TextOf(finding) + WhatAStartDoes(MendingOf(finding.damage)) + L"\n");
}

std::wstring SummaryOf(const DirectoryState& state) {
    return NumberText(state.folders) + L" Ordner, " + NumberText(state.clips) + L" Clips, " +
           NumberText(state.formats) + L" Formate, " + SizeText(state.dataSize);
}

DirectoryState CheckWithProgress(const std::wstring& directory, ConsolePort& console) {
    Progress progress(console, L"Prüfen");
    return CheckDirectory(directory, [&](std::size_t done, std::size_t of) {
        progress.Show(done, of);
        return true;
    });
}

std::wstring DirectoryOf(const CommandContext& context) {
    const auto& values = context.arguments.Values();
    return values.empty() ? kCurrentDirectory : values[0];
}

int ResultOf(const DirectoryState& state) {
    if (!state.readable) return kUnreadable;
    return state.IsWhole() ? kWhole : kFindings;
}

// True when the user wants it.
bool MayRepair(const CommandContext& context) {
    if (context.arguments.Has(L"--yes")) return true;
    return ThePlatform().user.Ask(L"Soll das Profil repariert werden ? (Kopien bleiben erhalten.)",
                                  L"Profil beschädigt", true);
}

}  // namespace

int RunCheck(const CommandContext& context) {
    const std::wstring directory = DirectoryOf(context);
    const DirectoryState state = CheckWithProgress(directory, context.console);
    if (!state.readable) {
        for (const Finding& finding : state.findings)
            context.console.WriteError(TextOf(finding) + L"\n");
        return kUnreadable;
    }
    WriteFindings(state, context.console);
    context.console.Write(SummaryOf(state) + (state.IsWhole() ? L": alles ist ganz.\n" : L".\n"));
    return ResultOf(state);
}

int RunRepair(const CommandContext& context) {
    const std::wstring directory = DirectoryOf(context);
    if (!ThePlatform().files.IsDirectory(directory))
        throw CommandError{L"Das Verzeichnis ist nicht da: " + directory};
    ExpectFree(directory);
    const DirectoryState before = CheckWithProgress(directory, context.console);
    if (before.IsWhole()) {
        context.console.Write(L"Es ist nichts zu reparieren.\n");
        return kWhole;
    }
    WriteFindings(before, context.console);
    if (!MayRepair(context)) {
        context.console.Write(L"Nichts wurde verändert.\n");
        return kFindings;
    }
    context.platform.SayYes();
    {
        NodeCollection nodes;
        CTreeViewEx tree;
        tree.Bind(&nodes);
        for (const std::wstring& done : RepairDirectory(tree, directory))
            context.console.Write(done + L"\n");
        Profiles().Clear();
    }
    const DirectoryState after = CheckWithProgress(directory, context.console);
    WriteFindings(after, context.console);
    context.console.Write(after.IsWhole() ? L"Das Profil ist jetzt ganz.\n"
                                          : L"Nicht alles ließ sich in Ordnung bringen.\n");
    return ResultOf(after);
}
