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

// Which room may include which. The build enforces most of it by linking; this also sees what
// comes in through a third room, and keeps the build's own declarations and the page honest.

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

// The sound editor's contract: all that the widgets may know of the engine, and free of the sound
// rooms itself.
const Rooms kContract = {"sound_editor.h", "effects.h",  "encode_formats.h",
                         "sound_events.h", "waveform.h", "waveform_settings.h"};

// A path below src/, or what an include names: "sound/samples/peaks.h".
struct Place {
    std::string room;
    std::string name;  // behind the room
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
    if (!kMayUse.at(from.room).contains(to->room)) return "is a forbidden arrow";
    if (from.room == "widgets" && !isContract(*to)) return "reaches behind the contract";
    return {};
}

// The table as the build has it: each line a room and those that it is given.
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

// What stands between backticks.
std::vector<std::string> namesIn(const std::string& cell) {
    std::vector<std::string> names;
    std::istringstream parts(cell);
    for (std::string plain, name;
         std::getline(parts, plain, '`') && std::getline(parts, name, '`');)
        names.push_back(name);
    return names;
}

// The table as the page shows it: | `room` | what lives there | `room`, `room` |. A row that begins
// with "as `room`" has the other's rooms, too.
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

TEST(Rooms, includeOnlyWhatTheirRowNames) {
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

TEST(Rooms, areTheSameInTheBuildAndOnThePage) {
    for (const Table& table : {declaredTable(), shownTable()}) {
        std::vector<std::pair<std::string, Rooms>> different;  // rows of either
        std::set_symmetric_difference(table.begin(), table.end(), kMayUse.begin(), kMayUse.end(),
                                      std::back_inserter(different));
        EXPECT_TRUE(different.empty()) << testing::PrintToString(different);
    }
}

TEST(Rooms, formNoCircle) {
    // Rooms that use none of those left are taken away until there is no such room.
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
