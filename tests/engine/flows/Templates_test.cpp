#include "engine/flows/Templates.h"

#include "engine/profiles/ProfileWorldTest.h"

namespace {

class TemplatesTest : public ProfileWorldTest {
 protected:
    void SetUp() override {
        fake.files.AddDirectory(L"C:\\PROG\\Templates");
        for (const FirstStartTemplate& offer : kFirstStartTemplates) {
            AddTemplate(offer.file, std::wstring(L"Vorlage ") + offer.name);
        }
    }
    Node* Install(const std::array<bool, kFirstStartTemplateCount>& templates) {
        return InstallFirstStartTemplates(tree, container, {false, templates, true});
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
};

TEST_F(TemplatesTest, InstallFirstStartTemplates_AllInTheirOrderAndUnasked) {
    Node* const first = InstallFirstStartTemplates(tree, container, {true, {true, true, true, true}, true});
    EXPECT_EQ(MemoryOutline(), L"Clips Entwicklung(Ordner) Office(Ordner) Medien(Ordner) Handbuch(Ordner)");
    EXPECT_EQ(DiskOutline(), MemoryOutline());
    EXPECT_EQ(ListOutline(),
              L"Clips=C:\\PROG\\Daten\\Clips "
              L"Entwicklung=C:\\PROG\\Daten\\Entwicklung Office=C:\\PROG\\Daten\\Office "
              L"Medien=C:\\PROG\\Daten\\Medien Handbuch=C:\\PROG\\Daten\\Handbuch ");
    EXPECT_EQ(first, nodes.Root());
    EXPECT_EQ(container.Get(), first);
    EXPECT_EQ(Damage(), std::vector<std::wstring>());
    EXPECT_TRUE(fake.user.messages.empty());
    EXPECT_TRUE(fake.user.questions.empty());
}

TEST_F(TemplatesTest, InstallFirstStartTemplates_OffersToAttachAProfileThatIsThere) {
    Install({false, true});
    AddFolder(Get(L"Office"), L"Eigenes");
    SaveAllProfiles(tree);
    fake.user.answers = {true};
    actions.UnlinkProfile(&Get(L"Office"));
    fake.user.questions.clear();

    Install({true, true});
    EXPECT_EQ(fake.user.questions.size(), 1u);
    EXPECT_EQ(MemoryOutline(), L"Entwicklung(Ordner)") << "No leaves it";

    fake.user.answers = {true};
    Node* const attached = Install({false, true});
    EXPECT_EQ(MemoryOutline(), L"Entwicklung(Ordner) Office(Ordner Eigenes)");
    EXPECT_EQ(attached, &Get(L"Office"));
    EXPECT_EQ(container.Get(), attached);
}

}  // namespace
