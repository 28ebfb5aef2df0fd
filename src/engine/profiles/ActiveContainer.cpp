#include "engine/profiles/ActiveContainer.h"

#include <utility>

#include "engine/profiles/CProfiles.h"
#include "engine/profiles/NodePictures.h"
#include "engine/profiles/modProfile.h"
#include "engine/tree/NodePlace.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

constexpr const wchar_t* kSection = L"Settings";
constexpr const wchar_t* kKey = L"ActiveContainer";
// The position again, the steps to the profile's node, the profile's directory and the names on the way down:
// what tells which node it was. The position alone goes wrong with every change in front of it, and a profile
// there may be missing at the next start. "12,3,C:\Daten|Briefe\Post"; no directory has a "|".
constexpr const wchar_t* kPlaceKey = L"ActiveContainerPlace";

std::wstring PlaceText(std::int32_t position, const ContainerPlace& place) {
    return NumberText(position) + L"," + NumberText(place.steps) + L"," + place.directory +
           (place.path ? L"|" + *place.path : std::wstring());
}

ContainerPlace PlaceOf(const Node& node) {
    const Node& profile = *GetTopNode(&node);
    const NodePlace place = PlaceBelow(profile, node);
    return {GetProfileDirectory(&profile), place.steps, place.path};
}

std::int32_t StoredPosition() {
    return ParseInt32(ThePlatform().settings.Read(kSection, kKey, L"-1")).value_or(-1);
}

// None when it was stored for another position: by another version of this program.
std::optional<ContainerPlace> StoredPlaceFor(std::int32_t position) {
    const std::wstring text = ThePlatform().settings.Read(kSection, kPlaceKey, L"");
    const std::size_t first = text.find(L',');
    const std::size_t second = first != std::wstring::npos ? text.find(L',', first + 1) : first;
    if (second == std::wstring::npos || ParseInt32(text.substr(0, first)) != position) return std::nullopt;
    const auto steps = ParseInt32(text.substr(first + 1, second - first - 1));
    if (!steps) return std::nullopt;
    const std::size_t bar = text.find(L'|', second);
    ContainerPlace place{text.substr(second + 1, bar - second - 1), *steps, std::nullopt};
    if (bar != std::wstring::npos) place.path = text.substr(bar + 1);
    return place;
}

// Null when the profile is not there, or no longer has such a node.
Node* NodeAt(const ContainerPlace& place) {
    const CProfile* const profile = Profiles().GetProfile(place.directory);
    if (profile == nullptr || profile->Node == nullptr) return nullptr;
    if (!place.path) return NodeBehind(*profile->Node, place.steps);
    const wchar_t kind = place.path->empty() ? L'P' : L'S';
    return NodeAtPlace(*profile->Node, {place.steps, kind, *place.path});
}

void Write(const wchar_t* key, const std::wstring& text) {
    SettingsPort& settings = ThePlatform().settings;
    const wchar_t* const absent = L"\x1";  // neither a number nor a place
    if (settings.Read(kSection, key, absent) != text) settings.Write(kSection, key, text);
}

bool MayBeActive(const Node* node) {
    return node == nullptr || IsNodeOfKind(node, kProfileKind | kStructureKind);
}

// The next usable node of the root level: a profile that waits for its drive cannot be active.
Node* NextProfile(Node* root) {
    while (root != nullptr && !IsProfileNode(root))
        root = root->Next();
    return root;
}

Node* Neighbour(const Node& node) {
    if (Node* const next = NextProfile(node.Next())) return next;
    Node* previous = node.Previous();
    while (previous != nullptr && !IsProfileNode(previous))
        previous = previous->Previous();
    return previous;
}

}  // namespace

void ActiveContainer::SetActiveContainer(Node* node) {
    if (!MayBeActive(node)) return;
    awaited_.reset();
    MoveTo(node);
}

void ActiveContainer::MoveTo(Node* node) {
    if (!MayBeActive(node)) return;
    if (Get() != nullptr) ShowKind(*Get());
    node_.Follow(node);
    if (node != nullptr) ShowAsActive(*node);
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
    MoveTo(MayBeActive(heir) ? heir : nullptr);
    // The list without it is stored at once as well: no start is to look for the container in it.
    if (node.Parent() == nullptr) Store();
}

void ActiveContainer::Restore() {
    // The container of before, if any, went with the tree that was loaded anew.
    node_.Follow(nullptr);
    tree_.SetActiveContainer(StoredPosition());
    const std::optional<ContainerPlace> place = StoredPlaceFor(tree_.ActiveContainer());
    Node* const last = place ? NodeAt(*place) : tree_.NodeAtPosition(tree_.ActiveContainer());
    const bool found = last != nullptr && MayBeActive(last);
    SetActiveContainer(found ? last : NextProfile(tree_.TreeView()->Root()));
    if (!place || found) return;
    awaited_ = place;
    if (!IsAwaited()) awaited_.reset();
    if (Get() == nullptr) return;
    ThePlatform().user.Inform(
        awaited_ ? L"Die letzte aktive Ablage antwortet nicht.\r\nBis sie da ist, kommen neue Clips in das "
                   L"Profil \"" +
                       Title() + L"\"."
                 : L"Die letzte aktive Ablage ist nicht vorhanden.\r\nNeue Clips kommen in das Profil \"" +
                       Title() + L"\".");
}

bool ActiveContainer::IsAwaited() const {
    const CProfile* const profile = awaited_ ? Profiles().GetProfile(awaited_->directory) : nullptr;
    return profile != nullptr && profile->Waiting.Get() != nullptr;
}

void ActiveContainer::ProfilesAnswered() {
    if (!IsAwaited()) {
        const std::optional<ContainerPlace> place = std::exchange(awaited_, std::nullopt);
        Node* const last = place ? NodeAt(*place) : nullptr;
        if (last != nullptr && MayBeActive(last)) {
            MoveTo(last);
            ThePlatform().user.Status(L"Neue Clips kommen wieder in \"" + Title() + L"\".");
        }
    }
    if (Get() == nullptr) MoveTo(NextProfile(tree_.TreeView()->Root()));
}

void ActiveContainer::Store() const {
    if (IsAwaited()) return;
    tree_.SetActiveContainer(tree_.PositionOf(Get()));
    const std::int32_t position = tree_.ActiveContainer();
    Write(kKey, NumberText(position));
    Write(kPlaceKey, Get() != nullptr ? PlaceText(position, PlaceOf(*Get())) : L"");
}

void StoredContainerMoved(const std::wstring& from, const std::wstring& to) {
    const std::int32_t position = StoredPosition();
    std::optional<ContainerPlace> place = StoredPlaceFor(position);
    if (!place || UpperCase(place->directory) != UpperCase(from)) return;
    place->directory = to;
    Write(kPlaceKey, PlaceText(position, *place));
}
