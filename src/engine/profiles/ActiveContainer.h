#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "engine/tree/CTreeViewEx.h"
#include "engine/tree/NodeRef.h"

// Where the active container stood: the profile's directory, the steps from its node in tree order, and the
// names on the way down, joined by "\".
struct ContainerPlace {
    std::wstring directory;
    std::int32_t steps = 0;
    std::optional<std::wstring> path;  // none in what an older version stored
};

// The profile or folder that new clips go into, shown with a picture of its own. There is none only while the
// tree is empty.
class ActiveContainer {
 public:
    // The tree is not owned and must live as long.
    explicit ActiveContainer(CTreeViewEx& tree) : tree_(tree) {}
    ActiveContainer(const ActiveContainer&) = delete;
    ActiveContainer& operator=(const ActiveContainer&) = delete;

    Node* Get() const { return node_.Get(); }
    // Takes a profile, a folder or null; any other node is ignored. Changes the pictures of the old and the
    // new one and tells the listener.
    void SetActiveContainer(Node* node);
    // The same where nobody has chosen it: the container itself stands there by now.
    void MoveTo(Node* node);
    // Called after each change, and when the container got another name: title, buttons and menus follow.
    void SetListener(std::function<void()> changed) { changed_ = std::move(changed); }
    // The name of the container, for the title.
    std::wstring Title() const;
    void TellListener() const;

    // Must be called before `node` and all below it are removed: a container among them moves up to the
    // parent, from a profile to its neighbour at the root level, which is stored at once.
    void LeaveSubtree(const Node& node);

    // At the window's load, after the profiles: the container of the last run, or the first profile when
    // the stored place names no profile or folder. That the container of the last run is missing is told.
    void Restore();
    // To be called when profiles that waited at the load are there: the container of the last run is taken up
    // if it waited with them and the user has chosen none since.
    void ProfilesAnswered();
    // Keeps the container's place in the tree wrapper and in the settings store; while the one of the last
    // run waits, that stays.
    void Store() const;

 private:
    bool IsAwaited() const;

    CTreeViewEx& tree_;
    NodeRef node_;
    std::optional<ContainerPlace> awaited_;  // of the last run, in a profile that waited
    std::function<void()> changed_;
};

// A profile lies in another directory than at the end of the last run; to be called before `Restore`.
void StoredContainerMoved(const std::wstring& from, const std::wstring& to);
