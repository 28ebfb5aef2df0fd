#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/search/ContentSearch.h"
#include "engine/search/NodeSearch.h"
#include "engine/tree/NodeCollection.h"
#include "engine/views/ListUpdate.h"
#include "platform/Clock.h"

// What a search finds, as rows of the list: first those whose names and infos fit, in the order of the tree,
// then those whose contents do, as they are found. Who reads the contents is not its business: it makes the
// plan and takes the hits.
//
// The tree is the truth: after each change of it LookAgain makes the rows anew, and what was read of a clip's
// file is remembered by that file, which never changes, for as long as names ask no more of it.
class HitList {
 public:
    // The nodes and the clock must outlive the list.
    HitList(NodeCollection& nodes, ClockPort& clock) : nodes_(nodes), clock_(clock) {}

    // Looks for what the user typed below a node; null is everywhere. As he types on, the files that did not
    // fit what he had typed before are not read again, and the first of those that did stay rows when the
    // lines around their hits show the rest as well.
    void Search(Node* below, const std::wstring& text);
    void End();
    bool IsActive() const { return active_; }
    // Whether these are the hits for what the user typed.
    bool IsOf(const std::wstring& text) const { return active_ && query_ == ParseSearchQuery(text); }
    // The node below which is searched; null when that is everywhere, or when it is gone.
    Node* Below() const { return below_.Get(); }
    const SearchQuery& Query() const { return query_; }
    Likeness How() const { return likeness_; }

    // The tree may have changed. Rows and plan are others then.
    void LookAgain();
    // Nodes came or went since then, as far as it was noticed.
    bool IsOutdated() const { return outdated_ || nodes_.Count() != nodesThen_; }
    // What is left to be read, also by somebody else's thread; the numbers of its clips are those that the
    // next three take. Never null.
    std::shared_ptr<const SearchPlan> Plan() const { return plan_; }
    // A clip of the plan fits; true when that is one row more, at the end. Else a row says more than before.
    bool Add(std::size_t clip, ContentHit hit);
    // So many clips of the plan have been looked into.
    void SetRead(std::size_t clips);
    void SetUnreadable(std::size_t clips) { unreadable_ = unreadableBefore_ + clips; }
    // A directory of the plan does not answer: its clips are left out from now on. Rows and plan are others
    // then.
    void LeaveOut(std::size_t directory);
    // All of the plan has been read. True when there is more to read: nothing was found, and it is tried with
    // letters of other marks. Rows and plan are others then.
    bool GoesOn();

    // The order of the rows: as they were found, or by a column. What is found later stands behind them until
    // PutInOrder, or until the rows are others.
    void SetOrder(const ListOrder& order);
    const ListOrder& Order() const { return order_; }
    void PutInOrder();

    // What the list shows: the rows as they are now.
    ListContent Content() const;
    // How far the search is, for the status bar.
    std::wstring Status() const;
    // The last row; there is one.
    ListEntry LastEntry() const { return {rows_[shown_.back()].treeIndex}; }

    static constexpr int kCapturedColumn = 2;
    static constexpr int kSizeColumn = 3;
    static constexpr int kPlaceColumn = 4;
    std::wstring Text(int row, int column) const;
    // The line around a row's hit; null outside of the list.
    const HitLine* LineOf(int row) const;
    // Where a row's content holds the hit; null when that is its name or its info, or outside of the list.
    const ContentHit* ContentOf(int row) const;

 private:
    // A clip's file: its directory's number and its own.
    using FileKey = std::uint64_t;
    struct Row {
        int treeIndex = 0;
        FileKey file = 0;
        bool byContent = false;
        HitLine line;  // of a hit by name
        std::int64_t size = -1;
    };
    // Of a file that was looked into, the words that it was spared: name and info held them.
    struct Misfit {
        FileKey file = 0;
        WordSet spared = 0;
        Likeness how = Likeness::Marks;  // what does not fit without regard to marks does not fit with it
    };
    struct Hit {
        ContentHit content;
        WordSet spared = 0;
        bool ofOlderQuery = false;  // of one that is narrowed
    };

    const Row* RowAt(int row) const;
    std::wstring TextOf(const Row& row, int column) const;
    const HitLine& LineIn(const Row& row) const;
    const ContentHit* ContentIn(const Row& row) const;
    void ShowLast() { shown_.push_back(rows_.size() - 1); }
    void ForgetMisfits();
    void AgeHits();
    bool StillFits(Hit& hit, WordSet spared);
    FileKey KeyOf(const SearchPlan& plan, const ClipTarget& clip);
    void AddRowByName(const SearchPlan& plan, FoundByName& found);
    void PlanOrAddRow(SearchPlan& plan, const ClipTarget& clip, const Node& node);
    void PlanSizes(SearchPlan& plan, const std::vector<FoundByName>& found);
    bool IsMisfit(FileKey file, WordSet spared) const;
    bool IsSilent(const SearchPlan& plan, const ClipTarget& clip) const;
    std::wstring ScopeTitle() const;

    NodeCollection& nodes_;
    ClockPort& clock_;
    bool active_ = false;
    bool everywhere_ = false;
    NodeRef below_;
    SearchQuery query_;
    Likeness likeness_ = Likeness::Marks;
    std::vector<Row> rows_;           // as they were found
    std::vector<std::size_t> shown_;  // them as the list shows them
    ListOrder order_;
    int nodesThen_ = 0;
    bool outdated_ = false;

    std::shared_ptr<const SearchPlan> plan_ = std::make_shared<SearchPlan>();
    std::vector<int> planned_;  // the tree's index of each clip of the plan
    std::size_t contents_ = 0;  // so many of them may fit; of the others only the size is to be read
    std::vector<std::size_t> namedRows_;  // the rows of those
    std::size_t readNow_ = 0;             // of the plan
    std::size_t unreadable_ = 0;
    std::size_t unreadableBefore_ = 0;  // under the plans before this one

    std::map<std::wstring, std::uint32_t> directories_;
    std::map<FileKey, Hit> hits_;
    std::optional<WordSearch> narrower_;  // checks hits of an older query, while there are any
    int checksLeft_ = 0;
    std::vector<Misfit> misfits_;
    std::vector<std::wstring> silent_;
};
