#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "house/source_tree.h"

// Which room may include which. The build enforces most of it by linking; this also sees what
// comes in through a third room, and keeps the build's own declarations honest.

namespace tarnwick::house {
namespace {

using Rooms = std::set<std::string>;

const Rooms kBehaviour = {"forms",    "engine",  "settings", "documents",
                          "platform", "runtime", "model"};

const std::map<std::string, Rooms> kMayUse = {
    {"model", {}},
    {"runtime", {"model"}},
    {"platform", {"runtime"}},
    {"settings", {"runtime"}},
    {"documents", {"runtime"}},
    {"sound", {}},
    {"engine", {"sound", "runtime"}},
    {"widgets", {"engine"}},
    {"forms", {"widgets", "model", "runtime"}},
    {"project", kBehaviour},
    {"segmentation", kBehaviour},
    {"batch", kBehaviour},
    {"rename", kBehaviour},
    {"app",
     {"model", "runtime", "platform", "settings", "documents", "sound", "engine", "widgets",
      "forms", "project", "segmentation", "batch", "rename"}},
};

// The sound editor's contract: all that the widgets may know of the engine, and free of the sound
// room itself.
const Rooms kContract = {"sound_editor.h", "effects.h",  "encode_formats.h",
                         "sound_events.h", "waveform.h", "waveform_settings.h"};

// <QString>, <QtGlobal>, <qglobal.h>
bool namesQt(const std::string& target) {
    return target.size() > 1 && (target[0] == 'Q' || (target[0] == 'q' && target.ends_with(".h")));
}

std::string faultOf(const Include& include) {
    const std::string inRoom = afterFirstPart(include.file);  // behind "src/"
    const std::string room = firstPart(inRoom);
    const std::string target = firstPart(include.target);
    const bool isRoom = kMayUse.contains(target) && !afterFirstPart(include.target).empty();
    if (!isRoom) {
        if (include.quoted && !include.target.ends_with(".moc"))
            return "is not named as \"room/header.h\"";
        if (room == "sound" && namesQt(include.target)) return "brings Qt into the sound room";
        return {};
    }
    if (room == "engine" && kContract.contains(afterFirstPart(inRoom)) &&
        !(target == "engine" && kContract.contains(afterFirstPart(include.target))))
        return "is no part of the contract";
    if (target == room) return {};
    if (!kMayUse.at(room).contains(target)) return "is a forbidden arrow";
    if (room == "widgets" && !kContract.contains(afterFirstPart(include.target)))
        return "reaches behind the contract";
    return {};
}

// room -> rooms that the build gives it.
std::map<std::string, Rooms> declaredRooms() {
    std::ifstream in(TARNWICK_BUILD_FOLDER "/rooms.txt");
    std::map<std::string, Rooms> declared;
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

TEST(Rooms, includeOnlyWhatTheirRowNames) {
    const std::vector<std::string> files = sourceFiles("src");
    ASSERT_GT(files.size(), 10u);
    for (const std::string& file : files) {
        ASSERT_TRUE(kMayUse.contains(firstPart(afterFirstPart(file)))) << file << " is in no room";
        for (const Include& include : includesOf(file)) {
            const std::string fault = faultOf(include);
            EXPECT_TRUE(fault.empty()) << file << ": " << include.target << " " << fault;
        }
    }
}

TEST(Rooms, areDeclaredToTheBuildAsInTheTable) {
    const std::map<std::string, Rooms> declared = declaredRooms();
    for (const auto& [room, allowed] : kMayUse)
        EXPECT_TRUE(declared.contains(room)) << room << " is not built";
    for (const auto& [room, uses] : declared) {
        ASSERT_TRUE(kMayUse.contains(room)) << room << " is not in the table";
        for (const std::string& used : uses)
            EXPECT_TRUE(kMayUse.at(room).contains(used)) << room << " is given " << used;
    }
}

}  // namespace
}  // namespace tarnwick::house
