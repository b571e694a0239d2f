#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "targets.h"

namespace tarnwick::fuzz {
namespace {

// Every file of the test data, and what is left of it when it ends early, through every target:
// what a fuzzer once found (fuzz-finds) is mended, and what is not for a reader is refused.
TEST(Replay, EveryFileEndsWellInEveryTarget) {
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
