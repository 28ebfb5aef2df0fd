#include "engine/views/ListUpdate.h"

#include "engine/clipboard/modFormatDesc.h"
#include "engine/flows/ClipFlowTest.h"

namespace {

using Details = std::vector<std::wstring>;

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
    EXPECT_EQ(content.entries[0].text, L"DIB");
    EXPECT_EQ(content.entries[0].icon, L"Paint");
    EXPECT_EQ(content.entries[0].details, (Details{L"Geräteunabhängige Bitmap", L"10"}));
    EXPECT_EQ(content.entries[1].icon, L"OLE");
    EXPECT_EQ(content.entries[2].text, L"Fremd");
    EXPECT_EQ(content.entries[2].icon, L"Help");
    EXPECT_EQ(content.status, L"3 Element(e)");
    EXPECT_EQ(content.formats, clipBoard.Formats());
    EXPECT_EQ(content.clipFile, L"C:\\CLIPS\\C7.nxc");
    for (const ListEntry& entry : content.entries)
        EXPECT_EQ(entry.details.size() + 1, content.columns.size());
}

TEST_F(ListTest, BuildListContent_SaysWhatIsWrongWithAClip) {
    Node& clip = AddClip(7, 3);
    EXPECT_EQ(Content(&clip).status, L"Datei C:\\CLIPS\\C7.nxc nicht verfügbar !!!");
    EXPECT_TRUE(Content(&clip).entries.empty());
    EXPECT_TRUE(fake.user.messages.empty());

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
    EXPECT_EQ(top.entries[0].icon, L"Structure");
    EXPECT_EQ(top.entries[0].treeIndex, folder->Index());
    EXPECT_EQ(top.entries[0].details, (Details{L"1", L"2", L"", L"", L""}));
    EXPECT_EQ(top.status, L"1 Element(e)");

    const ListContent content = Content(folder);
    EXPECT_EQ(content.title, L"Ordner \"Profil\\Ordner\"");
    ASSERT_EQ(content.entries.size(), 3u);
    EXPECT_EQ(content.entries[0].text, L"Innen");
    EXPECT_EQ(content.entries[0].details, (Details{L"0", L"0", L"", L"", L"Notiz & mehr"}));
    EXPECT_EQ(content.entries[1].icon, L"Clip");
    EXPECT_EQ(content.entries[1].treeIndex, clip.Index());
    EXPECT_EQ(content.entries[1].details, (Details{L"", L"", L"3", L"15.11.1999 13:10:00", L"Notiz"}));
    EXPECT_EQ(content.entries[2].text, L"Clip");
    EXPECT_EQ(content.formats, nullptr);
    for (const ListEntry& entry : content.entries)
        EXPECT_EQ(entry.details.size() + 1, content.columns.size());

    EXPECT_EQ(Content(&inner).status, L"0 Element(e)");
    EXPECT_EQ(Content(nullptr).title, L"");
    EXPECT_EQ(Content(nullptr).status, L"");
}
