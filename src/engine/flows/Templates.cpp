#include "engine/flows/Templates.h"

#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";
constexpr const wchar_t* kDialogKey = L"Dialog";

// Null when nothing was attached. Its directory was ordered with the profile, so nobody is asked for it.
Node* InstallTemplate(ProfileActions& actions, const std::wstring& name, const std::wstring& directory,
                      const std::wstring& templateFile) {
    if (!MakeProfileDirectory(directory)) return nullptr;
    UserPort& user = ThePlatform().user;
    if (ThePlatform().files.Exists(TreeDataFilePath(directory))) {
        const bool attach = user.Ask(L"Es existiert schon ein Profil im Verzeichnis\r\n" + directory +
                                         L"\r\nSoll das existierende Profil eingebunden werden ?",
                                     L"Profil existiert", false);
        return attach ? actions.ImportProfileDirect(directory) : nullptr;
    }
    Node* const profile = actions.BuildNewprofile(name, directory, templateFile);
    if (profile == nullptr) user.Tell(L"Profil '" + name + L"' konnte nicht angelegt werden.");
    return profile;
}

// What was chosen, in the order of the installation.
std::vector<const FirstStartTemplate*> Ordered(const FirstStartChoice& choice) {
    std::vector<const FirstStartTemplate*> ordered;
    if (choice.plain) ordered.push_back(&kPlainProfile);
    for (std::size_t i = 0; i < choice.templates.size(); ++i)
        if (choice.templates[i]) ordered.push_back(&kFirstStartTemplates[i]);
    return ordered;
}

// The first of those that were attached, or null.
Node* InstallProfiles(CTreeViewEx& tree, ActiveContainer& container, const FirstStartChoice& choice) {
    const std::vector<const FirstStartTemplate*> ordered = Ordered(choice);
    if (ordered.empty()) return nullptr;
    const std::wstring dataDirectory = WithBackslash(AppPath) + L"Daten";
    if (!MakeProfileDirectory(dataDirectory)) {
        ThePlatform().user.Tell(L"Es wurden keine Vorlagen angelegt.");
        return nullptr;
    }

    ProfileActions actions(tree, container);
    Node* first = nullptr;
    for (const FirstStartTemplate* offer : ordered) {
        const std::wstring file = offer->file;
        Node* const profile = InstallTemplate(actions, offer->name, JoinDirectory(dataDirectory, offer->name),
                                              file.empty() ? L"" : TemplateDirectory() + file);
        if (first == nullptr) first = profile;
    }
    return first;
}

}  // namespace

const std::array<FirstStartTemplate, kFirstStartTemplateCount> kFirstStartTemplates = {{
    {L"Entwicklung (Vorlagenstruktur für die Programmentwicklung)", L"Develop.nxp", L"Entwicklung"},
    {L"Office (Vorlagenstruktur für die Verwaltung von Office-Komponenten )", L"Office.nxp", L"Office"},
    {L"Medien (Vorlagenstruktur für die Verwaltung von Multimedia-Komponenten)", L"Medien.nxp", L"Medien"},
    {L"Handbuch (Vorlagenstruktur für die Erstellung von Handbüchern)", L"Handbuch.nxp", L"Handbuch"},
}};

const FirstStartTemplate kPlainProfile = {L"&Clips (ein leeres Profil für alles, was Sie kopieren)", L"",
                                          L"Clips"};

const wchar_t* const kFirstStartTitle =
    L"Vielen Dank für den Einsatz von Norvale.\r\n"
    L"Um Ihnen einen schnellen Einstieg zu ermöglichen. Können Sie jetzt eine Reihe vordefinierter "
    L"Anwender-Profile einbinden. Um ein Profil auszuwählen, wählen Sie bitte ein oder mehrerer "
    L"der unten aufgeführten Profilvorlagen an. Diese werden im Unterverzeichnis 'Daten' des "
    L"Installationsverzeichnisses angelegt. Zu einem späteren Zeitpunkt können Sie "
    L"weitere Profile über den Menüpunkt 'Datei-Neues Profil' anlegen.";
const wchar_t* const kFirstStartText =
    L"Weitere Vorlagen finden Sie im Unterverzeichnis "
    L"Templates.";

std::wstring TemplateDirectory() {
    return WithBackslash(AppPath) + L"Templates\\";
}

std::vector<std::wstring> TemplateFiles() {
    return ThePlatform().files.List(TemplateDirectory() + L"*.nxp");
}

TemplatePreview LoadTemplatePreview(CTreeViewEx& previewTree, const std::wstring& templateFile) {
    previewTree.TreeView()->Clear();
    if (!previewTree.LoadDataFromFile(templateFile)) return {};
    const Node* const profile = previewTree.BuildSubTreeFromData(nullptr);
    previewTree.ReleaseData();
    if (!IsProfileNode(profile)) return {};
    const NodeAttributes read = AttributesOf(profile);
    return {profile->Text(), read.info, read.globalFlag};
}

bool FirstStartBoxChecked() {
    return ParseInt32(ThePlatform().settings.Read(kSection, kDialogKey, L"1")).value_or(0) != 0;
}

bool IsFreshStart() {
    return FirstStartPending && Profiles().Count() == 0;
}

Node* InstallFirstStartTemplates(CTreeViewEx& tree, ActiveContainer& container,
                                 const FirstStartChoice& choice) {
    SaveOptions();
    Node* const first = InstallProfiles(tree, container, choice);
    // Last: an end on the way must not leave a program that neither has a profile nor offers one.
    ThePlatform().settings.Write(kSection, kDialogKey, choice.boxChecked ? L"1" : L"0");
    if (first == nullptr) return nullptr;
    SaveAllProfiles(tree);
    container.SetActiveContainer(first);
    container.Store();
    return first;
}
