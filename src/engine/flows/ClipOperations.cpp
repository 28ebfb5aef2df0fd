#include "engine/flows/ClipOperations.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "engine/clipboard/modClipboard.h"
#include "engine/flows/DropRules.h"
#include "engine/flows/NewClipFile.h"
#include "engine/flows/NodeCopies.h"
#include "engine/process/modOption.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/DeletedFolder.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Busy.h"
#include "platform/FileBytes.h"
#include "platform/FlushLater.h"
#include "platform/HeldMessages.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

// The action number of the walk over what is deleted.
constexpr std::int16_t kDeleteAction = 1;

// The description of what went wrong, empty when the file is gone. It is not asked beforehand whether the
// file exists: the answer to that may be wrong when the disk is in trouble, and data would be taken for
// deleted.
std::wstring RemoveIfThere(const std::wstring& file) {
    FilePort& files = ThePlatform().files;
    if (files.Remove(file) || IsMissing(files.LastError())) return {};
    return FileErrorOf(files.LastError(), file).Description();
}

void TellProgress(std::size_t done, std::size_t count) {
    ThePlatform().user.Status(L"Dateien gelöscht: " + NumberText(static_cast<std::int64_t>(done)) + L" von " +
                              NumberText(static_cast<std::int64_t>(count)) + L" ...");
}

// What the program itself says of a clip is no reason of the user's to keep it.
bool IsKeptByUser(const Node& clip) {
    const std::wstring info = AttributesOf(&clip).info;
    return !info.empty() && !info.starts_with(kIncompleteClip);
}

bool IsAnnounced(const std::wstring& file) {
    return CompareNoCase(file, RenderFileName) == 0;
}

// What lies in the folder for what is deleted, and that folder itself, goes for good.
bool GoesForGood(const Node* node) {
    return !Options().KeepDeleted || IsDeleted(node) || IsDeletedFolder(node);
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
    const std::vector<Node*> placed = Drop(target, {&source, 1}, asChild, move);
    return placed.empty() ? nullptr : placed.front();
}

std::vector<Node*> ClipOperations::Drop(Node* target, ChosenNodes chosen, bool asChild, bool move) {
    const std::vector<Node*> sources = TopmostOf(chosen);
    if (sources.empty()) return {};
    const BusyScope operation(Busy::TreeOperation);
    for (const Node* const source : sources) {
        const bool fits = sources.size() == 1 || !IsProfileNode(source);
        if (fits && DropPermitted(tree_, source, target, asChild, move)) continue;
        ThePlatform().user.Inform(L"Ablage auf diesem Eintrag ist nicht erlaubt !!!");
        return {};
    }
    for (const Node* const source : sources)
        if (!ActionAllowed(TreeAction::DragAndDrop, source)) return {};
    if (target != nullptr && !ActionAllowed(TreeAction::DragAndDrop, target)) return {};
    const HourglassScope hourglass(ThePlatform().user);
    if (IsProfileNode(sources.front())) {
        Node* const moved = MoveProfile(target, *sources.front());
        return moved != nullptr ? std::vector{moved} : std::vector<Node*>();
    }
    if (!ChangeAllowed(target)) return {};
    for (const Node* const source : sources)
        if (move && !ChangeAllowed(source)) return {};

    const Place place{target, asChild};
    if (!move) return Copy(place, sources);
    std::vector<Node*> placed;
    for (const std::vector<Node*>& ofOne : ByProfile(sources)) {
        const bool inside = GetTopNode(target) == GetTopNode(ofOne.front());
        const std::vector<Node*> moved =
            inside ? MoveInsideProfile(place, ofOne) : MoveAcrossProfiles(place, ofOne);
        placed.insert(placed.end(), moved.begin(), moved.end());
    }
    return placed;
}

std::vector<Node*> ClipOperations::Copy(const Place& place, ChosenNodes sources) {
    Node* const profile = GetProfileNode(place.target, true);
    NodeCopies copying(tree_, copy_);
    if (profile == nullptr || !copying.Make(place.target, place.asChild, sources, false)) return {};
    return SaveProfile(tree_, *profile) ? copying.Keep() : std::vector<Node*>();
}

std::vector<Node*> ClipOperations::MoveInsideProfile(const Place& place, ChosenNodes sources) {
    Node* const profile = GetProfileNode(place.target, true);
    NodeCopies copying(tree_, copy_);
    if (profile == nullptr || !copying.Make(place.target, place.asChild, sources, true)) return {};
    const Saved saved = ReplaceInProfile(copying, sources);
    if (saved == Saved::DiskFull) TellError(DiskFullError(TreeDataFilePath(GetProfileDirectory(profile))));
    return saved == Saved::Whole ? copying.Keep() : std::vector<Node*>();
}

// The clips keep their files. The profile is saved without the sources while they still stand in the tree, so
// that a failure has nothing to put back.
ClipOperations::Saved ClipOperations::ReplaceInProfile(NodeCopies& copying, ChosenNodes sources) {
    const Saved saved = TrySaveProfile(tree_, *GetTopNode(sources.front()), sources);
    if (saved != Saved::Whole) return saved;
    const ChosenNodes copies = copying.Nodes();
    for (std::size_t i = 0; i < copies.size(); ++i)
        if (!IsDeleted(copies[i])) CarryContainerOver(*sources[i], *copies[i]);
    RemoveNodes(sources);
    return saved;
}

// A copy, and the sources go only when both profiles are on disk as they shall be: data files first, then
// the target's tree, then the source's tree, and the sources' data files last.
std::vector<Node*> ClipOperations::MoveAcrossProfiles(const Place& place, ChosenNodes sources) {
    Node* const sourceProfile = GetProfileNode(sources.front(), true);
    Node* const targetProfile = GetProfileNode(place.target, true);
    if (sourceProfile == nullptr || targetProfile == nullptr) return {};
    const std::vector<std::wstring> files = FilesBelow(sources);
    if (!MayGo(files)) return {};
    NodeCopies copying(tree_, copy_);
    if (!copying.Make(place.target, place.asChild, sources, false) || !copying.Flush() ||
        !SaveProfile(tree_, *targetProfile))
        return {};
    const bool sourceIsOff = SaveProfile(tree_, *sourceProfile, sources);
    // Only what is off the target's disk may lose its data. Should even that fail, the copies stay whole.
    if (!sourceIsOff && SaveProfile(tree_, *targetProfile, copying.Nodes())) return {};
    std::vector<Node*> moved = copying.Keep();
    if (!sourceIsOff) return {};
    for (std::size_t i = 0; i < moved.size(); ++i)
        if (!IsDeleted(moved[i])) CarryContainerOver(*sources[i], *moved[i]);
    RemoveNodes(sources);
    RemoveFiles(files);
    return moved;
}

// The order of the profiles is the order of the list; no file holds it.
Node* ClipOperations::MoveProfile(Node* target, Node& source) {
    Node* const copy = tree_.CopyNode(target, &source, false, false, true);
    if (copy == nullptr) return nullptr;
    CProfile* const entry = Profiles().ProfileOf(&source);
    if (entry != nullptr) entry->Node = copy;
    CarryContainerOver(source, *copy);
    Node* const moved = &source;
    RemoveNodes({&moved, 1});
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
    container_.MoveTo(twin.Current());
}

bool ClipOperations::Delete(Node* node) {
    return Delete(ChosenNodes{&node, 1});
}

bool ClipOperations::Delete(ChosenNodes chosen) {
    const BusyScope operation(Busy::TreeOperation);
    const std::vector<Node*> nodes = TopmostOf(chosen);
    if (nodes.size() == 1 && IsProfileNode(nodes.front())) return DeleteProfile(*nodes.front());
    for (Node* const node : nodes) {
        if (!IsNodeOfKind(node, kStructureKind | kClipKind)) {
            ThePlatform().user.Inform(L"Profile werden einzeln gelöscht.");
            return false;
        }
        if (!ActionAllowed(DeleteActionFor(*node), node)) return false;
    }
    std::deque<NodeRef> asked;
    for (Node* const node : nodes)
        asked.emplace_back(node);
    if (!AskToDelete(nodes)) return false;
    // Nobody knows what came while the question stood.
    std::vector<Node*> going;
    for (const NodeRef& node : asked)
        if (node.Get() != nullptr) going.push_back(node.Get());
    const HourglassScope hourglass(ThePlatform().user);
    deletionBegins_ = true;
    bool any = false;
    for (const std::vector<Node*>& ofOne : ByProfile(going))
        any = DeleteOfOneProfile(ofOne) || any;
    return any;
}

// True when the nodes shall go. What can be taken back is not asked for.
bool ClipOperations::AskToDelete(ChosenNodes nodes) {
    std::vector<Node*> lost;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(lost), GoesForGood);
    if (lost.empty()) return !nodes.empty();
    UserPort& user = ThePlatform().user;
    if (nodes.size() > 1) {
        const std::wstring forGood = Options().KeepDeleted ? L" endgültig" : L"";
        return user.Ask(L"Wollen Sie wirklich " + CountedText(lost) + forGood + L" löschen ?", L"Löschen",
                        true);
    }
    if (IsClipNode(lost.front()))
        return user.Ask(L"Wollen Sie wirklich den Clip löschen ?", L"Clip löschen", true);
    return user.Ask(L"Wollen Sie wirklich den Ordner, sowie alle untergeordneten Ordner und Clips löschen ?",
                    L"Ordner löschen", true);
}

bool ClipOperations::DeleteOfOneProfile(ChosenNodes nodes) {
    std::vector<Node*> lost, moving;
    std::partition_copy(nodes.begin(), nodes.end(), std::back_inserter(lost), std::back_inserter(moving),
                        GoesForGood);
    // The folder for what is deleted may be among the lost: what comes after it goes to a new one.
    const bool removed = !lost.empty() && Remove(lost);
    const bool gone = (!moving.empty() && MoveToDeleted(moving, true)) || removed;
    if (gone && std::exchange(deletionBegins_, false)) lastDeletion_.Begin();
    return gone;
}

// A move within the profile: whatever fails, they are where they were. Only a full disk has no room for it.
bool ClipOperations::MoveToDeleted(ChosenNodes nodes, bool canBeTakenBack) {
    Node* const profile = GetProfileNode(nodes.front(), true);
    if (profile == nullptr) return false;
    NodeCopies copying(tree_, copy_);
    Node* folder = DeletedFolderOf(*profile);
    const bool made = folder == nullptr;
    if (made) folder = &AddDeletedFolder(*tree_.TreeView(), *profile);
    const std::vector<SiblingRun> runs = RunsOf(nodes);
    std::vector<Node*> sources;
    for (const SiblingRun& run : runs)
        sources.insert(sources.end(), run.nodes.begin(), run.nodes.end());
    Saved saved = Saved::Failed;
    if (copying.Make(folder, true, sources, true)) {
        KeepSelectionOutOf(*folder, sources);
        saved = ReplaceInProfile(copying, sources);
    }
    if (saved == Saved::Whole) {
        const std::vector<Node*> moved = copying.Keep();
        if (canBeTakenBack && std::exchange(deletionBegins_, false)) lastDeletion_.Begin();
        auto next = moved.begin();
        for (const SiblingRun& run : runs) {
            const auto end = next + static_cast<std::ptrdiff_t>(run.nodes.size());
            if (canBeTakenBack) lastDeletion_.Add(run, {next, end});
            next = end;
        }
        return true;
    }
    copying.TakeBack();
    if (made) tree_.TreeView()->Remove(*folder);
    if (saved != Saved::DiskFull || !canBeTakenBack) return false;
    const std::vector<std::wstring> files = FilesBelow(nodes);
    return MayGo(files) && RemoveFilesFirst(nodes, files);
}

// With the last clip that is deleted in the tree the selection stays beside it.
void ClipOperations::KeepSelectionOutOf(const Node& folder, ChosenNodes going) {
    NodeCollection& nodes = *tree_.TreeView();
    Node* const selected = nodes.Selected();
    const auto goes = [&](const Node* node) {
        return std::find(going.begin(), going.end(), node) != going.end();
    };
    if (selected == nullptr || !goes(selected)) return;
    Node* next = selected->Next();
    while (next != nullptr && goes(next))
        next = next->Next();
    if (next != &folder) return;
    Node* previous = selected->Previous();
    while (previous != nullptr && goes(previous))
        previous = previous->Previous();
    nodes.Select(previous != nullptr ? previous : selected->Parent());
}

std::vector<Node*> ClipOperations::TakeBackDeletion() {
    const BusyScope operation(Busy::TreeOperation);
    const std::vector<Node*> nodes = lastDeletion_.Nodes();
    for (const Node* const node : nodes)
        if (!ActionAllowed(DeleteActionFor(*node), node)) return {};
    const HourglassScope hourglass(ThePlatform().user);
    std::vector<Node*> back;
    for (const std::vector<Node*>& ofOne : ByProfile(nodes)) {
        const std::vector<Node*> put = PutBack(*GetTopNode(ofOne.front()));
        back.insert(back.end(), put.begin(), put.end());
    }
    return back;
}

// All or nothing of one profile: what failed can be tried again.
std::vector<Node*> ClipOperations::PutBack(Node& profile) {
    NodeCopies copying(tree_, copy_);
    std::vector<Node*> sources;
    for (const LastDeletion::Run& run : lastDeletion_.Runs()) {
        std::vector<Node*> nodes;
        for (const NodeRef& node : run.nodes)
            if (node.Get() != nullptr && GetTopNode(node.Get()) == &profile) nodes.push_back(node.Get());
        if (nodes.empty()) continue;
        Node* const parent = run.parent.Get() != nullptr ? run.parent.Get() : &profile;
        Node* const before = run.before.Get();
        const bool stands = before != nullptr && before->Parent() == parent;
        if (!copying.Make(stands ? before : parent, !stands, nodes, true)) return {};
        sources.insert(sources.end(), nodes.begin(), nodes.end());
    }
    if (sources.empty()) return {};
    const Saved saved = ReplaceInProfile(copying, sources);
    if (saved == Saved::DiskFull) TellError(DiskFullError(TreeDataFilePath(GetProfileDirectory(&profile))));
    return saved == Saved::Whole ? copying.Keep() : std::vector<Node*>();
}

bool ClipOperations::EmptyDeleted(Node& profile) {
    const BusyScope operation(Busy::TreeOperation);
    const auto contents = [&] {
        std::vector<Node*> nodes;
        const Node* const folder = DeletedFolderOf(profile);
        for (Node* child = folder != nullptr ? folder->FirstChild() : nullptr; child != nullptr;
             child = child->Next())
            nodes.push_back(child);
        return nodes;
    };
    if (contents().empty() || !ChangeAllowed(&profile)) return false;
    const NodeRef asked(&profile);
    if (!ThePlatform().user.Ask(L"Wollen Sie wirklich " + CountedText(contents()) + L" endgültig löschen ?",
                                L"Gelöscht leeren", true) ||
        asked.Get() == nullptr)
        return false;
    const std::vector<Node*> going = contents();
    return !going.empty() && Remove(going);
}

bool ClipOperations::RemoveOldDeleted(int days) {
    const BusyScope operation(Busy::TreeOperation);
    const FileTime now = ThePlatform().clock.Now();
    NodeCollection& nodes = *tree_.TreeView();
    bool any = false;
    for (Node* profile = nodes.Root(); days > 0 && profile != nullptr; profile = profile->Next()) {
        const Node* const folder = DeletedFolderOf(*profile);
        if (folder == nullptr || IsEditedByOther(profile)) continue;
        std::vector<Node*> old;
        for (Node* child = folder->FirstChild(); child != nullptr; child = child->Next())
            if (DaysSinceDeletion(*child, now).value_or(0) > days) old.push_back(child);
        if (old.empty()) continue;
        const std::wstring what = CountedText(old);
        // Nobody asked for it: it is tried again at the next start.
        HeldMessages held;
        const bool gone = Remove(old);
        held.Take();
        any = gone || any;
        if (gone)
            ThePlatform().user.Status(L"Vor mehr als " + NumberText(std::int64_t{days}) +
                                      L" Tagen gelöscht, jetzt entfernt: " + what);
    }
    return any;
}

bool ClipOperations::KeepNewest(Node& container, std::int32_t most) {
    if (most <= 0 || IsDeletedFolder(&container) || IsDeleted(&container) || IsEditedByOther(&container))
        return false;
    const BusyScope operation(Busy::TreeOperation);
    std::vector<Node*> clips;
    for (Node* child = container.FirstChild(); child != nullptr; child = child->Next())
        if (ClipNumberOf(child) != 0 && !IsKeptByUser(*child) && !IsAnnounced(ClipFileOf(child)))
            clips.push_back(child);
    if (clips.size() <= static_cast<std::size_t>(most)) return false;
    std::sort(clips.begin(), clips.end(),
              [](const Node* a, const Node* b) { return ClipNumberOf(a) < ClipNumberOf(b); });
    clips.resize(clips.size() - static_cast<std::size_t>(most));
    // Nobody asked for it: it is tried again after the next capture.
    HeldMessages held;
    const bool gone = Options().KeepDeleted ? MoveToDeleted(clips, false) : Remove(clips);
    held.Take();
    return gone;
}

bool ClipOperations::DeleteProfile(Node& profile) {
    if (!ActionAllowed(TreeAction::DeleteProfile, &profile)) return false;
    const NodeRef asked(&profile);
    if (!ThePlatform().user.Ask(L"Wollen Sie wirklich das Profil unwiederruflich löschen ?",
                                L"Profil löschen", true) ||
        asked.Get() == nullptr)
        return false;

    const HourglassScope hourglass(ThePlatform().user);
    const std::wstring directory = GetProfileDirectory(&profile);
    const CProfile* const entry = Profiles().ProfileOf(&profile);
    if (entry == nullptr) {
        SetDirtyProfile(directory);  // says that the list does not know it
        return false;
    }
    Node* const only = &profile;
    const std::vector<std::wstring> clipFiles = FilesBelow({&only, 1});
    if (!MayGo(clipFiles)) return false;
    // With its tree data file the profile is gone; clips without it are only files.
    const std::wstring treeFile = TreeDataFilePath(directory);
    if (!RemoveSafeFile(treeFile)) {
        ThePlatform().user.Tell(FileErrorOf(ThePlatform().files.LastError(), treeFile).Description());
        return false;
    }
    Profiles().Remove(UpperCase(entry->Directory));
    RemoveNodes({&only, 1});
    StoreProfileList();
    RemoveFiles(clipFiles);
    return true;
}

// Deletes clips and folders of one profile. The disk is first told to forget them: should that fail, they are
// still there whole.
bool ClipOperations::Remove(ChosenNodes nodes) {
    const HourglassScope hourglass(ThePlatform().user);
    Node* const profile = GetProfileNode(nodes.front(), true);
    if (profile == nullptr) return false;
    const std::vector<std::wstring> files = FilesBelow(nodes);
    if (!MayGo(files)) return false;
    const Saved saved = TrySaveProfile(tree_, *profile, nodes);
    if (saved == Saved::DiskFull) return RemoveFilesFirst(nodes, files);
    if (saved != Saved::Whole) return false;
    RemoveNodes(nodes);
    RemoveFiles(files);
    return true;
}

// On a full disk there is no room for the journal of a save either, until something is deleted.
bool ClipOperations::RemoveFilesFirst(ChosenNodes nodes, const std::vector<std::wstring>& files) {
    Node* const profile = GetTopNode(nodes.front());
    const std::wstring full = DiskFullError(TreeDataFilePath(GetProfileDirectory(profile))).Description();
    if (files.empty()) {
        ThePlatform().user.Tell(full);
        return false;
    }
    std::deque<NodeRef> asked;
    for (Node* const node : nodes)
        asked.emplace_back(node);
    const auto isGone = [](const NodeRef& node) { return node.Get() == nullptr; };
    if (!ThePlatform().user.Ask(full +
                                    L"\r\n\r\nDas Profil kann erst gespeichert werden, wenn Platz frei ist. "
                                    L"Sollen die Clipdateien zuerst gelöscht werden ?",
                                L"Der Datenträger ist voll", true) ||
        std::any_of(asked.begin(), asked.end(), isGone))
        return false;
    RemoveNodes(nodes);
    RemoveFiles(files);
    SaveProfile(tree_, *profile);
    return true;
}

void ClipOperations::RemoveNodes(ChosenNodes nodes) {
    for (const Node* const node : nodes)
        container_.LeaveSubtree(*node);
    std::optional<BulkChangeScope> bulk;
    if (nodes.size() > 1) bulk.emplace(*tree_.TreeView());
    tree_.TreeView()->RemoveAll(nodes);
}

std::vector<std::wstring> ClipOperations::FilesBelow(ChosenNodes nodes) {
    noticedClips_.clear();
    for (Node* const node : nodes)
        tree_.ForAllNodes(node, true, kDeleteAction);
    std::set<std::int32_t> going(noticedClips_.begin(), noticedClips_.end());
    going.erase(0);
    // In a damaged profile a clip that stays may have the same file.
    std::vector<const Node*> without(nodes.begin(), nodes.end());
    std::sort(without.begin(), without.end());
    for (TreeWalk walk(GetTopNode(nodes.front())); walk.InSubtree();) {
        if (std::binary_search(without.begin(), without.end(), walk.Current())) {
            walk.StepOver();
            continue;
        }
        if (const std::int32_t number = ClipNumberOf(walk.Current()); number != 0) going.erase(number);
        walk.Step();
    }
    const std::wstring directory = GetProfileDirectory(GetTopNode(nodes.front()));
    std::vector<std::wstring> files;
    for (const std::int32_t number : noticedClips_)
        if (!directory.empty() && going.erase(number) != 0) files.push_back(ClipFilePath(directory, number));
    return files;
}

// A paste after the files are gone still gets what was put on the clipboard before. False when it would not,
// and the user wants to keep it.
bool ClipOperations::MayGo(const std::vector<std::wstring>& files) {
    if (std::none_of(files.begin(), files.end(), IsAnnounced) || RenderAllFormats()) return true;
    return ThePlatform().user.Ask(
        L"Der Clip steht auf der Zwischenablage, aber sein Inhalt konnte nicht dorthin übertragen werden. Er "
        L"lässt sich danach nicht mehr einfügen.\r\nSoll die Clipdatei trotzdem gelöscht werden ?",
        L"Clip löschen", true);
}

// A file that cannot be removed is told once, however many there are: no node leads to it any more.
void ClipOperations::RemoveFiles(const std::vector<std::wstring>& files) {
    constexpr std::size_t kBetweenWords = 100;
    std::wstring firstFailure;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (i > 0 && i % kBetweenWords == 0) TellProgress(i, files.size());
        const std::wstring failure = RemoveIfThere(files[i]);
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
