#pragma once

#include <string>
#include <vector>

namespace tarnwick::house {

// One #include line of a source file.
struct Include {
    std::string file;    // where it stands, relative to the source folder, "src/room/name.cpp"
    std::string target;  // what it names, without the brackets or quotes
    bool quoted = false;
};

// All .cpp and .h files under a folder of the project ("src"), relative to the source folder,
// sorted. An empty result is an error of the caller's: the tests insist on files.
std::vector<std::string> sourceFiles(const std::string& folder);

std::vector<Include> includesOf(const std::string& file);

// Text up to the first slash, and the rest; the rest is empty without a slash.
std::string firstPart(const std::string& path);
std::string afterFirstPart(const std::string& path);

}  // namespace tarnwick::house
