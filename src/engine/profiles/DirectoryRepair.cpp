#include "engine/profiles/DirectoryRepair.h"

#include <algorithm>
#include <set>

#include "engine/clipboard/ClipRecords.h"
#include "engine/profiles/ClipFileNames.h"
#include "engine/profiles/FoundClips.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/ProfileAttachment.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/StructureLock.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FileBytes.h"
#include "platform/Paths.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

void WriteNewFile(const std::wstring& path, const std::vector<std::uint8_t>& bytes) {
    FilePort& files = ThePlatform().files;
    const FileOwner file(files.Open(path, FileUse::NewOnly));
    if (!file.IsSet()) throw FileErrorOf(files.LastError(), path);
    const auto written = files.Write(file.Get(), bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    if (!written) throw FileErrorOf(files.LastError(), path);
    if (*written != bytes.size()) throw RuntimeError(ErrorNumber::DiskFull);
}

class Repair {
 public:
    Repair(CTreeViewEx& tree, Node& profile)
        : tree_(tree),
          nodes_(*tree.TreeView()),
          profile_(profile),
          directory_(GetProfileDirectory(&profile)) {}

    // Throws RuntimeError when a file could not be written; nothing is changed on the disk then.
    std::vector<std::wstring> Run() {
        try {
            MendKinds();
            LiftFromClips();
            for (Node* clip : Below(IsClipNode))
                MendClip(*clip);
            if (done_.empty() && aside_.empty()) return done_;
            SetProfileChanged(&profile_);
            if (!SaveProfile(tree_, profile_)) throw RuntimeError(ErrorNumber::FileError);
        } catch (...) {
            for (const std::wstring& file : made_)
                ThePlatform().files.Remove(file);
            throw;
        }
        for (const std::wstring& file : aside_)
            PutAside(file);
        return done_;
    }
    // What is left without a node and is taken by no load.
    void PutRestsAside() {
        for (const Finding& finding : CheckDirectory(directory_).findings) {
            const Damage damage = finding.damage;
            if (damage == Damage::RestOfClip || damage == Damage::ZerosOfClip ||
                damage == Damage::ClipNumberTooHigh)
                PutAside(JoinDirectory(directory_, finding.place));
        }
    }

 private:
    std::vector<Node*> Below(bool (*isWanted)(const Node*)) {
        std::vector<Node*> found;
        TreeWalk walk(&profile_);
        for (walk.Step(); walk.InSubtree(); walk.Step())
            if (isWanted(walk.Current())) found.push_back(walk.Current());
        return found;
    }
    void Done(const Node& node, const std::wstring& what) { done_.push_back(node.FullPath() + L": " + what); }

    // What is no clip and no folder becomes a folder, with what is below it.
    void MendKinds() {
        for (Node* node :
             Below([](const Node* one) { return !IsNodeOfKind(one, kClipKind | kStructureKind); })) {
            node->SetTag(MakeStructureTag(AttributesOf(node).info));
            ShowKind(*node);
            Done(*node, L"ist jetzt ein Ordner.");
        }
    }
    void LiftFromClips() {
        for (Node* clip : Below(IsClipNode)) {
            while (Node* const child = clip->FirstChild()) {
                Done(*child, L"steht jetzt neben dem Clip.");
                tree_.CopyNode(OutsideOfClips(*clip), child, true, false, true);
                nodes_.Remove(*child);
            }
        }
    }
    static Node* OutsideOfClips(Node& clip) {
        Node* parent = clip.Parent();
        while (IsClipNode(parent))
            parent = parent->Parent();
        return parent;
    }

    void MendClip(Node& clip) {
        const NodeAttributes tag = AttributesOf(&clip);
        if (tag.clipNumber < 1 || tag.formatCount < 0)
            return Remove(clip, L"sagte nicht, welche Datei ihm gehört.");
        const std::wstring file = ClipFilePath(directory_, tag.clipNumber);
        const auto damage = DamageOfClipFile(file, tag.formatCount);
        if (damage == Damage::ClipFileUnreadable) return;
        if (damage == Damage::ClipFileMissing) return Remove(clip, L"hatte keine Datei.");
        const bool isFirst = seen_.insert(tag.clipNumber).second;
        if (damage || !isFirst || !IsTrustedClipNumber(tag.clipNumber)) GiveOwnFile(clip, tag, file, isFirst);
    }
    void Remove(Node& clip, const std::wstring& why) {
        Done(clip, L"ist aus dem Baum genommen: Der Eintrag " + why);
        nodes_.Remove(clip);
    }
    // The formats that are whole, in a file under a new number.
    void GiveOwnFile(Node& clip, NodeAttributes tag, const std::wstring& file, bool mayGo) {
        std::vector<std::uint8_t> bytes;
        std::int16_t count = 0;
        for (const ClipRecord& record : RecordsOf(file, tag.formatCount)) {
            if (DamageOfRecord(record)) continue;
            AppendRecord(bytes, record.id, record.name, DataOf(file, record));
            ++count;
        }
        if (mayGo) aside_.push_back(file);
        if (count == 0 && tag.formatCount > 0) return Remove(clip, L"hatte kein Format, das ganz ist.");
        std::wstring own;
        do {
            own = NewClipFileName(&clip, true, tag.clipNumber);
        } while (ThePlatform().files.Exists(own));
        made_.push_back(own);
        WriteNewFile(own, bytes);
        clip.SetTag(MakeClipTag(tag.clipNumber, count, tag.timeCaptured, tag.info));
        Done(clip, L"hat jetzt die Datei " + LastPartOf(own) + L" mit " + NumberText(count) + L" von " +
                       NumberText(tag.formatCount) + L" Formaten.");
    }

    // When this fails the file keeps its place, and the next check finds it again.
    static void PutAside(const std::wstring& file) {
        FilePort& files = ThePlatform().files;
        std::wstring aside = file + L".defekt";
        for (int number = 2; files.Exists(aside); ++number)
            aside = file + L".defekt" + NumberText(number);
        if (files.Copy(file, aside, false)) files.Remove(file);
    }

    CTreeViewEx& tree_;
    NodeCollection& nodes_;
    Node& profile_;
    const std::wstring directory_;
    std::set<std::int32_t> seen_;
    std::vector<std::wstring> made_;
    std::vector<std::wstring> aside_;
    std::vector<std::wstring> done_;
};

}  // namespace

std::vector<std::wstring> RepairDirectory(CTreeViewEx& tree, const std::wstring& directory) {
    if (ThePlatform().files.Exists(TreeDataFilePath(directory)) &&
        !ProfileFile::WithoutLock(directory).KeepCopy())
        return {};
    Node* const profile = AttachProfileDirectory(tree, directory);
    if (profile == nullptr || !ChangeAllowed(profile)) return {};
    std::vector<std::wstring> done;
    const bool mended = Succeeds([&] {
        Repair repair(tree, *profile);
        done = repair.Run();
        // What lost its entry above may hold something.
        OfferFoundClips(tree, *profile);
        repair.PutRestsAside();
        // What the load put right stands in memory alone until then.
        SaveProfile(tree, *profile);
    });
    FinishSaves();
    return mended ? done : std::vector<std::wstring>();
}
