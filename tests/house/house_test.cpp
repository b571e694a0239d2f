#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace tarnwick::house {
namespace {

// One #include line of a source file.
struct Include {
    std::string target;  // the included header, without brackets or quotes
    bool quoted = false;
};

// All .cpp and .h files under a folder of the project ("src"), relative to the source folder,
// sorted. Empty if there is no such folder; callers must treat that as an error.
inline std::vector<std::string> sourceFiles(const std::string& folder) {
    const std::filesystem::path root = TARNWICK_SOURCE_FOLDER;
    std::vector<std::string> files;
    if (!std::filesystem::exists(root / folder)) return files;
    for (const std::filesystem::directory_entry& entry :
         std::filesystem::recursive_directory_iterator(root / folder)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".cpp" || extension == ".h"))
            files.push_back(std::filesystem::relative(entry.path(), root).generic_string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

inline std::vector<Include> includesOf(const std::string& file) {
    std::ifstream in(std::filesystem::path(TARNWICK_SOURCE_FOLDER) / file);
    std::vector<Include> includes;
    for (std::string line; std::getline(in, line);) {
        std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
        const std::string directive = "#include";
        if (!line.starts_with(directive) || line.size() < directive.size() + 2) continue;
        const char opening = line[directive.size()];
        const std::size_t begin = directive.size() + 1;
        const std::size_t end = line.find(opening == '"' ? '"' : '>', begin);
        if (end != std::string::npos)
            includes.push_back({line.substr(begin, end - begin), opening == '"'});
    }
    return includes;
}

// Checks which room includes which. The build enforces most of it by linking; this test also finds
// includes that work only through a third room, and compares the table with the build's
// declarations and the architecture page.

using Rooms = std::set<std::string>;
using Table = std::map<std::string, Rooms>;

// The sound editor's contract. The widgets may include only these engine headers, and these headers
// must not include the sound rooms.
const Rooms kContract = {"sound_editor.h", "effects.h",          "encode_formats.h",
                         "failure.h",      "silence_ms.h",       "sound_events.h",
                         "waveform.h",     "waveform_settings.h"};

// A path below src/, or the target of an include: "sound/samples/peaks.h".
struct Place {
    std::string room;
    std::string name;  // the rest after the room
};

std::optional<Place> placeOf(const Table& table, const std::string& path) {
    for (const auto& [room, allowed] : table)
        if (path.starts_with(room + "/")) return Place{room, path.substr(room.size() + 1)};
    return {};
}

// <QString>, <QtGlobal>, <qglobal.h>
bool namesQt(const std::string& target) {
    return target.size() > 1 && (target[0] == 'Q' || (target[0] == 'q' && target.ends_with(".h")));
}

bool isContract(const Place& place) {
    return place.room == "engine" && kContract.contains(place.name);
}

std::string faultOf(const Table& table, const Place& from, const Include& include) {
    const std::optional<Place> to = placeOf(table, include.target);
    if (!to) {
        if (include.quoted && !include.target.ends_with(".moc"))
            return "is not named as \"room/header.h\"";
        if (from.room.starts_with("sound/") && namesQt(include.target))
            return "brings Qt into a sound room";
        return {};
    }
    if (isContract(from) && !isContract(*to)) return "is no part of the contract";
    if (to->room == from.room) return {};
    if (!table.at(from.room).contains(to->room)) return "is not allowed by the table";
    if (from.room == "widgets" && !isContract(*to)) return "is no header of the contract";
    return {};
}

// The table as the build declares it: each line is a room and the rooms that it may use.
Table declaredTable() {
    std::ifstream in(TARNWICK_BUILD_FOLDER "/rooms.txt");
    Table declared;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string room;
        words >> room;
        for (std::string used; words >> used;)
            declared[room].insert(used);
        declared[room];
    }
    return declared;
}

// The texts between backticks.
std::vector<std::string> namesIn(const std::string& cell) {
    std::vector<std::string> names;
    std::istringstream parts(cell);
    for (std::string plain, name;
         std::getline(parts, plain, '`') && std::getline(parts, name, '`');)
        names.push_back(name);
    return names;
}

// The table on the architecture page: | `room` | what lives there | `room`, `room` |. A last cell
// that begins with "as `room`" includes that room's list.
Table shownTable() {
    std::ifstream in(TARNWICK_SOURCE_FOLDER "/docs/architecture.md");
    Table shown;
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with("| `")) continue;
        std::istringstream cells(line);
        std::string room, purpose, allowed;
        for (std::string* const cell : {&room, &room, &purpose, &allowed})
            std::getline(cells, *cell, '|');
        const std::vector<std::string> names = namesIn(allowed);
        Rooms& rooms = shown[namesIn(room).at(0)];
        if (allowed.starts_with(" as ")) {
            rooms = shown[names.at(0)];
            rooms.insert(names.begin() + 1, names.end());
        } else {
            rooms = {names.begin(), names.end()};
        }
    }
    return shown;
}

TEST(Rooms, includeOnlyAllowedRooms) {
    const Table table = shownTable();
    const std::vector<std::string> files = sourceFiles("src");
    ASSERT_GT(files.size(), 10u);
    for (const std::string& file : files) {
        const std::optional<Place> place = placeOf(table, file.substr(std::string("src/").size()));
        ASSERT_TRUE(place) << file << " is in no room";
        for (const Include& include : includesOf(file)) {
            const std::string fault = faultOf(table, *place, include);
            EXPECT_TRUE(fault.empty()) << file << ": " << include.target << " " << fault;
        }
    }
}

TEST(Rooms, areTheSameInTheBuildAndOnTheArchitecturePage) {
    const Table shown = shownTable(), declared = declaredTable();
    std::vector<std::pair<std::string, Rooms>> different;  // rows in only one of the two
    std::set_symmetric_difference(shown.begin(), shown.end(), declared.begin(), declared.end(),
                                  std::back_inserter(different));
    EXPECT_TRUE(different.empty()) << testing::PrintToString(different);
}

TEST(Rooms, formNoCircle) {
    // Repeatedly remove the rooms that use none of the remaining ones. Only circles would be left.
    Table left = shownTable();
    for (std::size_t before = 0; before != left.size();) {
        before = left.size();
        const Table all = left;
        std::erase_if(left, [&](const auto& row) {
            return std::ranges::none_of(
                row.second, [&](const std::string& used) { return all.contains(used); });
        });
    }
    EXPECT_EQ(left, Table());
}

// Checks that every source and test file is built, and that all code is formatted.

// The full paths of all source files that this build compiles.
std::set<std::string> compiledFiles() {
    std::ifstream in(TARNWICK_BUILD_FOLDER "/compile_commands.json");
    const std::string key = "\"file\": \"";
    std::set<std::string> files;
    for (std::string line; std::getline(in, line);) {
        const std::size_t begin = line.find(key);
        if (begin == std::string::npos) continue;
        const std::size_t from = begin + key.size();
        files.insert(line.substr(from, line.find('"', from) - from));
    }
    return files;
}

TEST(Build, compilesEverySourceFile) {
    const std::set<std::string> compiled = compiledFiles();
    ASSERT_FALSE(compiled.empty());
    for (const char* folder : {"src", "tests"}) {
        for (const std::string& file : sourceFiles(folder)) {
            if (!file.ends_with(".cpp")) continue;
            EXPECT_TRUE(compiled.contains(TARNWICK_SOURCE_FOLDER "/" + file))
                << file << " is not built";
        }
    }
}

TEST(Build, findsEveryFileWellFormatted) {
    std::string command = TARNWICK_CLANG_FORMAT " --dry-run --Werror --style=file";
    for (const char* folder : {"src", "tests", "bench", "fuzz"})
        for (const std::string& file : sourceFiles(folder))
            command += " '" TARNWICK_SOURCE_FOLDER "/" + file + "'";
    command += " 2>&1";
    std::FILE* pipe = popen(command.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::set<std::string> files;
    std::array<char, 4096> part;
    while (std::fgets(part.data(), part.size(), pipe)) {
        const std::string line = part.data();
        // "file:line:column: error: …"
        if (line.find(": error:") != std::string::npos)
            files.insert(line.substr(0, line.find(':')));
    }
    EXPECT_EQ(pclose(pipe), 0) << "not formatted with clang-format: "
                               << testing::PrintToString(files);
}

}  // namespace
}  // namespace tarnwick::house
