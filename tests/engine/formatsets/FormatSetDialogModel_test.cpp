#include "engine/formatsets/FormatSetDialogModel.h"

#include "engine/formatsets/FormatSetTest.h"

namespace {

using Names = std::vector<std::wstring>;

class FormatSetDialogModelTest : public FormatSetTest {
 protected:
    FormatSetDialogModelTest() {
        FormatSets() = ListNamed({L"Eins", L"Zwei", L"Drei"});
        FormatSetsChanged = false;
    }
};

TEST_F(FormatSetDialogModelTest, Changes_ReachTheProcessListOnlyByOk) {
    const FormatSetList before = FormatSets();
    FormatSetDialogModel model;
    EXPECT_EQ(model.Selected(), 1);
    EXPECT_EQ(model.Aliases(), (Names{L"Eins", L"Zwei", L"Drei"}));
    model.Select(2);
    ASSERT_EQ(model.Entries().size(), 1u);
    model.SetEntrySave(0, false);
    EXPECT_TRUE(FormatSetsChanged);
    EXPECT_FALSE(model.Entries()[0].Save);
    EXPECT_EQ(FormatSets(), before);
    model.Confirm();
    EXPECT_FALSE(FormatSets().Item(2).Formats[0].Save);
    EXPECT_TRUE(FormatSets().Item(1).Formats[0].Save);
}

TEST_F(FormatSetDialogModelTest, AddFromClipboard_AddsAndSelectsANewSetOnce) {
    FormatSetDialogModel model;
    const auto formats = FormatsNamed({L"Text", L"HTML Format"});
    EXPECT_TRUE(model.AddFromClipboard(formats.get()));
    EXPECT_EQ(model.Selected(), 4);
    EXPECT_EQ(model.SelectedName(), L"<unbekannt>");
    EXPECT_EQ(model.Entries(), (std::vector<FormatSetEntry>{{L"HTML Format", true}, {L"Text", true}}));
    FormatSetsChanged = false;
    EXPECT_TRUE(model.Rename(L"Webseite"));
    EXPECT_TRUE(FormatSetsChanged);

    model.Select(1);
    EXPECT_FALSE(model.AddFromClipboard(FormatsNamed({L"HTML Format", L"Text"}).get()));
    EXPECT_NE(fake.user.LastMessage().find(L"Webseite"), std::wstring::npos);
    EXPECT_EQ(model.Aliases().size(), 4u);
    EXPECT_EQ(model.Selected(), 1);
    EXPECT_EQ(FormatSets().Count(), 3);
}

TEST_F(FormatSetDialogModelTest, Delete_AsksAndSelectsANeighbour) {
    FormatSetDialogModel model;
    model.Select(2);
    fake.user.answers = {false, true, true, true};
    EXPECT_FALSE(model.Delete());
    EXPECT_EQ(model.Aliases().size(), 3u);
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_FALSE(fake.user.questions[0].noIsDefault);

    EXPECT_TRUE(model.Delete());
    EXPECT_EQ(model.SelectedName(), L"Drei");
    EXPECT_TRUE(model.Delete());
    EXPECT_EQ(model.SelectedName(), L"Eins");
    EXPECT_TRUE(model.Delete());
    EXPECT_EQ(model.Selected(), 0);
    EXPECT_TRUE(model.Entries().empty());
    EXPECT_FALSE(model.Delete());
    EXPECT_EQ(fake.user.questions.size(), 4u);
    EXPECT_EQ(FormatSets().Count(), 3);
    model.Confirm();
    EXPECT_EQ(FormatSets().Count(), 0);
}

}  // namespace
