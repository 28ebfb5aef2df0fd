#pragma once

#include <algorithm>
#include <deque>
#include <iterator>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engine/clipboard/modClipboard.h"
#include "engine/flows/ClipOperations.h"
#include "engine/flows/ProfileActions.h"
#include "engine/process/modMain.h"
#include "engine/process/modOption.h"
#include "engine/profiles/ActiveContainer.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/DirectoryCheck.h"
#include "engine/profiles/ProfileAttachment.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/TestTree.h"
#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"
#include "fake/FakePlatform.h"
#include "fake/ProcessState.h"
#include "platform/ByteBuffer.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

// The profile of a directory that is not taken.
inline Node* LoadProfileDirectory(CTreeViewEx& tree, const std::wstring& directory) {
    ProfileFile file = ProfileFile::WithoutLock(directory);
    return LoadProfile(tree, file);
}

// A machine with a tree of profiles, in memory and on its disk, and all that works on them. A clip's data
// file says which clip it belongs to, so that a lost or confused one is noticed.
class ProfileWorld {
 public:
    ProfileWorld() {
        tree.Bind(&nodes);
        AppPath = L"C:\\PROG\\";
    }

    FakePlatform fake;
    ProcessStateScope state;
    NodeCollection nodes;
    CTreeViewEx tree;
    ActiveContainer container{tree};
    ClipOperations operations{tree, container};
    ProfileActions actions{tree, container};
    // What the user will say of profiles whose directory is gone; kept when there is nothing left.
    std::deque<MissingProfileAnswer> missingAnswers;
    int askedForMissing = 0;
    AskForMissingProfile askForMissing = [this](const std::wstring&, const std::wstring&) {
        ++askedForMissing;
        if (missingAnswers.empty()) return MissingProfileAnswer();
        const MissingProfileAnswer answer = missingAnswers.front();
        missingAnswers.pop_front();
        return answer;
    };

    // A saved profile in "C:\<name>".
    Node& AddProfile(const std::wstring& name) {
        fake.files.AddDirectory(L"C:\\" + name);
        return *actions.BuildNewprofile(name, L"C:\\" + name, L"");
    }
    Node& AddFolder(Node& parent, const std::wstring& name, const std::wstring& info = L"") {
        Node& folder = nodes.Add(&parent, NodeRelation::Child, name, std::wstring(L"Structure"));
        folder.SetTag(MakeStructureTag(info));
        SetProfileChanged(&folder);
        return folder;
    }
    Node& AddClip(Node& parent, const std::wstring& name, const std::wstring& info = L"") {
        std::int32_t number = 0;
        const std::wstring file = NewClipFileName(&parent, true, number);
        fake.files.SetBytes(file, DataOf(name));
        Node& clip = nodes.Add(&parent, NodeRelation::Child, name, std::wstring(L"Clip"));
        clip.SetTag(MakeClipTag(number, 2, L"15.11.1999 13:10:00", info));
        return clip;
    }
    // Two profiles: "P(S(c1 T(c2)) c3) Q(U(c4))", saved.
    void Fill() {
        Node& p = AddProfile(L"P");
        Node& q = AddProfile(L"Q");
        Node& s = AddFolder(p, L"S", L"Info & mehr");
        AddClip(s, L"c1");
        AddClip(AddFolder(s, L"T"), L"c2", L"a&b");
        AddClip(p, L"c3");
        AddClip(AddFolder(q, L"U"), L"c4");
        SaveAllProfiles(tree);
        FinishSaves();
        fake.user.messages.clear();
    }

    // A tree data file with these records, as some program may have written it.
    struct Record {
        const wchar_t* tag;
        const wchar_t* text;
        std::int16_t depth;
        const wchar_t* image = L"Clip";
    };
    void Write(const std::wstring& directory, const std::vector<Record>& records) {
        TreeData data;
        for (const Record& record : records) {
            TreeNodeRecord node;
            node.Tag = record.tag;
            node.Text = record.text;
            node.Depth = record.depth;
            node.Image = std::wstring(record.image);
            data.Nodes.push_back(node);
        }
        data.Count = static_cast<std::int32_t>(records.size());
        const std::vector<std::uint8_t> image = EncodeTreeData(data);
        fake.files.SetBytes(TreeDataFilePath(directory), std::string(image.begin(), image.end()));
    }

    // As if another program had taken the attached profile first.
    void GiveToOther(const Node& profile) {
        CProfile& entry = *Profiles().ProfileOf(&profile);
        entry.File = {};
        const std::wstring lock = entry.Directory + L"\\nxclip.lck";
        fake.files.SetBytes(lock, "");
        fake.files.LockByOther(lock);
        entry.File = ProfileFile(entry.Directory);
    }

    Node& Get(const std::wstring& name) { return Named(nodes, name); }
    // A clip data file of two records.
    static std::string DataOf(const std::wstring& name) {
        ByteWriter writer;
        for (const auto& [id, data] :
             {std::pair(1, AnsiFromText(name) + '\0'), std::pair(0xC0A5, std::string("data"))}) {
            writer.Int32(id);
            writer.Text(id == 1 ? L"Text" : L"Rich Text Format");
            writer.Int32(static_cast<std::int32_t>(data.size()));
            writer.Bytes(data.data(), data.size());
        }
        return {writer.Image().begin(), writer.Image().end()};
    }
    std::wstring MemoryOutline() const { return Outline(nodes); }
    // The attached profiles as they would be loaded now.
    std::wstring DiskOutline() {
        NodeCollection loaded;
        LoadFromDisk(loaded);
        return Outline(loaded);
    }
    std::wstring ListOutline() const {
        std::wstring outline;
        for (const CProfile* entry : Profiles().NewEnum())
            outline += entry->Name + L"=" + entry->Directory + L" ";
        return outline;
    }
    // The list as a start would find it.
    static std::wstring StoredList() {
        std::wstring outline;
        for (const StoredProfile& entry : ReadStoredProfiles())
            outline += entry.name + L"=" + entry.directory + L" ";
        return outline;
    }
    // What must never be, of tree and disk: clips without their data, two with the same file, a tree that
    // contradicts itself, profiles that the list does not know.
    std::vector<std::wstring> Damage() {
        std::vector<std::wstring> found;
        NoteDamage(nodes, L"tree: ", found);
        for (const std::wstring& damage : DiskDamage())
            found.push_back(damage);
        for (const Node* root = nodes.Root(); root != nullptr; root = root->Next()) {
            const CProfile* const entry = Profiles().ProfileOf(root);
            if (entry == nullptr || entry->Directory != GetProfileDirectory(root)) {
                found.push_back(L"not in the list: " + root->Text());
            }
        }
        if (Profiles().Count() != CountRoots(nodes)) found.push_back(L"list and tree differ");
        return found;
    }
    // As the program's own check finds them in the attached profiles.
    static std::vector<std::wstring> LossesOnDisk() {
        std::vector<std::wstring> found;
        for (const CProfile* entry : Profiles().NewEnum())
            std::ranges::copy(LossesIn(entry->Directory), std::back_inserter(found));
        return found;
    }
    std::vector<std::wstring> DiskDamage() {
        std::vector<std::wstring> found = LossesOnDisk();
        NodeCollection loaded;
        LoadFromDisk(loaded);
        NoteDamage(loaded, L"disk: ", found);
        return found;
    }
    // The names of the clips that the next start finds with their data, and the number of profiles.
    std::set<std::wstring> SoundClips() {
        NodeCollection loaded;
        LoadFromDisk(loaded);
        std::set<std::wstring> sound;
        for (int i = 1; i <= loaded.Count(); ++i) {
            const Node& node = *loaded.Item(i);
            if (IsClipNode(&node) && fake.files.Bytes(ClipFileOf(&node)) == DataOf(node.Text()))
                sound.insert(node.Text());
        }
        return sound;
    }
    int ProfilesOnDisk() {
        NodeCollection loaded;
        LoadFromDisk(loaded);
        return CountRoots(loaded);
    }
    // All files but those that keep the directories.
    std::set<std::wstring> Files() const {
        auto all = fake.files.AllFiles();
        std::erase_if(all, [](const std::wstring& file) { return file.ends_with(L".LCK"); });
        return {all.begin(), all.end()};
    }
    bool WasTold(const std::wstring& text) const {
        return std::any_of(fake.user.messages.begin(), fake.user.messages.end(),
                           [&](const FakeUser::Message& message) { return message.text == text; });
    }

 private:
    static void LoadFromDisk(NodeCollection& loaded) {
        CTreeViewEx other;
        other.Bind(&loaded);
        for (const CProfile* entry : Profiles().NewEnum())
            LoadProfileDirectory(other, entry->Directory);
    }
    static int CountRoots(const NodeCollection& in) {
        int count = 0;
        for (const Node* root = in.Root(); root != nullptr; root = root->Next())
            ++count;
        return count;
    }
    void NoteDamage(const NodeCollection& in, const std::wstring& where,
                    std::vector<std::wstring>& found) const {
        if (!IsConsistent(in)) found.push_back(where + L"links");
        std::set<std::wstring> seen;
        for (int i = 1; i <= in.Count(); ++i) {
            const Node& node = *in.Item(i);
            if (!IsClipNode(&node)) continue;
            const std::wstring file = ClipFileOf(&node);
            if (!seen.insert(UpperCase(file)).second) found.push_back(where + L"shared " + file);
            if (fake.files.Bytes(file) != DataOf(node.Text()))
                found.push_back(where + L"data of " + node.Text());
        }
    }
};
