#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <set>

#include "house/source_tree.h"

// Checks that every source and test file is built, and that all code is formatted.

namespace tarnwick::house {
namespace {

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
