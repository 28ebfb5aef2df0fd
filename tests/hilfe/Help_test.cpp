// The help as it was built, beside the program. Run where the program lies.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

std::string FileContent(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path << " is not below the working directory";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string Page(const std::string& name) {
    return FileContent("Hilfe/" + name);
}

std::set<std::string> PageNames() {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator("Hilfe"))
        if (entry.path().extension() == ".html") names.insert(entry.path().filename().string());
    return names;
}

std::set<std::string> AllMatches(const std::string& text, const char* pattern) {
    const std::regex expression(pattern);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.insert((*match)[1]);
    return found;
}

}  // namespace

TEST(Help, Links_LeadToPagesAndPlacesThatAreThere) {
    for (const std::string& name : PageNames()) {
        for (const std::string& link : AllMatches(Page(name), "(?:href|src)=\"([^\"]*)\"")) {
            const std::string target = link.substr(0, link.find('#'));
            ASSERT_TRUE(target.empty() || std::filesystem::exists("Hilfe/" + target)) << name << ": " << link;
            if (link.find('#') == std::string::npos) continue;
            const std::string anchor = "<a name=\"" + link.substr(link.find('#') + 1) + "\"";
            EXPECT_NE(Page(target.empty() ? name : target).find(anchor), std::string::npos)
                << name << ": " << link;
        }
    }
}
