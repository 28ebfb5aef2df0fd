#include "engine/flows/NodeCopies.h"

#include <algorithm>
#include <utility>

#include "engine/profiles/DeletedFolder.h"
#include "platform/FlushLater.h"
#include "platform/Platform.h"
#include "platform/RuntimeError.h"

namespace {

// A place as the user reads it.
std::wstring PlaceText(const Node& node) {
    return node.Parent() != nullptr ? node.Parent()->FullPath() : std::wstring();
}

}  // namespace

NodeCopies::NodeCopies(CTreeViewEx& tree, NodeCopies*& current) : tree_(tree), current_(current) {
    current_ = this;
}

NodeCopies::~NodeCopies() {
    current_ = nullptr;
    ErrorIn([this] { TakeBack(); });
}

bool NodeCopies::Make(Node* target, bool asChild, ChosenNodes sources, bool isMove) {
    // The folder for what is deleted stays the last one.
    Node* const last = asChild && target != nullptr ? target->LastChild() : nullptr;
    if (IsDeletedFolder(last) && std::find(sources.begin(), sources.end(), last) == sources.end()) {
        target = last;
        asChild = false;
    }
    bool whole = true;
    {
        // Ends before the profile is saved: what is sorted stands in order then.
        const BulkChangeScope bulk(*tree_.TreeView());
        const FileTime now = ThePlatform().clock.Now();
        for (Node* const source : sources) {
            Node* const copy = tree_.CopyNode(target, source, asChild, false, isMove);
            if (copy != nullptr) copies_.push_back(copy);
            whole = copy != nullptr && !failure_;
            if (!whole) break;
            NoteWhereItStands(*copy, PlaceText(*source), now);
        }
    }
    if (failure_) {
        TakeBack();
        ThePlatform().user.Tell(failure_->text, failure_->title);
    }
    return whole;
}

bool NodeCopies::Flush() {
    FilePort& files = ThePlatform().files;
    for (const std::wstring& file : files_) {
        if (files.FlushClosed(file, WhenHeld::Wait)) continue;
        TellError(FileErrorOf(files.LastError(), file));
        return false;
    }
    return true;
}

std::vector<Node*> NodeCopies::Keep() {
    files_.clear();
    return std::exchange(copies_, {});
}

void NodeCopies::TakeBack() {
    const std::vector<Node*> copies = std::exchange(copies_, {});
    tree_.TreeView()->RemoveAll(copies);
    for (const std::wstring& file : std::exchange(files_, {}))
        ThePlatform().files.Remove(file);
}

void NodeCopies::Add(const std::wstring& file) {
    files_.push_back(file);
    FlushLater(file);
}
