#include "engine/views/ListUpdate.h"

#include "engine/clipboard/modFormatDesc.h"
#include "engine/flows/ClipFlowTest.h"

namespace {

// A row as the list shows it: its icon, then what stands in each column.
std::wstring Row(const ListContent& content, int row) {
    std::wstring text = L"[" + ListIcon(content, row) + L"]";
    for (int column = 0; column < static_cast<int>(content.columns.size()); ++column)
        text += L" | " + ListText(content, row, column);
    return text;
}

class ListTest : public ClipFlowTest {
 protected:
    ListTest() { FillFormatDescriptions(); }
    ListContent Content(const Node* node) { return BuildListContent(node, clipBoard); }
};

}  // namespace

TEST_F(ListTest, BuildListContent_ListsAClipsFormatsInFileOrder) {
    fake.files.SetBytes(L"C:\\CLIPS\\C7.nxc", RecordBytes(8, "DIB", "0123456789") +
                                                  RecordBytes(0xC123, "Link Source", "xyz") +
                                                  RecordBytes(0xC124, "Fremd", ""));
    const ListContent content = Content(&AddClip(7, 3));
    EXPECT_EQ(content.title, L"Formate von \"Profil\\Ordner\\Clip\"");
    ASSERT_EQ(content.entries.size(), 3u);
    EXPECT_EQ(Row(content, 0), L"[Paint] | DIB | Geräteunabhängige Bitmap | 10 Bytes");
    EXPECT_EQ(ListIcon(content, 1), L"OLE");
    EXPECT_EQ(Row(content, 2), L"[Help] | Fremd | <unbekannt> | 0 Bytes");
    EXPECT_EQ(Row(content, 3), L"[] |  |  | ");
    for (const int column : {0, 1, 2, 3})
        EXPECT_EQ(IsNumberColumn(content, column), column == 2);
    EXPECT_EQ(content.status, L"3 Element(e)");
    EXPECT_EQ(content.clipFile, L"C:\\CLIPS\\C7.nxc");
}

TEST_F(ListTest, BuildListContent_SaysWhatIsWrongWithAClip) {
    Node& clip = AddClip(7, 3);
    EXPECT_EQ(Content(&clip).status, L"Datei C:\\CLIPS\\C7.nxc nicht verfügbar !!!");
    fake.files.SetBytes(L"C:\\CLIPS\\C7.nxc", "");
    clip.SetTag(L"C&7,0&&");
    EXPECT_EQ(Content(&clip).status, L"Keine Formate ermittelt");
    EXPECT_EQ(Content(&clip).formats, nullptr);

    // The records that can be read are listed all the same.
    fake.files.SetBytes(L"C:\\CLIPS\\C7.nxc", RecordBytes(1, "Text", "abc") + "damaged");
    clip.SetTag(L"C&7,2&&");
    EXPECT_EQ(Content(&clip).status, L"1 Element(e)");
    EXPECT_EQ(fake.user.messages.size(), 1u);
    EXPECT_EQ(fake.ledger.Owned(ResourceKind::File), 0);
}

TEST_F(ListTest, BuildListContent_ListsTheChildrenOfProfilesAndFolders) {
    Node& inner = nodes.Add(folder, NodeRelation::Child, L"Innen", std::wstring(L"Structure"));
    inner.SetTag(L"S&Notiz & mehr");
    Node& clip = AddClip(7, 3);
    AddClip(8, 1).SetTag(L"C&damaged");

    const ListContent top = Content(profile);
    EXPECT_EQ(top.title, L"Profil \"Profil\"");
    ASSERT_EQ(top.entries.size(), 1u);
    EXPECT_EQ(top.entries[0].treeIndex, folder->Index());
    EXPECT_EQ(Row(top, 0), L"[Structure] | Ordner | 1 | 2 |  |  | ");
    EXPECT_EQ(top.status, L"1 Element(e)");

    const ListContent content = Content(folder);
    EXPECT_EQ(content.title, L"Ordner \"Profil\\Ordner\"");
    ASSERT_EQ(content.entries.size(), 3u);
    EXPECT_EQ(Row(content, 0), L"[Structure] | Innen | 0 | 0 |  |  | Notiz & mehr");
    EXPECT_EQ(content.entries[1].treeIndex, clip.Index());
    EXPECT_EQ(Row(content, 1), L"[Clip] | Clip |  |  | 3 | 15.11.1999 13:10:00 | Notiz");
    EXPECT_EQ(ListText(content, 2, 0), L"Clip");
    EXPECT_EQ(content.formats, nullptr);
    EXPECT_EQ(ListText(content, 3, 0), L"") << "behind the last row";
    EXPECT_EQ(ListTip(content, 1, 0), L"") << "the note has a column";
    const std::wstring lacks = L"Der Clip ist unvollständig: nicht geliefert wurden PNG";
    clip.SetTag(MakeClipTag(7, 3, L"15.11.1999 13:10:00", lacks));
    EXPECT_EQ(ListTip(content, 1, 0), lacks);
    for (const int column : {0, 1, 2, 3, 4})
        EXPECT_EQ(IsNumberColumn(content, column), column >= 1 && column <= 3);

    EXPECT_EQ(Content(&inner).status, L"0 Element(e)");
    EXPECT_EQ(Content(nullptr).status, L"");
}

TEST_F(ListTest, SortEntries_ByEachHeadingAndBackToTheTreesOrder) {
    for (const auto& [number, name] : {std::pair(7, L"b"), std::pair(12, L"C"), std::pair(9, L"ä")})
        AddClip(number, static_cast<std::int16_t>(number)).SetText(name);
    nodes.Add(folder, NodeRelation::Child, L"x", std::wstring(L"Structure")).SetTag(L"S&");
    ListOrder order;
    const auto afterClick = [&](int column) {
        order = OrderAfterClick(order, column);
        ListContent content = Content(folder);
        SortEntries(content, order);
        std::wstring names;
        for (int row = 0; row < 4; ++row)
            names += ListText(content, row, 0);
        return names;
    };
    EXPECT_EQ(afterClick(4), L"xCäb") << "the newest first, behind the folders";
    EXPECT_EQ(afterClick(4), L"xbäC");
    EXPECT_EQ(afterClick(4), L"bCäx");
    EXPECT_EQ(afterClick(0), L"xäbC");
    EXPECT_EQ(afterClick(3), L"xbäC") << "by number, not by its digits";
}

TEST_F(ListTest, FindListRow_GoesOnFromTheRowAndWrapsOnlyWhenAsked) {
    for (const wchar_t* name : {L"Abc", L"b", L"ÄB", L"abd"})
        nodes.Add(folder, NodeRelation::Child, name, std::wstring(L"Clip"));
    const ListContent content = Content(folder);
    EXPECT_EQ(FindListRow(content, L"AB", 0, true, true), 0);
    EXPECT_EQ(FindListRow(content, L"ab", 1, true, true), 3);
    EXPECT_EQ(FindListRow(content, L"äb", 3, true, true), 2);
    EXPECT_EQ(FindListRow(content, L"äb", 3, true, false), -1);
    EXPECT_EQ(FindListRow(content, L"b", 4, true, true), 1);
    EXPECT_EQ(FindListRow(content, L"ab", 0, false, true), -1);
    EXPECT_EQ(FindListRow(content, L"ABD", -1, false, true), 3);
    EXPECT_EQ(FindListRow(ListContent{}, L"a", 0, true, true), -1);
}
