#include "engine/search/NodeSearch.h"

#include <algorithm>
#include <utility>

#include "engine/profiles/modProfile.h"
#include "engine/search/TextDecoder.h"
#include "engine/tree/NodeCollection.h"
#include "engine/tree/TreeWalk.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Text.h"

namespace {

constexpr FileTime kDay = FileTime{24} * 60 * 60 * 10'000'000;

// Into memory that is used again: there are many nodes.
void Copy(const KeptText& kept, std::u16string& text) {
    text.clear();
    if (kept.IsAnsi()) {
        TextDecoder decoder(TextCoding::Ansi);
        decoder.Take(kept.Bytes(), text);
        decoder.End(text);
    } else {
        text = Utf16FromText(kept.Text());
    }
}

}  // namespace

NodeSearch::NodeSearch(const SearchQuery& query, Likeness likeness, FileTime now)
    : words_(query, likeness), needsFile_(query.NeedsFile()) {
    plan_.query = query;
    plan_.likeness = likeness;
    if (query.days) plan_.oldest = now - std::min<FileTime>(now, kDay * static_cast<FileTime>(*query.days));
}

bool NodeSearch::MayBeTriedByLetters(const SearchQuery& query) {
    return std::any_of(query.words.begin(), query.words.end(),
                       [](const SearchWord& word) { return !word.exact; });
}

NodeSearch::Outcome NodeSearch::LookAt(const Node& node) {
    if (!plan_.query.problem.empty() || plan_.query.IsEmpty()) return Outcome::FitsNot;
    const bool isClip = IsClipNode(&node);
    if (!isClip && (needsFile_ || !IsNodeOfKind(&node, kProfileKind | kStructureKind)))
        return Outcome::FitsNot;
    Copy(node.TextAsKept(), name_);
    ReadNodeAttributes(&node);
    info_ = Utf16FromText(ReadAttributes().info);
    target_.number = 0;
    target_.found = words_.FindIn(name_, words_.Anywhere() | words_.OfName());
    if ((words_.OfName() & ~target_.found) != 0) return Outcome::FitsNot;
    target_.found |= words_.FindIn(info_, words_.Anywhere() & ~target_.found);
    const bool hasFile = isClip && ReadTarget(node);
    if (target_.found == words_.All() && !needsFile_) return Outcome::Fits;
    return hasFile ? Outcome::MayFit : Outcome::FitsNot;
}

bool NodeSearch::ReadTarget(const Node& clip) {
    const NodeAttributes& attributes = ReadAttributes();
    target_.number = attributes.clipNumber;
    target_.formats = attributes.formatCount;
    if (target_.number < 1 || target_.formats < 1) {
        target_.number = 0;
        return false;
    }
    target_.directory = DirectoryOf(clip);
    if (plan_.directories[target_.directory].empty()) target_.number = 0;
    return target_.number != 0;
}

std::uint32_t NodeSearch::DirectoryOf(const Node& clip) {
    const Node* const profile = GetTopNode(&clip);
    const auto [known, isNew] =
        directories_.try_emplace(profile, static_cast<std::uint32_t>(plan_.directories.size()));
    if (isNew) plan_.directories.push_back(GetProfileDirectory(profile));
    return known->second;
}

NodeHit NodeSearch::Hit() {
    NodeHit hit;
    TextPlace place;
    if (words_.FindIn(name_, words_.Anywhere() | words_.OfName(), &place) != 0) {
        hit.line = LineAround(name_, place);
    } else if (words_.FindIn(info_, words_.Anywhere(), &place) != 0) {
        hit.inInfo = true;
        hit.line = LineAround(info_, place);
    }
    return hit;
}

SearchedTree SearchTree(Node* below, const NodeCollection& nodes, const SearchQuery& query, Likeness likeness,
                        FileTime now) {
    SearchedTree searched;
    NodeSearch search(query, likeness, now);
    TreeWalk<Node> walk(below != nullptr ? below : nodes.Root());
    if (below != nullptr) walk.Step();
    while (walk.Current() != nullptr && (below == nullptr || walk.InSubtree())) {
        Node& node = *walk.Current();
        const NodeSearch::Outcome outcome = search.LookAt(node);
        if (outcome == NodeSearch::Outcome::Fits)
            searched.found.push_back({&node, search.Hit(), search.Target()});
        if (outcome == NodeSearch::Outcome::MayFit) {
            search.Plan().clips.push_back(search.Target());
            searched.clips.push_back(&node);
        }
        walk.Step();
    }
    searched.plan = std::move(search.Plan());
    return searched;
}
