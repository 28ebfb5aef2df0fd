// The help as it was built, beside the program. Run where the program lies.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>

#include "engine/process/HelpTopics.h"

namespace {

struct Topic {
    std::uint32_t number;
    std::string page;
};

const Topic kTopics[] = {
#define NXCLIP_HELP_TOPIC(name, number, page) {number, page},
    NXCLIP_HELP_TOPICS
#undef NXCLIP_HELP_TOPIC
};

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

// What a reader of the help file finds in it, by the layout of such files: a header with the directory's
// offset, a directory of internal files, and in them the topics by the hash of their keyword and by number.
class HelpFile {
 public:
    HelpFile() : bytes_(FileContent("Nxclip.hlp")) {}

    template <typename Number>
    Number At(std::size_t offset) const {
        Number number{};
        if (offset + sizeof number > bytes_.size())
            throw std::out_of_range("the help file ends before " + std::to_string(offset));
        std::memcpy(&number, bytes_.data() + offset, sizeof number);
        return number;
    }

    // The content of an internal file; the directory is a tree of one page.
    std::size_t Find(const std::string& name) const {
        const std::size_t page = At<std::uint32_t>(4) + 9 + 38;
        std::size_t place = page + 8;
        for (int left = At<std::uint16_t>(page + 2); left > 0; --left) {
            const std::string here = bytes_.c_str() + place;
            if (here == name) return At<std::uint32_t>(place + here.size() + 1) + 9;
            place += here.size() + 5;
        }
        ADD_FAILURE() << "the help file has no " << name;
        return bytes_.size();
    }

    std::map<std::uint32_t, std::uint32_t> TopicsByNumber() const {
        return Pairs(Find("|CTXOMAP") + 2, At<std::uint16_t>(Find("|CTXOMAP")));
    }

    std::map<std::uint32_t, std::uint32_t> TopicsByHash() const {
        const std::size_t tree = Find("|CONTEXT");
        const std::size_t pageSize = At<std::uint16_t>(tree + 4);
        const int levels = At<std::uint16_t>(tree + 32);
        const auto place = [&](std::size_t page) { return tree + 38 + page * pageSize; };
        std::size_t page = At<std::uint16_t>(tree + 26);
        for (int level = 1; level < levels; ++level)
            page = At<std::uint16_t>(place(page) + 4);
        std::map<std::uint32_t, std::uint32_t> all;
        for (; page != 0xFFFF; page = At<std::uint16_t>(place(page) + 6))
            all.merge(Pairs(place(page) + 8, At<std::uint16_t>(place(page) + 2)));
        return all;
    }

 private:
    std::map<std::uint32_t, std::uint32_t> Pairs(std::size_t place, int count) const {
        std::map<std::uint32_t, std::uint32_t> pairs;
        for (; count > 0; --count, place += 8)
            pairs[At<std::uint32_t>(place)] = At<std::uint32_t>(place + 4);
        return pairs;
    }

    std::string bytes_;
};

// The viewer's hash of a keyword: letters count from 17, "0" is 10, everything else from its distance to "0".
std::uint32_t HashOf(const std::string& keyword) {
    std::uint32_t hash = 0;
    for (const char c : keyword) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        hash = hash * 43 + (letter ? (c | 0x20) - 'a' + 17 : c == '0' ? 10 : c - '0');
    }
    return hash;
}

}  // namespace

TEST(Help, Topics_HaveAnHtmlPage) {
    const std::set<std::string> names = PageNames();
    for (const Topic& topic : kTopics) {
        ASSERT_TRUE(names.contains(topic.page + ".html")) << topic.page;
        EXPECT_NE(Page(topic.page + ".html").find("<h1>"), std::string::npos) << topic.page;
    }
}

TEST(Help, Topics_OpenTheirPageOfTheHelpFileByNumber) {
    const HelpFile file;
    const auto byNumber = file.TopicsByNumber();
    const auto byHash = file.TopicsByHash();
    std::set<std::uint32_t> places;
    for (const Topic& topic : kTopics) {
        // The first page bears the keyword that the help compiler gives it.
        const std::string keyword = topic.number == 1 ? "Top" : topic.page;
        ASSERT_TRUE(byNumber.contains(topic.number)) << topic.page;
        ASSERT_TRUE(byHash.contains(HashOf(keyword))) << topic.page;
        EXPECT_EQ(byNumber.at(topic.number), byHash.at(HashOf(keyword))) << topic.page;
        EXPECT_TRUE(places.insert(byNumber.at(topic.number)).second) << topic.page << " shares its page";
    }
    EXPECT_EQ(byNumber.size(), std::size(kTopics));
}

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

TEST(Help, Pages_AreCompleteAndGerman) {
    for (const std::string& name : PageNames()) {
        const std::string page = Page(name);
        EXPECT_NE(page.find("<html lang=\"de\">"), std::string::npos) << name;
        EXPECT_EQ(page.find("[[bild:"), std::string::npos) << name << " shows a mark instead of a picture";
        EXPECT_EQ(page.find("\\R{"), std::string::npos) << name << " shows a command of its source";
        EXPECT_EQ(page.find("<!--inhalt-->"), std::string::npos) << name << " lacks the contents";
    }
}

TEST(Help, Options_AreAllExplained) {
    const std::string page = Page("optionen.html");
    for (const char* caption : {"Immer im Vordergrund",
                                "Signalton nach Erfassen",
                                "Dialogbox nach Erfassen eines Clips",
                                "Symbol nach Erfassen und Dialog",
                                "Anzeige in der Tray-Bar",
                                "Bei Programmstart als Symbol darstellen",
                                "Tooltips anzeigen",
                                "Strukturaktionen sperren",
                                "Begrüßungsfenster bei Programmstart",
                                "Automatische Erfassung",
                                "Formatname",
                                "Text aus Clip mit",
                                "Übernahme durch Doppelklick",
                                "Symbol nach Übernahme",
                                "Signalton nach Übernahme in Zwischenablage",
                                "Maximale Formatlänge",
                                "Anlegen mit Namen",
                                "Ignorieren",
                                "Sicherung unbekannter Formatsätze",
                                "RFT",
                                "DIB",
                                "Bitmap",
                                "Ole",
                                "Alles sichern",
                                "Aktivieren durch Tastenkombination",
                                "Namensvorgaben für neue Clips",
                                "Nummerierung mit Prefix"})
        EXPECT_NE(page.find(caption), std::string::npos) << caption;
    EXPECT_EQ(AllMatches(page, "<h2>(?:<a name=\"[^\"]*\"></a>)?([^<]*)<"),
              (std::set<std::string>{"Allgemein", "Clipboard", "Formatsätze", "Info"}));
}
