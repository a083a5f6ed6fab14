// The folders of src depend on each other in one direction only. The CMakeLists.txt of each folder
// declares what the folder may include (ambulet_layer), and CMake writes these declarations to the
// file ARROWS. These tests check every include against that file.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace ambulet {

namespace {

using Names = std::set<std::string>;

struct Arrows {
    Names folders;    // of src
    Names libraries;  // "Qt", or the start of a header's path: "unicode", "expat"
};

using ArrowTable = std::map<std::string, Arrows>;  // by folder

Names words(const std::string& text) {
    std::istringstream stream(text);
    Names found;
    for (std::string word; stream >> word;) {
        found.insert(word);
    }
    return found;
}

ArrowTable readArrows(std::istream& file) {
    ArrowTable table;
    for (std::string line; std::getline(file, line);) {
        std::istringstream fields(line);
        std::string folder;
        std::string folders;
        std::string libraries;
        std::getline(fields, folder, '\t');
        std::getline(fields, folders, '\t');
        std::getline(fields, libraries, '\t');
        table[folder] = {words(folders), words(libraries)};
    }
    return table;
}

ArrowTable declaredArrows() {
    std::ifstream file(ARROWS);
    return readArrows(file);
}

// The folders that `folder` reaches by one or more arrows, and the libraries that `folder` or one
// of them may include.
Arrows reachedFrom(const std::string& folder, const ArrowTable& table) {
    Arrows reached{{}, table.at(folder).libraries};
    std::vector<std::string> next(table.at(folder).folders.begin(), table.at(folder).folders.end());
    while (!next.empty()) {
        const std::string current = next.back();
        next.pop_back();
        if (reached.folders.insert(current).second) {
            const Arrows& arrows = table.at(current);
            reached.libraries.insert(arrows.libraries.begin(), arrows.libraries.end());
            next.insert(next.end(), arrows.folders.begin(), arrows.folders.end());
        }
    }
    return reached;
}

// The library of a header in angle brackets, by its name in `table`. Empty if `table` has no such
// library, as for headers of the standard library and the operating system.
std::string libraryOf(const std::string& header, const ArrowTable& table) {
    static const std::regex qt("^Q[A-Z].*|^qt.*|^Qt.*");
    if (std::regex_match(header, qt)) {
        return "Qt";
    }
    for (const auto& [folder, arrows] : table) {
        for (const std::string& library : arrows.libraries) {
            if (header.starts_with(library)) {
                return library;
            }
        }
    }
    return {};
}

std::vector<std::string> forbiddenIncludes(const std::string& folder, std::istream& source,
                                           const ArrowTable& table) {
    static const std::regex include(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"].*)");
    const Arrows& arrows = table.at(folder);
    std::vector<std::string> found;
    std::string line;
    while (std::getline(source, line)) {
        std::smatch match;
        if (!std::regex_match(line, match, include)) {
            continue;
        }
        const std::string header = match[2];
        if (match[1] == "<") {
            const std::string library = libraryOf(header, table);
            if (!library.empty() && !arrows.libraries.contains(library)) {
                found.push_back(header);
            }
        } else if (!header.starts_with("ui_") && header.find(".moc") == std::string::npos) {
            const std::string target = header.substr(0, header.rfind('/'));
            if (target != folder && !arrows.folders.contains(target)) {
                found.push_back(header);
            }
        }
    }
    return found;
}

TEST(Arrows, everyIncludeFollowsAnArrow) {
    const ArrowTable table = declaredArrows();
    std::set<std::string> folders;
    const std::filesystem::path root = std::filesystem::path(SOURCE_FOLDER) / "src";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string kind = entry.path().extension();
        if (kind != ".h" && kind != ".cpp" && kind != ".mm") {
            continue;
        }
        const auto relative = std::filesystem::relative(entry.path(), root);
        const std::string folder = relative.parent_path();
        folders.insert(folder);
        ASSERT_TRUE(table.contains(folder)) << folder << " is not declared as a layer";
        std::ifstream source(entry.path());
        for (const std::string& header : forbiddenIncludes(folder, source, table)) {
            ADD_FAILURE() << relative.string() << " may not include " << header;
        }
    }
    EXPECT_EQ(folders.size(), table.size());
}

TEST(Arrows, thereIsNoCycle) {
    const ArrowTable table = declaredArrows();
    for (const auto& [folder, arrows] : table) {
        EXPECT_FALSE(reachedFrom(folder, table).folders.contains(folder)) << folder;
    }
}

TEST(Arrows, theTwoReadersDoNotReachEachOther) {
    const ArrowTable table = declaredArrows();
    EXPECT_FALSE(reachedFrom("import/expat", table).folders.contains("import/fast"));
    EXPECT_FALSE(reachedFrom("import/fast", table).folders.contains("import/expat"));
    EXPECT_FALSE(reachedFrom("import/fast", table).libraries.contains("expat"));
}

TEST(Arrows, theImportDoesNotReachQt) {
    EXPECT_FALSE(reachedFrom("import", declaredArrows()).libraries.contains("Qt"));
}

TEST(Arrows, widgetsDoNotReachAnyOtherFolder) {
    EXPECT_EQ(reachedFrom("widgets", declaredArrows()).folders, Names{});
}

TEST(Arrows, aForbiddenIncludeIsDetected) {
    std::istringstream arrows("model\t\t\ntext\t\tunicode\nimport\tmodel\t\nwindow\timport\tQt\n");
    std::istringstream source("#include <QString>\n#include <unicode/calendar.h>\n"
                              "#include \"window/Controller.h\"\n#include \"text/Locale.h\"\n"
                              "#include \"model/DailySteps.h\"\n#include <vector>\n");
    const std::vector<std::string> expected = {"QString", "unicode/calendar.h",
                                               "window/Controller.h", "text/Locale.h"};
    EXPECT_EQ(forbiddenIncludes("import", source, readArrows(arrows)), expected);
}

}  // namespace

}  // namespace ambulet
