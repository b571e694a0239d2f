#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace tarnwick::house {

// One #include line of a source file.
struct Include {
    std::string file;    // the file with the line, relative to the source folder: "src/room/a.cpp"
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
            includes.push_back({file, line.substr(begin, end - begin), opening == '"'});
    }
    return includes;
}

}  // namespace tarnwick::house
