#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "house/source_tree.h"

// Checks which room includes which. The build enforces most of it by linking; this test also finds
// includes that work only through a third room, and compares the table with the build's
// declarations and the architecture page.

namespace tarnwick::house {
namespace {

using Rooms = std::set<std::string>;
using Table = std::map<std::string, Rooms>;

const Rooms kBehaviour = {"forms",    "engine",  "settings", "documents",
                          "platform", "runtime", "model"};

const Table kMayUse = {
    {"model", {}},
    {"runtime", {"model"}},
    {"platform", {"runtime"}},
    {"settings", {"runtime"}},
    {"documents", {"runtime"}},
    {"sound/samples", {}},
    {"sound/reading", {"sound/samples"}},
    {"sound/writing", {"sound/samples"}},
    {"sound/timeline", {"sound/samples", "sound/reading"}},
    {"sound/playback", {"sound/samples"}},
    {"engine",
     {"sound/samples", "sound/reading", "sound/writing", "sound/timeline", "sound/playback",
      "runtime"}},
    {"widgets", {"engine"}},
    {"forms", {"widgets", "model", "runtime"}},
    {"project", kBehaviour},
    {"segmentation", kBehaviour},
    {"batch", kBehaviour},
    {"rename", kBehaviour},
    {"app",
     {"model", "runtime", "platform", "settings", "documents", "engine", "widgets", "forms",
      "project", "segmentation", "batch", "rename"}},
};

// The sound editor's contract. The widgets may include only these engine headers, and these headers
// must not include the sound rooms.
const Rooms kContract = {"sound_editor.h", "effects.h",  "encode_formats.h",
                         "sound_events.h", "waveform.h", "waveform_settings.h"};

// A path below src/, or the target of an include: "sound/samples/peaks.h".
struct Place {
    std::string room;
    std::string name;  // the rest after the room
};

std::optional<Place> placeOf(const std::string& path) {
    for (const auto& [room, allowed] : kMayUse)
        if (path.starts_with(room + "/")) return Place{room, path.substr(room.size() + 1)};
    return {};
}

std::optional<Place> placeOfFile(const std::string& file) {
    return placeOf(file.substr(std::string("src/").size()));
}

// <QString>, <QtGlobal>, <qglobal.h>
bool namesQt(const std::string& target) {
    return target.size() > 1 && (target[0] == 'Q' || (target[0] == 'q' && target.ends_with(".h")));
}

bool isContract(const Place& place) {
    return place.room == "engine" && kContract.contains(place.name);
}

std::string faultOf(const Place& from, const Include& include) {
    const std::optional<Place> to = placeOf(include.target);
    if (!to) {
        if (include.quoted && !include.target.ends_with(".moc"))
            return "is not named as \"room/header.h\"";
        if (from.room.starts_with("sound/") && namesQt(include.target))
            return "brings Qt into a sound room";
        return {};
    }
    if (isContract(from) && !isContract(*to)) return "is no part of the contract";
    if (to->room == from.room) return {};
    if (!kMayUse.at(from.room).contains(to->room)) return "is not allowed by the table";
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
    const std::vector<std::string> files = sourceFiles("src");
    ASSERT_GT(files.size(), 10u);
    for (const std::string& file : files) {
        const std::optional<Place> place = placeOfFile(file);
        ASSERT_TRUE(place) << file << " is in no room";
        for (const Include& include : includesOf(file)) {
            const std::string fault = faultOf(*place, include);
            EXPECT_TRUE(fault.empty()) << file << ": " << include.target << " " << fault;
        }
    }
}

TEST(Rooms, matchTheBuildAndTheArchitecturePage) {
    for (const Table& table : {declaredTable(), shownTable()}) {
        std::vector<std::pair<std::string, Rooms>> different;  // rows in only one of the two
        std::set_symmetric_difference(table.begin(), table.end(), kMayUse.begin(), kMayUse.end(),
                                      std::back_inserter(different));
        EXPECT_TRUE(different.empty()) << testing::PrintToString(different);
    }
}

TEST(Rooms, formNoCircle) {
    // Repeatedly remove the rooms that use none of the remaining ones. Only circles would be left.
    Table left = kMayUse;
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

}  // namespace
}  // namespace tarnwick::house
