// The templates as they were built, beside the program. Run where the program lies.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "engine/tree/TreeFile.h"

TEST(Templates, EveryTemplate_IsAProfileOfFoldersWithNamesOfTheirOwn) {
    int templates = 0;
    for (const auto& entry : std::filesystem::directory_iterator("Templates")) {
        SCOPED_TRACE(entry.path().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const TreeData data = DecodeTreeData({std::istreambuf_iterator<char>(file), {}});
        ++templates;
        ASSERT_GE(data.Count, 20);
        // No clips counted, no directory, not released; and an info text.
        EXPECT_TRUE(data.Nodes[1].Tag.starts_with(L"P&0&&0&") && data.Nodes[1].Tag.size() > 47);
        EXPECT_EQ(data.Nodes[1].Image, ImageValue(std::wstring(L"Profile")));
        std::vector<std::set<std::wstring>> namesAtDepth;
        bool umlaut = false;
        for (std::int32_t i = 1; i <= data.Count; ++i) {
            const TreeNodeRecord& node = data.Nodes[i];
            EXPECT_EQ(node.Tag.starts_with(L"S&"), i > 1) << i;
            EXPECT_EQ(node.Depth == 0, i == 1) << i;
            namesAtDepth.resize(node.Depth + 1);
            EXPECT_TRUE(namesAtDepth.back().insert(node.Text).second) << i;
            umlaut |= node.Text.find_first_of(L"\u00E4\u00F6\u00FC\u00DF") != std::wstring::npos;
        }
        EXPECT_TRUE(umlaut) << "the code page is the system's";
    }
    EXPECT_EQ(templates, 7);
}
