#include "engine/flows/NewClipFile.h"

#include "engine/clipboard/modFileIO.h"
#include "engine/profiles/DeletedFolder.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/FlushLater.h"
#include "platform/Guard.h"
#include "platform/Platform.h"

namespace {

// So many numbers of existing files are passed by at once; the next clip goes on from there.
constexpr int kMostTakenNumbers = 10000;

}  // namespace

NewClipFile::NewClipFile(Node& container) {
    const bool found = FindFreeNumber(container);
    if (found) handle_ = OpenClipFile(path_, true, false);
    mustGo_ = IsOpen();
    if (!path_.empty() && !IsOpen())
        ThePlatform().user.Status(L"Öffnen der Clipdatei " + path_ + L" fehlgeschlagen!!!");
}

NewClipFile::~NewClipFile() {
    CloseClipFile(handle_);
    if (mustGo_) Guarded([&] { ThePlatform().files.Remove(path_); });
}

// A file that is there already belongs to some other clip, whatever the profile's counter says: after a
// profile could not be saved its counter is behind the files. Such numbers are passed by, since creating the
// file would empty it.
bool NewClipFile::FindFreeNumber(Node& container) {
    for (int tries = 0; tries < kMostTakenNumbers; ++tries) {
        path_ = NewClipFileName(&container, true, number_);
        if (path_.empty()) return false;
        if (!ThePlatform().files.Exists(path_)) return true;
    }
    return false;
}

void NewClipFile::Close() {
    if (IsOpen()) FlushLater(path_);
    CloseClipFile(handle_);
}

Node& AddClip(NodeCollection& nodes, Node& container, const NewClipFile& file, const std::wstring& name,
              std::int16_t formatCount, const std::wstring& info) {
    ClockPort& clock = ThePlatform().clock;
    const FileTime captured = ThePlatform().files.ChangeTime(file.Path()).value_or(clock.Now());
    const std::wstring tag = MakeClipTag(file.Number(), formatCount, clock.DateText(captured), info);
    Node& node = AddInFrontOfDeleted(nodes, container, name, L"Clip");
    try {
        node.SetTag(tag);
    } catch (...) {
        nodes.Remove(node);
        throw;
    }
    return node;
}
