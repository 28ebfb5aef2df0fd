// The templates as they were built, beside the program. Run where the program lies.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "engine/tree/TreeFile.h"
#include "engine/tree/modTreeEx.h"

namespace {

struct Template {
    const char* file;
    const wchar_t* profile;
    const wchar_t* folder;  // one with an umlaut, to see the code page
};

void PrintTo(const Template& expected, std::ostream* out) {
    *out << expected.file;
}

TreeData Load(const std::string& name) {
    std::ifstream file("Templates/" + name, std::ios::binary);
    EXPECT_TRUE(file) << "Templates/" << name << " is not below the working directory";
    return DecodeTreeData({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
}

class Templates : public testing::TestWithParam<Template> {};

}  // namespace

TEST_P(Templates, Load_GivesAProfileOfFolders) {
    const TreeData data = Load(GetParam().file);
    ASSERT_GE(data.Count, 20);

    const TreeNodeRecord& profile = data.Nodes[1];
    EXPECT_EQ(profile.Text, GetParam().profile);
    EXPECT_EQ(profile.Depth, 0);
    EXPECT_EQ(profile.Image, ImageValue(std::wstring(L"Profile")));
    EXPECT_TRUE(profile.Expanded);
    std::int32_t counter = -1;
    std::wstring directory = L"unread", info;
    bool globalFlag = true;
    ParseProfileTag(profile.Tag, counter, directory, globalFlag, info);
    EXPECT_EQ(counter, 0);
    EXPECT_EQ(directory, L"");
    EXPECT_FALSE(globalFlag);
    EXPECT_GT(info.size(), 40u);

    for (std::int32_t i = 2; i <= data.Count; ++i) {
        const TreeNodeRecord& folder = data.Nodes[i];
        EXPECT_TRUE(folder.Tag.starts_with(L"S&")) << i;
        EXPECT_EQ(folder.Image, ImageValue(std::wstring(L"Structure"))) << i;
        EXPECT_FALSE(folder.Text.empty()) << i;
        EXPECT_EQ(folder.Text.find(L'|'), std::wstring::npos) << i;
        EXPECT_GE(folder.Depth, 1) << i;
        EXPECT_LE(folder.Depth, data.Nodes[i - 1].Depth + 1) << i;
    }
}

TEST_P(Templates, Load_KeepsUmlauts) {
    const TreeData data = Load(GetParam().file);
    const auto hasFolder = [&](const TreeNodeRecord& node) { return node.Text == GetParam().folder; };
    EXPECT_EQ(std::count_if(data.Nodes.begin(), data.Nodes.end(), hasFolder), 1);
}

TEST_P(Templates, Load_NamesNoFolderTwiceInOnePlace) {
    const TreeData data = Load(GetParam().file);
    std::vector<std::set<std::wstring>> namesAtDepth;
    for (std::int32_t i = 1; i <= data.Count; ++i) {
        namesAtDepth.resize(data.Nodes[i].Depth + 1);
        EXPECT_TRUE(namesAtDepth.back().insert(data.Nodes[i].Text).second) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Templates,
                         testing::Values(Template{"Develop.nxp", L"Entwicklung", L"Gerüste"},
                                         Template{"Office.nxp", L"Office", L"Anreden und Grußformeln"},
                                         Template{"Medien.nxp", L"Medien", L"Gebäude und Orte"},
                                         Template{"Handbuch.nxp", L"Handbuch", L"Menüs"},
                                         Template{"Korrespondenz.nxp", L"Korrespondenz", L"Glückwünsche"},
                                         Template{"Webseiten.nxp", L"Webseiten", L"Häufige Fragen"},
                                         Template{"Privat.nxp", L"Privat", L"Süßspeisen"}));
