#include "engine/flows/Search.h"

#include "engine/profiles/ProfileWorldTest.h"

namespace {

class SearchTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        Fill();  // "P(S(c1 T(c2)) c3) Q(U(c4))"; S: "Info & mehr", c2: "a&b"
    }

    std::wstring Found(const SearchCriteria& criteria, const wchar_t* start = nullptr) {
        const Node* const hit = SearchForNode(tree, criteria, start != nullptr ? &Get(start) : nullptr);
        return hit != nullptr ? hit->Text() : L"-";
    }
};

SearchCriteria For(const std::wstring& text) {
    SearchCriteria criteria;
    criteria.searchText = text;
    return criteria;
}

TEST_F(SearchTest, SearchForNode_BeginsAtTheTopOrBehindTheStart) {
    EXPECT_EQ(Found(For(L"p")), L"P") << "the first node itself is examined";
    EXPECT_EQ(Found(For(L"p"), L"P"), L"-") << "the start never is";
    EXPECT_EQ(Found(For(L"c")), L"c1");
    EXPECT_EQ(Found(For(L"c"), L"c1"), L"c2");
    EXPECT_EQ(Found(For(L"c"), L"c3"), L"c4") << "across profiles";
    EXPECT_EQ(Found(For(L"c"), L"c4"), L"-") << "no wrap-around";
    nodes.Clear();
    EXPECT_EQ(Found(For(L"p")), L"-");
}

TEST_F(SearchTest, SearchForNode_UpwardVisitsEveryNodeInReverse) {
    SearchCriteria up = For(L"c");
    up.downward = false;
    for (const auto& [start, found] :
         {std::pair{L"c4", L"c3"}, {L"c3", L"c2"}, {L"c2", L"c1"}, {L"c1", L"-"}})
        EXPECT_EQ(Found(up, start), found) << "into collapsed folders as well";
    up.searchText = L"P";
    EXPECT_EQ(Found(up, L"c4"), L"P");
}

TEST_F(SearchTest, SearchForNode_ObeysBothMasks) {
    SearchCriteria criteria = For(L"s");
    criteria.kinds = 1 | 4;
    EXPECT_EQ(Found(criteria), L"-");
    criteria.kinds = 2;
    EXPECT_EQ(Found(criteria), L"S");

    criteria = For(L"a");
    criteria.fields = 2;
    EXPECT_EQ(Found(criteria), L"c2") << "by its info text";
    criteria.fields = 1;
    EXPECT_EQ(Found(criteria), L"-");
    criteria.fields = 1 | 2 | 4;
    criteria.searchText = L"c2";
    EXPECT_EQ(Found(criteria), L"c2");
    criteria.fields = 4;
    EXPECT_EQ(Found(criteria), L"-") << "contents are never looked at";

    criteria = For(L"info");
    criteria.fields = 2;
    Get(L"c1").SetTag(L"C&x");  // damaged tags do not end the search
    Get(L"P").SetTag(L"P&x&y&");
    EXPECT_EQ(Found(criteria), L"S");
    Get(L"S").SetTag(L"");
    EXPECT_EQ(Found(criteria), L"-") << "a node of no kind is passed by";
}

TEST_F(SearchTest, SearchCommand_ShowsTheDialogWhenItMust) {
    int dialogs = 0;
    bool confirmed = false;
    std::wstring typed;
    std::vector<std::wstring> shown;
    const auto search = [&](bool again) {
        SearchCommand(
            tree, again,
            [&] {
                ++dialogs;
                if (confirmed) TheSearchCriteria().searchText = typed;
                return confirmed;
            },
            [&](Node& node) {
                shown.push_back(node.Text());
                nodes.Select(&node);
            });
    };
    search(true);
    EXPECT_EQ(dialogs, 1) << "there is nothing to repeat yet";
    confirmed = true;
    search(false);
    EXPECT_TRUE(shown.empty() && fake.user.messages.empty()) << "no text, no search";
    typed = L"c";
    search(false);
    EXPECT_EQ(dialogs, 3);
    for (int i = 0; i < 3; ++i)
        search(true);
    EXPECT_EQ(dialogs, 3);
    EXPECT_EQ(shown, (std::vector<std::wstring>{L"c1", L"c2", L"c3", L"c4"}));
    search(true);
    EXPECT_EQ(fake.user.LastMessage(), L"Suchtext nicht gefunden.");
    EXPECT_EQ(nodes.Selected(), &Get(L"c4"));
    confirmed = false;
    search(false);
    EXPECT_EQ(shown.size(), 4u);
}

TEST(SearchDialog, Controls_RoundTripAllCriteria) {
    EXPECT_EQ(CriteriaFromControls(ControlsFromCriteria(SearchCriteria{})), SearchCriteria{});
    for (std::int16_t mask = 0; mask < 8; ++mask) {
        for (const bool flag : {false, true}) {
            const SearchCriteria criteria{L"x", mask, static_cast<std::int16_t>(7 - mask), flag, !flag};
            EXPECT_EQ(CriteriaFromControls(ControlsFromCriteria(criteria)), criteria);
        }
    }
    const SearchControls first = ControlsFromCriteria(SearchCriteria{});
    EXPECT_TRUE(first.chkProfile && first.chkStruct && first.chkClip && first.chkName);
    EXPECT_FALSE(first.chkInfo || first.chkValue);
    EXPECT_TRUE(first.optSearchPattern[0] && first.optUpDown[1]);
}

}  // namespace
