// The search over the list: what its field, its hits and the reading of contents do.

#include <chrono>
#include <utility>

#include "engine/profiles/modProfile.h"
#include "engine/tree/modTreeEx.h"
#include "platform/SetWhile.h"
#include "platform/Text.h"
#include "windows/main/frmMain.h"

namespace {

// How often it is looked at whether a drive still answers.
constexpr std::chrono::milliseconds kBetweenLooksAtDrive{1000};
// A timer comes behind every key and every picture.
constexpr std::chrono::milliseconds kBehindTheKeys{10};

}  // namespace

// A clip's search is that of the folder that it lies in.
Node* frmMain::SearchScope() const {
    if (hits_.IsActive()) return hits_.Below();
    Node* const open = nodes_.Selected();
    return IsClipNode(open) ? open->Parent() : open;
}

void frmMain::ShowSearchHint() {
    const Node* const scope = searchesEverywhere_ ? nullptr : SearchScope();
    panes_.tbFilter.SetHint(L"Suchen in " +
                            (scope != nullptr ? L"\"" + scope->Text() + L"\"" : L"allen Profilen"));
}

// Once more, it searches in all profiles, and then below the open node again.
void frmMain::BeginSearch() {
    const bool again = GetFocus() == panes_.tbFilter.Window();
    if (again) {
        searchesEverywhere_ = !searchesEverywhere_;
        ShowSearchHint();
        if (hits_.IsActive()) SearchFor(searchesEverywhere_ ? nullptr : searchedOpen_.Get());
    }
    panes_.tbFilter.Begin(L"");
}

// The key is seen before what it finds.
void frmMain::FilterChanged() {
    UpdateWindow(panes_.tbFilter.Window());
    if (Trim(panes_.tbFilter.Text()).empty())
        EndSearch();
    else
        searching_.PutOff();
}

// Keys that have come meanwhile are shown first, and searched for together.
void frmMain::SearchBehindTheKeys() {
    if (HIWORD(GetQueueStatus(QS_KEY)) != 0)
        searching_.PutOff(kBehindTheKeys);
    else
        SearchForTyped();
}

void frmMain::SearchForTyped() {
    const std::wstring text = panes_.tbFilter.Text();
    if (!Trim(text).empty() && !hits_.IsOf(text)) SearchFor(searchesEverywhere_ ? nullptr : SearchScope());
}

void frmMain::SearchFor(Node* below) {
    searchWorker_.Stop();
    if (!hits_.IsActive()) RememberList();
    hits_.Search(below, panes_.tbFilter.Text());
    ShowHits();
    ReadContents();
}

void frmMain::RememberList() {
    Node* const scope = SearchScope();
    searchedOpen_.Follow(scope);
    openBefore_.Follow(nodes_.Selected());
    rowBefore_ = panes_.lvListView.FocusedRow();
    topRowBefore_ = panes_.lvListView.TopRow();
}

void frmMain::EndSearch() {
    if (!hits_.IsActive()) return;
    searchWorker_.Stop();
    hits_.End();
    searchesEverywhere_ = false;
    panes_.tbFilter.Clear();
    if (GetFocus() == panes_.tbFilter.Window()) SetFocus(panes_.lvListView.Window());
    shownNode_.Follow(nullptr);
    UpdateListview();
    if (nodes_.Selected() == nullptr || nodes_.Selected() != openBefore_.Get()) return;
    panes_.lvListView.ScrollTo(topRowBefore_);
    if (rowBefore_ >= 0 && rowBefore_ < static_cast<int>(panes_.Content().entries.size()))
        panes_.lvListView.ChooseRow(rowBefore_);
}

// The rows as they are now; the chosen one stays chosen as long as it is a hit.
void frmMain::ShowHits() {
    Node* const chosen = listNode_.Get();
    {
        const SetWhile filling(filling_);
        panes_.ShowContent(hits_.Content(), container_.Title());
    }
    const std::vector<ListEntry>& entries = panes_.Content().entries;
    int row = -1;
    for (std::size_t i = 0; chosen != nullptr && row < 0 && i < entries.size(); ++i)
        if (entries[i].treeIndex == chosen->Index()) row = static_cast<int>(i);
    if (row >= 0)
        panes_.lvListView.ChooseRow(row);
    else
        listNode_.Follow(nullptr);
    RefreshCommands();
}

void frmMain::UpdateHits() {
    const std::vector<int> rows = panes_.lvListView.ChosenRows();
    const int row = rows.empty() ? -1 : rows.front();
    const int top = panes_.lvListView.TopRow();
    searchWorker_.Stop();
    hits_.LookAgain();
    ShowHits();
    panes_.lvListView.ScrollTo(top);
    KeepListRow(row);
    ReadContents();
}

// What fits by its name is seen first: files that are opened meanwhile would hold up its drawing.
void frmMain::ReadContents() {
    reading_.PutOff(kBehindTheKeys);
}

void frmMain::StartReading() {
    if (!hits_.IsActive()) return;
    if (hits_.Plan()->clips.empty() || !searchWorker_.Start(hits_.Plan()))
        ContentsAreRead();
    else
        looksAtDrive_.PutOff(kBetweenLooksAtDrive);
}

void frmMain::ContentsAreRead() {
    if (hits_.GoesOn()) {
        ShowHits();
        ReadContents();
    } else {
        if (hits_.Order() != ListOrder()) ShowInOrder();
        panes_.lvListView.ContentIsWhole();
        panes_.ShowStatus(hits_.Status());
    }
}

// What was found after the click on a heading comes to its place.
void frmMain::ShowInOrder() {
    const std::vector<Node*> chosen = ChosenNodes();
    const int top = panes_.lvListView.TopRow();
    hits_.PutInOrder();
    ShowHits();
    if (chosen.size() > 1) ChooseRowsOf(chosen);
    panes_.lvListView.ScrollTo(top);
}

void frmMain::TakeSearchNews() {
    SearchWorker::News news = searchWorker_.Take();
    if (!hits_.IsActive()) return;
    std::vector<ListEntry> more;
    const bool any = !news.hits.empty();
    int firstChanged = static_cast<int>(panes_.Content().entries.size());
    for (auto& [clip, hit] : news.hits) {
        if (hits_.Add(clip, std::move(hit)))
            more.push_back(hits_.LastEntry());
        else
            firstChanged = 0;  // a row says how large its clip is
    }
    hits_.SetRead(news.read);
    hits_.SetUnreadable(news.unreadable);
    if (hits_.IsOutdated()) {
        UpdateListview();
        return;
    }
    if (any) panes_.GrowContent(more, firstChanged);
    panes_.ShowStatus(hits_.Status());
    if (news.finished) ContentsAreRead();
}

void frmMain::LookAtDrive() {
    if (!searchWorker_.IsAtWork()) return;
    std::size_t directory = 0;
    if (searchWorker_.IsStuck(directory)) {
        searchWorker_.Stop();
        hits_.LeaveOut(directory);
        ShowHits();
        ReadContents();
    } else {
        looksAtDrive_.PutOff(kBetweenLooksAtDrive);
    }
}

// The search ends when the user himself goes elsewhere in the tree, not when the program selects for him.
bool frmMain::LeavesSearch() const {
    return hits_.IsActive() && !keepsSearch_ && GetFocus() == panes_.tvTreeView.Window();
}

void frmMain::ShowInTree(Node* node) {
    const NodeRef shown(node);
    openBefore_.Follow(nullptr);
    EndSearch();
    if (shown.Get() == nullptr) return;
    SelectAndShow(*shown.Get());
    SetFocus(panes_.tvTreeView.Window());
}

int frmMain::FindListRow(const NMLVFINDITEMW& find) {
    const int row = panes_.lvListView.OnFindItem(find);
    const bool typed = (find.lvfi.flags & LVFI_PARTIAL) != 0 && find.lvfi.psz != nullptr &&
                       GetFocus() == panes_.lvListView.Window();
    if (row >= 0 || !typed || panes_.Content().nodes == nullptr) return row;
    // The control must not be changed while it looks for a row.
    Later(std::chrono::milliseconds(0),
          [this, text = std::wstring(find.lvfi.psz)] { panes_.tbFilter.Begin(text); });
    return row;
}

PreviewHit frmMain::HitOfRow(int row) const {
    PreviewHit hit;
    hit.query = hits_.Query();
    hit.likeness = hits_.How();
    if (const ContentHit* const content = hits_.ContentOf(row); content != nullptr) {
        hit.record = content->record;
        hit.begin = content->begin;
    }
    return hit;
}

bool frmMain::TranslateSearchKey(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    const bool inField = message.hwnd == panes_.tbFilter.Window();
    const bool inTree = message.hwnd == panes_.tvTreeView.Window();
    const bool uses = message.wParam == VK_ESCAPE || message.wParam == VK_DOWN || message.wParam == VK_RETURN;
    if (inField && uses) SearchForTyped();
    if (message.wParam == VK_ESCAPE && (inField || (hits_.IsActive() && !inTree))) {
        if (hits_.IsActive())
            EndSearch();
        else
            SetFocus(panes_.lvListView.Window());
        return true;
    }
    if (!inField || !uses) return false;
    SetFocus(panes_.lvListView.Window());
    if (panes_.lvListView.FocusedRow() < 0 && !panes_.Content().entries.empty())
        panes_.lvListView.ChooseRow(0);
    return true;
}
