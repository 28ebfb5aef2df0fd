#include "commandline/OpenedProfile.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "commandline/Arguments.h"
#include "engine/profiles/CProfiles.h"
#include "engine/profiles/ProfileAttachment.h"
#include "engine/profiles/ProfileLock.h"
#include "engine/profiles/ProfileStore.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/SafeFile.h"
#include "platform/Text.h"

namespace {

// Paths of the tree are compared by parts between "\", without regard to case.
std::wstring Comparable(std::wstring path) {
    std::replace(path.begin(), path.end(), L'/', L'\\');
    while (path.ends_with(L'\\'))
        path.pop_back();
    return UpperCase(path);
}

std::wstring WithoutFirstPart(const std::wstring& path) {
    const std::size_t end = path.find(L'\\');
    return end == std::wstring::npos ? std::wstring() : path.substr(end + 1);
}

// The number in "12", "#12" or "C12"; 0 for any other text.
std::int32_t NumberIn(const std::wstring& named) {
    const bool marked = named.starts_with(L"#") || named.starts_with(L"C") || named.starts_with(L"c");
    const std::wstring digits = named.substr(marked ? 1 : 0);
    const bool allDigits = !digits.empty() && digits.find_first_not_of(L"0123456789") == std::wstring::npos;
    return allDigits ? ParseInt32(digits).value_or(0) : 0;
}

[[noreturn]] void ThrowOpened() {
    throw CommandError{L"Das Profil ist geöffnet. Beenden Sie NXClip, oder blenden Sie das Profil dort aus."};
}

[[noreturn]] void ThrowAmbiguous(const std::wstring& named, const std::vector<Node*>& found) {
    std::wstring numbers;
    for (const Node* node : found) {
        if (!IsClipNode(node)) continue;
        numbers += (numbers.empty() ? L"" : L", ") + NumberText(ClipNumberOf(node));
    }
    throw CommandError{
        L"\"" + named + L"\" gibt es mehrmals" +
        (numbers.empty() ? std::wstring(L".") : L"; die Nummern der Clips: " + numbers + L".")};
}

}  // namespace

void ExpectProfile(const std::wstring& directory) {
    if (!ThePlatform().files.IsDirectory(directory))
        throw CommandError{L"Das Verzeichnis ist nicht da: " + directory};
    if (!SafeFileExists(TreeDataFilePath(directory)))
        throw CommandError{L"Im Verzeichnis liegt kein Profil (nxclip.nxp): " + directory};
    if (directory.find(L'&') != std::wstring::npos)
        throw CommandError{L"Der Name des Verzeichnisses darf kein & enthalten: " + directory};
}

void ExpectFree(const std::wstring& directory) {
    if (ProfileLock(directory).HeldByOther()) ThrowOpened();
}

OpenedProfile::OpenedProfile(const std::wstring& directory, bool forWriting) {
    ExpectProfile(directory);
    tree_.Bind(&nodes_);
    if (forWriting) {
        ProfileFile file(directory);
        if (file.HeldByOther()) ThrowOpened();
        top_ = LoadProfile(tree_, file);
        if (top_ != nullptr) EnterProfile(*top_, std::move(file));
    } else if (tree_.LoadDataFromFile(TreeDataFilePath(directory))) {
        top_ = tree_.BuildSubTreeFromData(nullptr);
        tree_.ReleaseData();
        if (!IsProfileNode(top_)) top_ = nullptr;
    }
    if (top_ == nullptr) throw CommandError{L"Das Profil kann nicht gelesen werden: " + directory};
    // The tag must lead to the clips that lie here, whatever the file says.
    const NodeAttributes tag = AttributesOf(top_);
    if (!forWriting) top_->SetTag(MakeProfileTag(tag.counter, directory, tag.globalFlag, tag.info));
}

OpenedProfile::~OpenedProfile() {
    Profiles().Clear();
}

std::vector<Node*> OpenedProfile::AllNamed(const std::wstring& named, Wanted wanted) const {
    const std::int32_t number = NumberIn(named);
    const std::wstring path = Comparable(named);
    std::vector<Node*> found, byNumber;
    for (TreeWalk walk(top_); walk.InSubtree(); walk.Step()) {
        Node* const node = walk.Current();
        if (wanted != Wanted::Any && IsClipNode(node) != (wanted == Wanted::Clip)) continue;
        const std::wstring full = Comparable(node->FullPath());
        if (full == path || WithoutFirstPart(full) == path) found.push_back(node);
        if (number > 0 && ClipNumberOf(node) == number) byNumber.push_back(node);
    }
    return byNumber.empty() ? found : byNumber;
}

Node& OpenedProfile::Find(const std::wstring& named, Wanted wanted) {
    std::vector<Node*> found = AllNamed(named, wanted);
    if (found.empty()) found = AllNamed(named, Wanted::Any);
    if (found.empty()) throw CommandError{L"Im Profil gibt es nicht: " + named};
    if (found.size() > 1) ThrowAmbiguous(named, found);
    return *found.front();
}
