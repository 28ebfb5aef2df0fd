#include "engine/profiles/ActiveContainer.h"

#include <optional>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";
constexpr const wchar_t* kKey = L"ActiveContainer";
// The position again, the place below the profile's node, and the profile's directory: what tells whether the
// position still names the same node, for a profile in front of it may be gone or damaged at the next start.
constexpr const wchar_t* kPlaceKey = L"ActiveContainerPlace";

struct Place {
    std::int32_t inProfile = 0;  // steps in tree order from the profile's node
    std::wstring directory;
};

std::wstring PlaceText(std::int32_t position, const Place& place) {
    return NumberText(position) + L"," + NumberText(place.inProfile) + L"," + place.directory;
}

Place PlaceOf(const Node* node) {
    const Node* const profile = GetTopNode(node);
    Place place;
    place.directory = GetProfileDirectory(profile);
    for (TreeWalk walk(profile); walk.Current() != node; walk.Step())
        ++place.inProfile;
    return place;
}

// None when it was stored for another position: by another version of this program.
std::optional<Place> StoredPlace(std::int32_t position) {
    const std::wstring text = ThePlatform().settings.Read(kSection, kPlaceKey, L"");
    const std::size_t first = text.find(L',');
    const std::size_t second = first != std::wstring::npos ? text.find(L',', first + 1) : first;
    if (second == std::wstring::npos || ParseInt32(text.substr(0, first)) != position) return std::nullopt;
    const auto inProfile = ParseInt32(text.substr(first + 1, second - first - 1));
    if (!inProfile) return std::nullopt;
    return Place{*inProfile, text.substr(second + 1)};
}

// Null when the profile is not there, or no longer that large.
Node* NodeAt(const Place& place) {
    const CProfile* const profile = Profiles().GetProfile(place.directory);
    if (profile == nullptr) return nullptr;
    TreeWalk walk(profile->Node);
    for (std::int32_t i = 0; i < place.inProfile && walk.InSubtree(); ++i)
        walk.Step();
    return walk.InSubtree() ? walk.Current() : nullptr;
}

bool MayBeActive(const Node* node) {
    return node == nullptr || IsNodeOfKind(node, kProfileKind | kStructureKind);
}

Node* Neighbour(const Node& node) {
    return node.Next() != nullptr ? node.Next() : node.Previous();
}

}  // namespace

std::wstring KindImage(const Node* node) {
    if (IsProfileNode(node)) return L"Profile";
    if (IsStructureNode(node)) return L"Structure";
    return IsClipNode(node) ? L"Clip" : L"";
}

void ActiveContainer::SetActiveContainer(Node* node) {
    if (!MayBeActive(node)) return;
    if (Get() != nullptr) Get()->SetImage(KindImage(Get()));
    node_.Follow(node);
    if (node != nullptr) node->SetImage(std::wstring(L"Camera"));
    TellListener();
}

std::wstring ActiveContainer::Title() const {
    return Get() != nullptr ? Get()->Text() : L"<Keine aktive Ablage>";
}

void ActiveContainer::TellListener() const {
    if (changed_) changed_();
}

void ActiveContainer::LeaveSubtree(const Node& node) {
    if (Get() == nullptr || !tree_.IsSubNode(Get(), &node)) return;
    Node* const heir = node.Parent() != nullptr ? node.Parent() : Neighbour(node);
    SetActiveContainer(MayBeActive(heir) ? heir : nullptr);
}

void ActiveContainer::Restore() {
    // The container of before, if any, went with the tree that was loaded anew.
    node_.Follow(nullptr);
    const auto stored = ParseInt32(ThePlatform().settings.Read(kSection, kKey, L"-1"));
    tree_.SetActiveContainer(stored.value_or(-1));
    const std::optional<Place> place = StoredPlace(tree_.ActiveContainer());
    Node* const last = place ? NodeAt(*place) : tree_.NodeAtPosition(tree_.ActiveContainer());
    const bool found = last != nullptr && MayBeActive(last);
    SetActiveContainer(found ? last : tree_.TreeView()->Root());
    if (place && !found && Get() != nullptr) {
        ThePlatform().user.Tell(
            L"Die letzte aktive Ablage ist nicht vorhanden.\r\nNeue Clips kommen in das Profil \"" + Title() +
            L"\".");
    }
}

void ActiveContainer::Store() const {
    tree_.SetActiveContainer(tree_.PositionOf(Get()));
    SettingsPort& settings = ThePlatform().settings;
    const std::int32_t position = tree_.ActiveContainer();
    settings.Write(kSection, kKey, NumberText(position));
    settings.Write(kSection, kPlaceKey, Get() != nullptr ? PlaceText(position, PlaceOf(Get())) : L"");
}
