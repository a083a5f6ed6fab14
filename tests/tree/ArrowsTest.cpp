// Dependencies between the folders of src point one way. What a folder may include, of ours and of
// the toolkits, is the table below; an include that is not in it fails.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace ambulet {

namespace {

using Names = std::set<std::string>;

struct Arrows {
    Names folders;  // of src
    Names
        toolkits;  // what the header's name says: "Qt", "unicode", "expat", "CoreFoundation", "xcb"
};

const std::map<std::string, Arrows> allowed = {
    {"model", {{}, {}}},
    {"text", {{}, {"unicode"}}},
    {"import", {{"model", "import/steps", "import/xml", "import/expat", "import/fast"}, {}}},
    {"import/steps", {{"model", "text", "import/xml"}, {}}},
    {"import/xml", {{}, {}}},
    {"import/expat", {{"import/xml"}, {"expat", "unicode"}}},
    {"import/fast", {{"import/steps", "import/xml"}, {}}},
    {"platform", {{}, {"Qt", "CoreFoundation"}}},
    {"widgets", {{}, {"Qt"}}},
    {"mainwindow", {{"model", "text", "import", "platform", "widgets"}, {"Qt"}}},
    {"help", {{"platform", "widgets"}, {"Qt"}}},
    {"about", {{"platform", "widgets"}, {"Qt"}}},
    {"app", {{"platform", "widgets", "mainwindow", "help", "about"}, {"Qt", "xcb"}}},
};

// The toolkit that a system header belongs to, or nothing for the standard library's and the
// operating system's own.
std::string toolkitOf(const std::string& header) {
    static const std::regex qt("^Q[A-Z].*|^qt.*|^Qt.*");
    if (std::regex_match(header, qt)) {
        return "Qt";
    }
    for (const char* toolkit : {"unicode", "expat", "CoreFoundation", "xcb"}) {
        if (header.rfind(toolkit, 0) == 0) {
            return toolkit;
        }
    }
    return {};
}

std::vector<std::string> forbiddenIncludes(const std::string& folder, std::istream& source) {
    static const std::regex include(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    const Arrows& arrows = allowed.at(folder);
    std::vector<std::string> found;
    std::string line;
    while (std::getline(source, line)) {
        std::smatch match;
        if (!std::regex_match(line, match, include)) {
            continue;
        }
        const std::string header = match[2];
        if (match[1] == "<") {
            const std::string toolkit = toolkitOf(header);
            if (!toolkit.empty() && !arrows.toolkits.contains(toolkit)) {
                found.push_back(header);
            }
        } else if (header.rfind("ui_", 0) != 0 && header.find(".moc") == std::string::npos) {
            const std::string target = header.substr(0, header.rfind('/'));
            if (target != folder && !arrows.folders.contains(target)) {
                found.push_back(header);
            }
        }
    }
    return found;
}

TEST(Arrows, everyIncludeFollowsThem) {
    int sources = 0;
    const std::filesystem::path root = std::filesystem::path(SOURCE_FOLDER) / "src";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string kind = entry.path().extension();
        if (kind != ".h" && kind != ".cpp" && kind != ".mm") {
            continue;
        }
        ++sources;
        const auto relative = std::filesystem::relative(entry.path(), root);
        const std::string folder = relative.parent_path();
        ASSERT_TRUE(allowed.contains(folder)) << folder << " has no arrows yet";
        std::ifstream source(entry.path());
        for (const std::string& header : forbiddenIncludes(folder, source)) {
            ADD_FAILURE() << relative.string() << " may not include " << header;
        }
    }
    EXPECT_GT(sources, 0);
}

TEST(Arrows, aForbiddenIncludeIsFound) {
    std::istringstream source("#include <QString>\n#include \"mainwindow/MainWindowController.h\"\n"
                              "#include \"model/DailySteps.h\"\n#include <vector>\n");
    const std::vector<std::string> expected = {"QString", "mainwindow/MainWindowController.h"};
    EXPECT_EQ(forbiddenIncludes("import", source), expected);
}

}  // namespace

}  // namespace ambulet
