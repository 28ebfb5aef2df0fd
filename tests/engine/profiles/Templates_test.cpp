#include "engine/profiles/Templates.h"

#include "engine/profiles/ProfileWorldTest.h"

namespace {

using Boxes = std::array<bool, kFirstStartTemplateCount>;

class TemplatesTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        fake.files.AddDirectory(L"C:\\PROG\\Templates");
        for (const FirstStartTemplate& offer : kFirstStartTemplates) {
            AddTemplate(offer.file, std::wstring(L"Vorlage ") + offer.name);
        }
    }
    void AddTemplate(const std::wstring& file, const std::wstring& name) {
        NodeCollection made;
        CTreeViewEx builder;
        builder.Bind(&made);
        Node& profile = made.Add(nullptr, NodeRelation::Last, name, std::wstring(L"Profile"));
        profile.SetTag(L"P&0&D:\\woanders&0&Info zu " + name);
        made.Add(&profile, NodeRelation::Child, L"Ordner", std::wstring(L"Structure")).SetTag(L"S&");
        builder.BuildTreeData(&profile);
        builder.SaveDataToFile(TemplateDirectory() + file);
    }
    std::wstring Asked(std::size_t i) const { return fake.user.messages.at(i).title; }
};

TEST_F(TemplatesTest, InstallFirstStartTemplates_AllFourInTheirOrder) {
    Node* const first = InstallFirstStartTemplates(tree, container, {true, true, true, true}, true);
    EXPECT_EQ(MemoryOutline(), L"Entwicklung(Ordner) Office(Ordner) Medien(Ordner) Handbuch(Ordner)");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(ListOutline(),
              L"Entwicklung=C:\\PROG\\Daten\\Entwicklung Office=C:\\PROG\\Daten\\Office "
              L"Medien=C:\\PROG\\Daten\\Medien Handbuch=C:\\PROG\\Daten\\Handbuch ");
    EXPECT_EQ(first, nodes.Root());
    EXPECT_EQ(container.Get(), first);
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
    ASSERT_EQ(fake.user.messages.size(), 5u) << "one for each directory that was missing";
    EXPECT_EQ(
        fake.user.messages[0].text,
        L"Das Verzeichnis \r\n\r\nC:\\PROG\\Daten\r\n\r\nexistiert nicht.\r\nSoll ein neues Verzeichnis "
        L"angelegt werden ?");
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(Asked(i), L"Verzeichnis existiert nicht");
    EXPECT_TRUE(fake.user.questions.empty());
}

TEST_F(TemplatesTest, InstallFirstStartTemplates_OffersToAttachAProfileThatIsThere) {
    InstallFirstStartTemplates(tree, container, {false, true, false, false}, true);
    AddFolder(Get(L"Office"), L"Eigenes");
    SaveAllProfiles(tree);
    fake.user.answers = {true};
    actions.UnlinkProfile(&Get(L"Office"));
    fake.user.questions.clear();

    InstallFirstStartTemplates(tree, container, {true, true, false, false}, true);
    ASSERT_EQ(fake.user.questions.size(), 1u);
    EXPECT_EQ(fake.user.questions[0].text,
              L"Es existiert schon ein Profil im Verzeichnis\r\nC:\\PROG\\Daten\\Office\r\nSoll das "
              L"existierende Profil eingebunden werden ?");
    EXPECT_EQ(fake.user.questions[0].title, L"Profil existiert");
    EXPECT_EQ(MemoryOutline(), L"Entwicklung(Ordner)") << "No leaves it";

    fake.user.answers = {true};
    Node* const attached = InstallFirstStartTemplates(tree, container, {false, true, false, false}, true);
    EXPECT_EQ(MemoryOutline(), L"Entwicklung(Ordner) Office(Ordner Eigenes)");
    EXPECT_EQ(attached, &Get(L"Office"));
    EXPECT_EQ(container.Get(), attached);
}

}  // namespace
