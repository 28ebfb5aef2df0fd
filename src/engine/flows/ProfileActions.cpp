#include "engine/flows/ProfileActions.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "engine/flows/NodeProperties.h"
#include "engine/process/modOption.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileAttachment.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/WaitingProfiles.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kOtherDirectory = L"\r\nWählen Sie bitte ein anderes Verzeichnis.";

void Tell(const std::wstring& text, const std::wstring& title = {}) {
    ThePlatform().user.Tell(text, title);
}

void Inform(const std::wstring& text) {
    ThePlatform().user.Inform(text);
}

void TellNotLoaded(const std::wstring& directory) {
    Tell(L"Profilverzeichnis " + directory + L" konnte nicht geladen werden");
}

// What speaks against a directory for a profile, be it new or not.
std::wstring DirectoryRefusal(const std::wstring& directory) {
    if (Trim(directory).empty()) return L"Wählen Sie bitte ein Verzeichnis aus.";
    if (!IsFullPath(directory))
        return L"Das Verzeichnis " + directory + L" ist nicht vollständig angegeben !!!" + kOtherDirectory;
    if (directory.find(L'&') != std::wstring::npos)
        return L"Das Zeichen \"&\" ist im Verzeichnis eines Profils nicht erlaubt !!!" +
               std::wstring(kOtherDirectory);
    const CProfile* const attached = Profiles().ProfileInDirectory(directory);
    return attached != nullptr && attached->Node != nullptr ? kAlreadyAttached : L"";
}

// The highest number of the clip data files in a directory. A new profile may be made where such files lie,
// and must not write over them.
std::int32_t HighestClipFile(const std::wstring& directory) {
    std::int32_t highest = 0;
    for (const std::wstring& name : ThePlatform().files.List(JoinDirectory(directory, L"C*.nxc"))) {
        const std::wstring number = name.substr(1, name.find(L'.') - 1);
        const std::int32_t found = ParseInt32(number).value_or(0);
        if (IsTrustedClipNumber(found)) highest = std::max(highest, found);
    }
    return highest;
}

// A template brings no clip data along, so a clip in it would be an empty shell.
void RemoveClips(NodeCollection& nodes, Node& profile) {
    std::vector<Node*> clips;
    for (TreeWalk walk(&profile); walk.InSubtree(); walk.Step()) {
        if (IsClipNode(walk.Current())) clips.push_back(walk.Current());
    }
    nodes.RemoveAll(clips);
}

// What could not be saved so far is tried once more. True when nothing is left, or when the user gives it up.
bool MayForgetChanges(CTreeViewEx& tree, Node& profile) {
    CProfile& entry = *Profiles().ProfileOf(&profile);
    if (!entry.Dirty || SaveProfile(tree, profile)) {
        entry.File.Finish();
        return true;
    }
    return ThePlatform().user.Ask(
        L"Die letzten Änderungen des Profils konnten nicht gespeichert werden.\r\nSoll es trotzdem "
        L"ausgeblendet werden ?",
        L"Profil ausblenden", true);
}

// The tag has to hold the text one day with the longest counter, and in another directory.
std::wstring ProfileInfoRefusal(const std::wstring& info, const std::wstring& directory) {
    constexpr std::int32_t kLongestCounter = std::numeric_limits<std::int32_t>::max();
    constexpr std::size_t kLongDirectory = 1000;
    const std::wstring longest(std::max(directory.size(), kLongDirectory), L'x');
    return InfoRefusal(info, MakeProfileTag(kLongestCounter, longest, true, info));
}

bool CopyTemplate(const std::wstring& templateFile, const std::wstring& treeFile) {
    FilePort& files = ThePlatform().files;
    if (files.Copy(templateFile, treeFile, false)) return true;
    const std::uint32_t code = files.LastError();
    if (code == kErrorFileNotFound) {
        Tell(L"Fehler beim Kopieren der Vorlagendatei \r\n\r\n" + templateFile, L"Datei nicht gefunden");
    } else {
        Tell(FileErrorOf(code, treeFile).Description());
    }
    return false;
}

bool MakeDirectories(const std::wstring& directory) {
    FilePort& files = ThePlatform().files;
    if (files.IsDirectory(directory)) return true;
    const std::wstring above = DirectoryAbove(directory);
    const bool standsAlone = above.empty() || above == directory;
    return (standsAlone || MakeDirectories(above)) && files.MakeDirectory(directory);
}

}  // namespace

Node* ProfileActions::BuildNewprofile(const std::wstring& name, const std::wstring& directory,
                                      const std::wstring& templateFile) {
    const BusyScope operation(Busy::TreeOperation);
    const std::wstring refusal = NewProfileRefusal(name, directory);
    if (!refusal.empty()) {
        Inform(refusal);
        return nullptr;
    }
    ProfileFile file(directory);
    if (file.HeldByOther()) {
        Inform(kEditedByOther);
        return nullptr;
    }
    Node* const profile = templateFile.empty() ? BuildEmptyProfile(name, directory)
                                               : BuildFromTemplate(name, file, templateFile);
    if (profile == nullptr) return nullptr;
    RaiseClipCounter(*profile, HighestClipFile(directory));
    EnterProfile(*profile, std::move(file));
    if (container_.Get() == nullptr) container_.SetActiveContainer(profile);
    // Not left to the next save: until then a crash would leave nothing of it.
    if (SaveProfile(tree_, *profile)) {
        StoreProfileList();
        return profile;
    }
    TakeOut(*profile);
    RemoveSafeFile(TreeDataFilePath(directory));
    return nullptr;
}

Node* ProfileActions::BuildEmptyProfile(const std::wstring& name, const std::wstring& directory) {
    Node& profile =
        tree_.TreeView()->Add(nullptr, NodeRelation::Last, name, ImageValue(std::wstring(L"Profile")));
    profile.SetTag(MakeProfileTag(0, directory, false, L""));
    return &profile;
}

// The name in the template is only a suggestion; its info text and its global release are taken over.
Node* ProfileActions::BuildFromTemplate(const std::wstring& name, ProfileFile& file,
                                        const std::wstring& templateFile) {
    FilePort& files = ThePlatform().files;
    if (!files.Exists(templateFile)) {
        Tell(L"Vorlage " + templateFile + L" nicht verfügbar !!!");
        return nullptr;
    }
    if (!CopyTemplate(templateFile, file.Path())) return nullptr;
    Node* const profile = LoadProfile(tree_, file);
    if (profile == nullptr) {
        TellNotLoaded(file.Directory());
        RemoveSafeFile(file.Path());
        return nullptr;
    }
    RemoveClips(*tree_.TreeView(), *profile);
    profile->SetText(name);
    return profile;
}

Node* ProfileActions::ImportProfileDirect(const std::wstring& directory) {
    const BusyScope operation(Busy::TreeOperation);
    const std::wstring refusal = DirectoryRefusal(directory);
    if (!refusal.empty()) {
        Inform(refusal);
        return nullptr;
    }
    Node* const profile = AttachProfileDirectory(tree_, directory);
    if (profile == nullptr) {
        TellNotLoaded(directory);
        return nullptr;
    }
    StoreProfileList();
    if (container_.Get() == nullptr) container_.SetActiveContainer(profile);
    return profile;
}

void ProfileActions::TakeOut(Node& profile) {
    const CProfile* const entry = Profiles().ProfileOf(&profile);
    // While something was asked, everything may have come to its end.
    if (entry == nullptr) return;
    Profiles().Remove(entry->Directory);
    container_.LeaveSubtree(profile);
    tree_.TreeView()->Remove(profile);
}

bool ProfileActions::UnlinkProfile(Node* profile) {
    if ((!IsProfileNode(profile) && WaitingAs(profile) == nullptr) ||
        !ActionAllowed(TreeAction::UnlinkProfile, profile))
        return false;
    const BusyScope operation(Busy::TreeOperation);
    const NodeRef asked(profile);
    if (!ThePlatform().user.Ask(L"Wollen Sie wirklich das Profil ausblenden (nicht löschen) ?",
                                L"Profil ausblenden", true) ||
        asked.Get() == nullptr) {
        return false;
    }
    if (const CProfile* const waiting = WaitingAs(profile)) {
        Profiles().Remove(waiting->Directory);
        tree_.TreeView()->Remove(*profile);
        StoreProfileList();
        return true;
    }
    // Below another profile, in a damaged file, stands none of the list, whatever directory it names.
    if (Profiles().ProfileOf(profile) == nullptr) {
        Tell(L"Fataler Fehler (UnlinkProfile)\r\n" + GetProfileDirectory(profile) +
             L" nicht in der Profilliste gefunden !!!");
        return false;
    }
    if (!MayForgetChanges(tree_, *profile)) return false;
    TakeOut(*profile);
    StoreProfileList();
    return true;
}

std::wstring NewProfileRefusal(const std::wstring& name, const std::wstring& directory) {
    const std::wstring nameRefusal = NameRefusal(name);
    if (!nameRefusal.empty()) return nameRefusal;
    const std::wstring directoryRefusal = DirectoryRefusal(directory);
    if (!directoryRefusal.empty()) return directoryRefusal;
    if (ThePlatform().files.Exists(TreeDataFilePath(directory)))
        return L"Im angewählten Verzeichnis ist bereits ein Profil hinterlegt !!!" +
               std::wstring(kOtherDirectory);
    return {};
}

bool ConfirmNewProfile(const std::wstring& name, const std::wstring& directory, const std::wstring& info) {
    std::wstring refusal = NewProfileRefusal(name, directory);
    if (refusal.empty()) refusal = ProfileInfoRefusal(info, directory);
    if (!refusal.empty()) {
        Inform(refusal);
        return false;
    }
    if (ThePlatform().files.IsDirectory(directory)) return true;
    return ThePlatform().user.Ask(MissingDirectoryQuestion(directory), kMissingDirectoryTitle, false) &&
           MakeProfileDirectory(directory);
}

std::wstring MissingDirectoryQuestion(const std::wstring& directory) {
    return L"Das Verzeichnis \r\n\r\n" + directory +
           L"\r\n\r\nexistiert nicht.\r\nSoll ein neues Verzeichnis angelegt werden ?";
}

bool MakeProfileDirectory(const std::wstring& directory) {
    if (MakeDirectories(WithoutBackslash(directory))) return true;
    Tell(FileErrorOf(ThePlatform().files.LastError(), directory).Description(), L"Verzeichnisfehler");
    return false;
}

ProfileProperties ReadProfileProperties(const Node& profile) {
    const NodeAttributes read = AttributesOf(&profile);
    const NodeCounts counts = CountBelow(profile);
    const bool locked = LockBlocks(TreeAction::EditProfile, &profile, Options().LockEdit);
    return {.name = profile.Text(),
            .directory = read.directory,
            .info = read.info,
            .globalFree = read.globalFlag,
            .locked = locked,
            .folders = counts.folders,
            .clips = counts.clips};
}

bool ApplyProfileProperties(CTreeViewEx& tree, Node& profile, const ProfileProperties& properties) {
    const BusyScope operation(Busy::TreeOperation);
    if (!ChangeAllowed(&profile)) return false;
    const NodeAttributes read = AttributesOf(&profile);
    const std::wstring tag =
        MakeProfileTag(read.counter, read.directory, properties.globalFree, properties.info);
    const std::wstring nameRefusal = NameRefusal(properties.name);
    // A text that is too long by now is no reason to refuse another name.
    const bool newInfo = properties.info != read.info;
    const std::wstring infoRefusal =
        newInfo ? ProfileInfoRefusal(properties.info, read.directory) : InfoRefusal(properties.info, tag);
    const std::wstring refusal = nameRefusal.empty() ? infoRefusal : nameRefusal;
    if (!refusal.empty()) {
        Inform(refusal);
        return false;
    }
    profile.SetTag(tag);
    return RenameNode(tree, profile, properties.name);
}
