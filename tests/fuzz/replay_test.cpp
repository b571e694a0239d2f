#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "targets.h"

namespace tarnwick::fuzz {
namespace {

// Runs every file of the test data, complete and truncated, through every target. Earlier finds of
// the fuzzers (fuzz-finds) must stay fixed, and a reader must refuse files of another kind.
TEST(Replay, EveryTargetSurvivesEveryFile) {
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(TARNWICK_TEST_DATA)) {
        if (!entry.is_regular_file()) continue;
        ++files;
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        for (const Target& target : kTargets)
            for (const std::size_t part : {0, 1, 30, 99, 100})
                EXPECT_NO_THROW(target.run({reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                            bytes.size() * part / 100}))
                    << target.name << " on " << part << " % of " << entry.path();
    }
    EXPECT_GT(files, 0);
}

}  // namespace
}  // namespace tarnwick::fuzz
