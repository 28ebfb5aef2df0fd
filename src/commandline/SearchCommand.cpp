#include "commandline/SearchCommand.h"

#include <vector>

#include "commandline/OpenedProfile.h"
#include "commandline/Progress.h"
#include "engine/profiles/modProfile.h"
#include "engine/search/NodeSearch.h"
#include "engine/tree/modTreeEx.h"
#include "platform/Platform.h"
#include "platform/Text.h"

namespace {

std::wstring LineOf(const Node& node, const std::wstring& hit) {
    std::wstring line;
    if (IsClipNode(&node)) line = L"#" + NumberText(ClipNumberOf(&node)) + L" ";
    return line + node.FullPath() + (hit.empty() ? L"" : L": " + hit) + L"\n";
}

// Writes each hit as it is found.
class HitWriter : public SearchSink {
 public:
    HitWriter(const std::vector<Node*>& clips, ConsolePort& console)
        : clips_(clips), console_(console), progress_(console, L"Suchen") {}

    bool GoesOn(std::size_t clip) override {
        progress_.Show(clip, clips_.size());
        return true;
    }
    void Found(std::size_t clip, ContentHit hit) override {
        console_.Write(LineOf(*clips_[clip], hit.line.text));
        ++count_;
    }
    void Unreadable(std::size_t clip) override {
        console_.WriteError(clips_[clip]->FullPath() + L": Die Datei des Clips kann nicht gelesen werden.\n");
    }
    std::size_t Count() const { return count_; }

 private:
    const std::vector<Node*>& clips_;
    ConsolePort& console_;
    Progress progress_;
    std::size_t count_ = 0;
};

std::size_t CountHits(OpenedProfile& profile, const SearchQuery& query, Likeness likeness,
                      ConsolePort& console) {
    Platform& platform = ThePlatform();
    const SearchedTree searched =
        SearchTree(&profile.Top(), *profile.Tree().TreeView(), query, likeness, platform.clock.Now());
    for (const FoundByName& found : searched.found)
        console.Write(LineOf(*found.node, found.hit.inInfo ? found.hit.line.text : L""));
    HitWriter writer(searched.clips, console);
    ContentSearch(platform.files, searched.plan).Run(writer);
    return searched.found.size() + writer.Count();
}

}  // namespace

int RunSearch(const CommandContext& context) {
    const SearchQuery query = ParseSearchQuery(context.arguments.Values()[0]);
    if (!query.problem.empty()) throw CommandError{query.problem};
    if (query.IsEmpty()) throw CommandError{L"Es fehlt der Text."};
    OpenedProfile profile(context.arguments.Of(L"--directory", kCurrentDirectory),
                          OpenedProfile::kForReading);
    std::size_t count = CountHits(profile, query, Likeness::Marks, context.console);
    if (count == 0 && NodeSearch::MayBeTriedByLetters(query))
        count = CountHits(profile, query, Likeness::Letters, context.console);
    return count > 0 ? 0 : 1;
}
