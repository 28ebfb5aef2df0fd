#include "engine/views/HitList.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engine/profiles/modProfile.h"
#include "engine/views/FormatTexts.h"
#include "platform/Text.h"

namespace {

// A time as it is shown, "15.11.1999 13:10:00", as a number that grows with it; 0 for what is none.
std::int64_t MomentOf(const std::wstring& text) {
    std::array<std::int64_t, 6> parts{};  // day, month, year, hour, minute, second
    std::size_t part = 0;
    for (const wchar_t letter : text) {
        const bool digit = letter >= L'0' && letter <= L'9';
        if (digit && parts[part] < 10'000) parts[part] = parts[part] * 10 + (letter - L'0');
        if (!digit && ++part == parts.size()) return 0;
    }
    if (part + 1 != parts.size()) return 0;
    std::int64_t moment = 0;
    for (const std::size_t place : {2, 1, 0, 3, 4, 5})
        moment = moment * 100 + parts[place];
    return moment;
}

bool HasAll(WordSet words, WordSet of) {
    return (of & ~words) == 0;
}

// Enough to fill every window; to check thousands would hold up the keys.
constexpr int kMostChecks = 1000;

}  // namespace

void HitList::Search(Node* below, const std::wstring& text) {
    SearchQuery query = ParseSearchQuery(text);
    const bool narrows = query.Narrows(query_);
    // What could not be read was perhaps held for a moment.
    if (unreadable_ > 0 || !narrows) ForgetMisfits();
    active_ = true;
    everywhere_ = below == nullptr;
    below_.Follow(below);
    query_ = std::move(query);
    likeness_ = Likeness::Marks;
    if (narrows && query_.IsOfPlainWords())
        AgeHits();
    else
        hits_.clear();
    LookAgain();
    narrower_.reset();
    std::erase_if(hits_, [](const auto& hit) { return hit.second.ofOlderQuery; });
}

void HitList::AgeHits() {
    for (auto& [file, hit] : hits_)
        hit.ofOlderQuery = true;
    narrower_.emplace(query_, likeness_);
    checksLeft_ = kMostChecks;
}

// A line that does not show it says nothing: the file is read again.
bool HitList::StillFits(Hit& hit, WordSet spared) {
    if (!hit.ofOlderQuery) return HasAll(spared, hit.spared);
    if (checksLeft_ == 0) return false;
    --checksLeft_;
    if (!ShowsAll(hit.content.line, *narrower_, narrower_->Anywhere() & ~spared)) return false;
    hit.spared = spared;
    hit.ofOlderQuery = false;
    return true;
}

void HitList::ForgetMisfits() {
    misfits_.clear();
    silent_.clear();
    unreadable_ = unreadableBefore_ = 0;
}

void HitList::End() {
    active_ = false;
    below_.Follow(nullptr);
    query_ = {};
    order_ = {};
    rows_ = {};
    shown_ = {};
    plan_ = std::make_shared<SearchPlan>();
    planned_ = {};
    namedRows_ = {};
    hits_ = {};
    misfits_ = {};
    silent_ = {};
    contents_ = readNow_ = unreadable_ = unreadableBefore_ = 0;
}

void HitList::LookAgain() {
    nodesThen_ = nodes_.Count();
    outdated_ = false;
    rows_.clear();
    shown_.clear();
    planned_.clear();
    namedRows_.clear();
    readNow_ = 0;
    unreadableBefore_ = unreadable_;
    SearchedTree searched;
    // Nothing lies below a node that is gone.
    if (everywhere_ || below_.Get() != nullptr)
        searched = SearchTree(below_.Get(), nodes_, query_, likeness_, clock_.Now());
    SearchPlan plan = std::move(searched.plan);
    const std::vector<ClipTarget> clips = std::exchange(plan.clips, {});
    for (FoundByName& one : searched.found)
        AddRowByName(plan, one);
    std::ranges::sort(misfits_, {}, &Misfit::file);
    for (std::size_t i = 0; i < clips.size(); ++i)
        PlanOrAddRow(plan, clips[i], *searched.clips[i]);
    contents_ = plan.clips.size();
    PlanSizes(plan, searched.found);
    plan_ = std::make_shared<SearchPlan>(std::move(plan));
    PutInOrder();
}

HitList::FileKey HitList::KeyOf(const SearchPlan& plan, const ClipTarget& clip) {
    const std::wstring& directory = plan.directories[clip.directory];
    const auto known = directories_.try_emplace(directory, static_cast<std::uint32_t>(directories_.size()));
    return FileKey{known.first->second} << 32 | static_cast<std::uint32_t>(clip.number);
}

void HitList::AddRowByName(const SearchPlan& plan, FoundByName& found) {
    Row row;
    row.treeIndex = found.node->Index();
    row.line = std::move(found.hit.line);
    if (found.clip.number != 0) {
        row.file = KeyOf(plan, found.clip);
        if (const auto read = hits_.find(row.file); read != hits_.end())
            row.size = read->second.content.fileSize;
    }
    rows_.push_back(std::move(row));
    ShowLast();
}

// A clip whose contents are known already is a row or none; of the others the plan is made.
void HitList::PlanOrAddRow(SearchPlan& plan, const ClipTarget& clip, const Node& node) {
    const FileKey key = KeyOf(plan, clip);
    const auto hit = hits_.find(key);
    if (hit != hits_.end() && StillFits(hit->second, clip.found)) {
        rows_.push_back({node.Index(), key, true, {}, hit->second.content.fileSize});
        ShowLast();
        return;
    }
    if (hit != hits_.end()) hits_.erase(hit);  // its name spares it less than before
    if (IsMisfit(key, clip.found) || IsSilent(plan, clip)) return;
    plan.clips.push_back(clip);
    planned_.push_back(node.Index());
}

// Behind all that may fit comes what only the size is missing of.
void HitList::PlanSizes(SearchPlan& plan, const std::vector<FoundByName>& found) {
    for (std::size_t row = 0; row < found.size(); ++row) {
        const ClipTarget& clip = found[row].clip;
        if (clip.number == 0 || rows_[row].size >= 0 || IsSilent(plan, clip)) continue;
        plan.clips.push_back(clip);
        planned_.push_back(rows_[row].treeIndex);
        namedRows_.push_back(row);
    }
}

bool HitList::IsMisfit(FileKey file, WordSet spared) const {
    for (auto one = std::ranges::lower_bound(misfits_, file, {}, &Misfit::file);
         one != misfits_.end() && one->file == file; ++one)
        if (HasAll(one->spared, spared)) return true;
    return false;
}

bool HitList::IsSilent(const SearchPlan& plan, const ClipTarget& clip) const {
    return std::find(silent_.begin(), silent_.end(), plan.directories[clip.directory]) != silent_.end();
}

bool HitList::Add(std::size_t clip, ContentHit hit) {
    if (clip >= plan_->clips.size()) return false;
    const FileKey key = KeyOf(*plan_, plan_->clips[clip]);
    const std::int64_t size = hit.fileSize;
    hits_.insert_or_assign(key, Hit{std::move(hit), plan_->clips[clip].found});
    // Another node may stand there since.
    if (ClipNumberOf(nodes_.Item(planned_[clip])) != plan_->clips[clip].number) {
        outdated_ = true;
        return false;
    }
    if (clip >= contents_) {
        rows_[namedRows_[clip - contents_]].size = size;
        return false;
    }
    rows_.push_back({planned_[clip], key, true, {}, size});
    ShowLast();
    return true;
}

void HitList::SetRead(std::size_t clips) {
    for (; readNow_ < std::min(clips, plan_->clips.size()); ++readNow_) {
        const FileKey key = KeyOf(*plan_, plan_->clips[readNow_]);
        if (readNow_ < contents_ && !hits_.contains(key))
            misfits_.push_back({key, plan_->clips[readNow_].found, likeness_});
    }
}

void HitList::LeaveOut(std::size_t directory) {
    if (directory >= plan_->directories.size()) return;
    silent_.push_back(plan_->directories[directory]);
    LookAgain();
}

bool HitList::GoesOn() {
    const bool tryLetters =
        rows_.empty() && likeness_ == Likeness::Marks && NodeSearch::MayBeTriedByLetters(query_);
    if (!tryLetters) return false;
    likeness_ = Likeness::Letters;
    std::erase_if(misfits_, [](const Misfit& one) { return one.how == Likeness::Marks; });
    unreadable_ = 0;
    LookAgain();
    return true;
}

std::wstring HitList::ScopeTitle() const {
    if (everywhere_) return L"Treffer in allen Profilen";
    return below_.Get() != nullptr ? L"Treffer in \"" + below_.Get()->FullPath() + L"\"" : L"Treffer";
}

void HitList::SetOrder(const ListOrder& order) {
    order_ = order;
    PutInOrder();
}

// What an entry is sorted by is made once for all comparisons.
void HitList::PutInOrder() {
    if (order_.column == ListOrder::kAsInTree) {
        std::sort(shown_.begin(), shown_.end());
        return;
    }
    struct Key {
        std::size_t row;
        std::int64_t number;
        std::wstring text;
    };
    std::vector<Key> keys;
    keys.reserve(shown_.size());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        Key key{i, 0, {}};
        if (order_.column == kSizeColumn)
            key.number = rows_[i].size;
        else if (order_.column == kCapturedColumn)
            key.number = MomentOf(TextOf(rows_[i], kCapturedColumn));
        else
            key.text = TextOf(rows_[i], order_.column);
        keys.push_back(std::move(key));
    }
    const auto isBefore = [](const Key& a, const Key& b) {
        return a.number != b.number ? a.number < b.number : CompareNoCase(a.text, b.text) < 0;
    };
    std::ranges::stable_sort(keys, [&](const Key& a, const Key& b) {
        return order_.descending ? isBefore(b, a) : isBefore(a, b);
    });
    std::ranges::transform(keys, shown_.begin(), &Key::row);
}

ListContent HitList::Content() const {
    ListContent content;
    content.title = ScopeTitle();
    content.columns = {L"Name", L"Ort", L"Erfasst", L"Größe", L"Fundstelle"};
    content.entries.reserve(rows_.size());
    for (const std::size_t row : shown_)
        content.entries.push_back({rows_[row].treeIndex});
    content.status = Status();
    content.nodes = &nodes_;
    content.hits = this;
    return content;
}

std::wstring HitList::Status() const {
    if (!query_.problem.empty()) return query_.problem;
    std::wstring status = NumberText(static_cast<std::int64_t>(rows_.size())) + L" Treffer";
    if (likeness_ == Likeness::Letters && !rows_.empty())
        status += L", nur in anderer Schreibweise (ä wie a, ß wie ss)";
    if (readNow_ < contents_)
        status += L", " + NumberText(static_cast<std::int64_t>(readNow_)) + L" von " +
                  NumberText(static_cast<std::int64_t>(contents_)) + L" Clips gelesen ...";
    if (unreadable_ > 0) status += L", nicht lesbar: " + NumberText(static_cast<std::int64_t>(unreadable_));
    for (const std::wstring& directory : silent_)
        status += L", " + directory + L" antwortet nicht";
    return status;
}

const HitList::Row* HitList::RowAt(int row) const {
    const bool shown = row >= 0 && row < static_cast<int>(shown_.size());
    return shown ? &rows_[shown_[static_cast<std::size_t>(row)]] : nullptr;
}

std::wstring HitList::Text(int row, int column) const {
    const Row* const shown = RowAt(row);
    return shown != nullptr ? TextOf(*shown, column) : std::wstring();
}

std::wstring HitList::TextOf(const Row& row, int column) const {
    const Node* const node = nodes_.Item(row.treeIndex);
    if (node == nullptr) return {};
    switch (column) {
        case 0:
            return node->Text();
        case 1:
            return node->Parent() != nullptr ? node->Parent()->FullPath() : std::wstring();
        case kCapturedColumn:
            return AttributesOf(node).timeCaptured;
        case kSizeColumn:
            return row.size >= 0 ? SizeText(row.size) : std::wstring();
        case kPlaceColumn:
            return LineIn(row).text;
        default:
            return {};
    }
}

const HitLine* HitList::LineOf(int row) const {
    const Row* const shown = RowAt(row);
    return shown != nullptr ? &LineIn(*shown) : nullptr;
}

const HitLine& HitList::LineIn(const Row& row) const {
    const ContentHit* const content = ContentIn(row);
    return content != nullptr ? content->line : row.line;
}

const ContentHit* HitList::ContentOf(int row) const {
    const Row* const shown = RowAt(row);
    return shown != nullptr ? ContentIn(*shown) : nullptr;
}

const ContentHit* HitList::ContentIn(const Row& row) const {
    if (!row.byContent) return nullptr;
    const auto hit = hits_.find(row.file);
    return hit != hits_.end() ? &hit->second.content : nullptr;
}
