#include "engine/flows/ClipOperations.h"

#include <algorithm>
#include <set>
#include <utility>

#include "engine/clipboard/modClipboard.h"
#include "engine/flows/DropRules.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/FileBytes.h"
#include "platform/FlushLater.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

// For a walk over what is deleted.
constexpr std::int16_t kDeleteAction = 1;

// The description of what went wrong, empty when the file is gone. It is not asked beforehand whether the
// file exists: the answer to that may be wrong when the disk is in trouble, and data would be taken for
// deleted.
std::wstring RemoveIfThere(const std::wstring& file) {
    FilePort& files = ThePlatform().files;
    if (files.Remove(file) || IsMissing(files.LastError())) return {};
    return FileErrorOf(files.LastError(), file).Description();
}

// True when the node shall go and is still there: nobody knows what came while the question stood.
bool AskToDelete(Node& node, const wchar_t* question, const wchar_t* title) {
    const NodeRef asked(&node);
    return ThePlatform().user.Ask(question, title, true) && asked.Get() != nullptr;
}

}  // namespace

ClipOperations::ClipOperations(CTreeViewEx& tree, ActiveContainer& container)
    : tree_(tree), container_(container) {
    tree_.SetEvents(this);
}

ClipOperations::~ClipOperations() {
    tree_.SetEvents(nullptr);
}

Node* ClipOperations::Drop(Node* target, Node* source, bool asChild, bool move) {
    if (source == nullptr) return nullptr;
    const BusyScope operation(Busy::TreeOperation);
    if (!DropPermitted(tree_, source, target, asChild, move)) {
        ThePlatform().user.Inform(L"Ablage auf diesem Eintrag ist nicht erlaubt !!!");
        return nullptr;
    }
    if (!ActionAllowed(TreeAction::DragAndDrop, source)) return nullptr;
    if (target != nullptr && !ActionAllowed(TreeAction::DragAndDrop, target)) return nullptr;
    const bool changesOrderOnly = IsProfileNode(source);
    if (!changesOrderOnly && !(ChangeAllowed(target) && (!move || ChangeAllowed(source)))) return nullptr;

    const HourglassScope hourglass(ThePlatform().user);
    if (IsProfileNode(source)) return MoveProfile(target, *source);
    if (!move) return Copy(target, *source, asChild);
    const bool inside = GetTopNode(target) == GetTopNode(source);
    return inside ? MoveInsideProfile(target, *source, asChild)
                  : MoveAcrossProfiles(target, *source, asChild);
}

// Nodes that are copied, with the clips' data files. Taken back in the end unless it was kept.
class ClipOperations::CopyUnderWay {
 public:
    explicit CopyUnderWay(ClipOperations& operations) : operations_(operations) { operations_.copy_ = this; }
    ~CopyUnderWay() {
        operations_.copy_ = nullptr;
        ErrorIn([this] { TakeBack(); });
    }
    CopyUnderWay(const CopyUnderWay&) = delete;
    CopyUnderWay& operator=(const CopyUnderWay&) = delete;

    // Copies the nodes and, by way of the tree's events, the files, and saves the target's profile. Where the
    // source is to go afterwards, its data is on the disk a second time before that; otherwise the copies are
    // flushed when nobody waits. Null after a failure, which has been told.
    Node* Make(Node* target, Node& source, bool asChild, bool sourceGoes) {
        Node* const profile = GetProfileNode(target, true);
        if (profile == nullptr) return nullptr;
        copy_ = operations_.tree_.CopyNode(target, &source, asChild, false, false);
        if (failure_) {
            TakeBack();
            ThePlatform().user.Tell(failure_->text, failure_->title);
            return nullptr;
        }
        if (copy_ == nullptr || (sourceGoes && !Flush())) return nullptr;
        return SaveProfile(operations_.tree_, *profile) ? copy_ : nullptr;
    }
    void Keep() {
        copy_ = nullptr;
        files_.clear();
    }

    // One clip that could not be copied ends the whole copy.
    bool HasFailed() const { return failure_.has_value(); }
    void Fail(std::wstring text, std::wstring title) { failure_ = {std::move(text), std::move(title)}; }
    void Add(const std::wstring& file) {
        files_.push_back(file);
        FlushLater(file);
    }

 private:
    struct Failure {
        std::wstring text;
        std::wstring title;
    };

    bool Flush() {
        FilePort& files = ThePlatform().files;
        for (const std::wstring& file : files_) {
            if (files.FlushClosed(file, WhenHeld::Wait)) continue;
            TellError(FileErrorOf(files.LastError(), file));
            return false;
        }
        return true;
    }
    void TakeBack() {
        if (Node* const copy = std::exchange(copy_, nullptr)) operations_.tree_.TreeView()->Remove(*copy);
        for (const std::wstring& file : std::exchange(files_, {}))
            ThePlatform().files.Remove(file);
    }

    ClipOperations& operations_;
    Node* copy_ = nullptr;
    std::vector<std::wstring> files_;
    std::optional<Failure> failure_;  // told when what was made has been taken back
};

Node* ClipOperations::Copy(Node* target, Node& source, bool asChild) {
    CopyUnderWay copying(*this);
    Node* const copy = copying.Make(target, source, asChild, false);
    if (copy != nullptr) copying.Keep();
    return copy;
}

// The clips keep their files. The profile is saved without the source while that still stands in the tree, so
// that a failure has nothing to put back.
Node* ClipOperations::MoveInsideProfile(Node* target, Node& source, bool asChild) {
    Node* const profile = GetProfileNode(target, true);
    if (profile == nullptr) return nullptr;
    Node* const copy = tree_.CopyNode(target, &source, asChild, false, true);
    if (copy == nullptr) return nullptr;
    if (!SaveProfile(tree_, *profile, &source)) {
        tree_.TreeView()->Remove(*copy);
        return nullptr;
    }
    CarryContainerOver(source, *copy);
    RemoveNode(source);
    return copy;
}

// A copy, and the source goes only when both profiles are on disk as they shall be: data files first, then
// the target's tree, then the source's tree, and the source's data files last.
Node* ClipOperations::MoveAcrossProfiles(Node* target, Node& source, bool asChild) {
    Node* const sourceProfile = GetProfileNode(&source, true);
    if (sourceProfile == nullptr) return nullptr;
    const std::vector<std::wstring> files = FilesBelow(source);
    if (!MayGo(files)) return nullptr;
    CopyUnderWay copying(*this);
    Node* const copy = copying.Make(target, source, asChild, true);
    if (copy == nullptr) return nullptr;
    const bool sourceIsOff = SaveProfile(tree_, *sourceProfile, &source);
    // Only what is off the target's disk may lose its data. Should even that fail, the copy stays whole.
    if (sourceIsOff || !SaveProfile(tree_, *GetProfileNode(copy, true), copy)) copying.Keep();
    if (!sourceIsOff) return nullptr;
    CarryContainerOver(source, *copy);
    RemoveNode(source);
    RemoveFiles(files);
    return copy;
}

// The order of the profiles is the order of the list; no file holds it.
Node* ClipOperations::MoveProfile(Node* target, Node& source) {
    Node* const copy = tree_.CopyNode(target, &source, false, false, true);
    if (copy == nullptr) return nullptr;
    CProfile* const entry = Profiles().ProfileOf(&source);
    if (entry != nullptr) entry->Node = copy;
    CarryContainerOver(source, *copy);
    RemoveNode(source);
    Profiles().OrderAsInTree(*tree_.TreeView());
    StoreProfileList();
    return copy;
}

void ClipOperations::CarryContainerOver(const Node& source, Node& copy) {
    // Both have the same shape, so that the container's twin stands as many steps behind the copy.
    const Node* original = container_.Get();
    if (original == nullptr || !tree_.IsSubNode(original, &source)) return;
    TreeWalk twin(&copy);
    TreeWalk walk(&source);
    for (; walk.Current() != original; walk.Step())
        twin.Step();
    container_.SetActiveContainer(twin.Current());
}

bool ClipOperations::Delete(Node* node) {
    const BusyScope operation(Busy::TreeOperation);
    if (IsProfileNode(node)) return DeleteProfile(*node);
    if (IsStructureNode(node)) return DeleteFolder(*node);
    return IsClipNode(node) && DeleteClip(*node);
}

bool ClipOperations::DeleteClip(Node& clip) {
    return ActionAllowed(TreeAction::DeleteClip, &clip) &&
           AskToDelete(clip, L"Wollen Sie wirklich den Clip löschen ?", L"Clip löschen") && Remove(clip);
}

bool ClipOperations::DeleteFolder(Node& folder) {
    return ActionAllowed(TreeAction::DeleteFolder, &folder) &&
           AskToDelete(
               folder,
               L"Wollen Sie wirklich den Ordner, sowie alle untergeordneten Ordner und Clips löschen ?",
               L"Ordner löschen") &&
           Remove(folder);
}

bool ClipOperations::DeleteProfile(Node& profile) {
    if (!ActionAllowed(TreeAction::DeleteProfile, &profile)) return false;
    if (!AskToDelete(profile, L"Wollen Sie wirklich das Profil unwiederruflich löschen ?", L"Profil löschen"))
        return false;

    const HourglassScope hourglass(ThePlatform().user);
    const std::wstring directory = GetProfileDirectory(&profile);
    const CProfile* const entry = Profiles().ProfileOf(&profile);
    if (entry == nullptr) {
        SetDirtyProfile(directory);  // says that the list does not know it
        return false;
    }
    const std::vector<std::wstring> clipFiles = FilesBelow(profile);
    if (!MayGo(clipFiles)) return false;
    // With its tree data file the profile is gone; clips without it are only files.
    const std::wstring treeFile = TreeDataFilePath(directory);
    if (!RemoveSafeFile(treeFile)) {
        ThePlatform().user.Tell(FileErrorOf(ThePlatform().files.LastError(), treeFile).Description());
        return false;
    }
    Profiles().Remove(UpperCase(entry->Directory));
    StoreProfileList();
    RemoveNode(profile);
    RemoveFiles(clipFiles);
    return true;
}

// Deletes a clip or folder. The disk is first told to forget it: should that fail, it is still there whole.
bool ClipOperations::Remove(Node& node) {
    const HourglassScope hourglass(ThePlatform().user);
    Node* const profile = GetProfileNode(&node, true);
    if (profile == nullptr) return false;
    const std::vector<std::wstring> files = FilesBelow(node);
    if (!MayGo(files)) return false;
    const CTreeViewEx::Saved saved = TrySaveProfile(tree_, *profile, &node);
    if (saved == CTreeViewEx::Saved::DiskFull) return RemoveFilesFirst(node, files);
    if (saved != CTreeViewEx::Saved::Whole) return false;
    RemoveNode(node);
    RemoveFiles(files);
    return true;
}

// On a full disk there is no room for the journal of a save either, until something is deleted.
bool ClipOperations::RemoveFilesFirst(Node& node, const std::vector<std::wstring>& files) {
    Node* const profile = GetTopNode(&node);
    const std::wstring full = DiskFullError(TreeDataFilePath(GetProfileDirectory(profile))).Description();
    if (files.empty()) {
        ThePlatform().user.Tell(full);
        return false;
    }
    const NodeRef going(&node);
    if (!ThePlatform().user.Ask(full +
                                    L"\r\n\r\nDas Profil kann erst gespeichert werden, wenn Platz frei ist. "
                                    L"Sollen die Clipdateien zuerst gelöscht werden ?",
                                L"Der Datenträger ist voll", true) ||
        going.Get() == nullptr)
        return false;
    RemoveNode(node);
    RemoveFiles(files);
    SaveProfile(tree_, *profile);
    return true;
}

void ClipOperations::RemoveNode(Node& node) {
    container_.LeaveSubtree(node);
    tree_.TreeView()->Remove(node);
}

std::vector<std::wstring> ClipOperations::FilesBelow(Node& node) {
    noticedClips_.clear();
    tree_.ForAllNodes(&node, true, kDeleteAction);
    std::set<std::int32_t> going(noticedClips_.begin(), noticedClips_.end());
    going.erase(0);
    // In a damaged profile a clip that stays may have the same file.
    for (TreeWalk walk(GetTopNode(&node)); walk.InSubtree();) {
        if (walk.Current() == &node) {
            walk.StepOver();
            continue;
        }
        if (const std::int32_t number = ClipNumberOf(walk.Current()); number != 0) going.erase(number);
        walk.Step();
    }
    const std::wstring directory = GetProfileDirectory(GetTopNode(&node));
    std::vector<std::wstring> files;
    for (const std::int32_t number : noticedClips_)
        if (!directory.empty() && going.erase(number) != 0) files.push_back(ClipFilePath(directory, number));
    return files;
}

// A paste after the files are gone still gets what was put on the clipboard before. False when it would not,
// and the user wants to keep it.
bool ClipOperations::MayGo(const std::vector<std::wstring>& files) {
    const auto isAnnounced = [](const std::wstring& file) {
        return CompareNoCase(file, RenderFileName) == 0;
    };
    if (std::none_of(files.begin(), files.end(), isAnnounced) || RenderAllFormats()) return true;
    return ThePlatform().user.Ask(
        L"Der Clip steht auf der Zwischenablage, aber sein Inhalt konnte nicht dorthin übertragen werden. Er "
        L"lässt sich danach nicht mehr einfügen.\r\nSoll die Clipdatei trotzdem gelöscht werden ?",
        L"Clip löschen", true);
}

// A file that cannot be removed is told once, however many there are: no node leads to it any more.
void ClipOperations::RemoveFiles(const std::vector<std::wstring>& files) {
    std::wstring firstFailure;
    for (const std::wstring& file : files) {
        const std::wstring failure = RemoveIfThere(file);
        if (firstFailure.empty()) firstFailure = failure;
    }
    if (!firstFailure.empty()) ThePlatform().user.Tell(firstFailure);
}

void ClipOperations::BeforeNodeCopy(Node* /*newParent*/, Node& /*sourceNode*/, bool /*isMove*/,
                                    bool& cancel) {
    cTV_BeforeNodeCopy(cancel);
}

void ClipOperations::AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove) {
    cTV_AfterNodeCopy(newNode, sourceNode, isMove);
}

void ClipOperations::DoAction(std::int16_t action, Node& node, bool& /*cancel*/) {
    cTV_DoAction(action, node);
}

void ClipOperations::cTV_BeforeNodeCopy(bool& cancel) {
    cancel = cancel || (copy_ != nullptr && copy_->HasFailed());
}

void ClipOperations::cTV_AfterNodeCopy(Node& newNode, Node& sourceNode, bool isMove) {
    // The source may show the picture of the active container.
    ShowKind(newNode);
    if (isMove) {
        // The tree copies neither, and what was moved is still the same folder.
        newNode.SetSorted(sourceNode.Sorted());
        newNode.SetExpandedImage(sourceNode.ExpandedImage());
    }
    if (isMove || copy_ == nullptr || !IsClipNode(&sourceNode)) return;

    const std::wstring from = ClipFileOf(&sourceNode);
    const std::wstring failure =
        L"Fehler beim Kopieren der Datei " + (from.empty() ? sourceNode.Text() : from);
    const auto error = ErrorIn([&] {
        if (from.empty()) throw RuntimeError(ErrorNumber::FileNotFound);
        CopyClipData(newNode, sourceNode, from);
    });
    if (!error) return;
    if (error->Number() == static_cast<int>(ErrorNumber::FileNotFound))
        copy_->Fail(failure, L"Datei nicht gefunden");
    else
        copy_->Fail(failure + L"\r\n" + error->Description(), L"Fataler Fehler in AfterNodeCopy");
}

// Gives the copy of a clip a data file of its own, under the next number of the profile it stands in.
void ClipOperations::CopyClipData(Node& newNode, const Node& sourceNode, const std::wstring& from) {
    FilePort& files = ThePlatform().files;
    std::int32_t number = 0;
    std::wstring to;
    // A file that no node leads to, left by a crash perhaps, is not overwritten.
    do {
        to = NewClipFileName(&newNode, true, number);
        if (to.empty()) throw RuntimeError(ErrorNumber::ObjectMissing);
    } while (files.Exists(to));
    if (!files.Copy(from, to, false)) {
        const std::uint32_t error = files.LastError();
        const bool readable = FileOwner(files.Open(from, FileUse::Read)).IsSet();
        throw FileErrorOf(error, readable ? to : from);
    }
    copy_->Add(to);

    const NodeAttributes read = AttributesOf(&sourceNode);
    newNode.SetTag(MakeClipTag(number, read.formatCount, read.timeCaptured, read.info));
}

// While it is deleted: notes a clip, whose number names its data file. The files themselves go when the
// profile has been saved without their nodes, so that no failure leaves a node without its data.
void ClipOperations::cTV_DoAction(std::int16_t action, Node& node) {
    if (action == kDeleteAction) noticedClips_.push_back(ClipNumberOf(&node));
}
