#include "house/source_tree.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace tarnwick::house {

std::vector<std::string> sourceFiles(const std::string& folder) {
    const fs::path root = TARNWICK_SOURCE_FOLDER;
    std::vector<std::string> files;
    if (!fs::exists(root / folder)) return files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / folder)) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".cpp" || extension == ".h"))
            files.push_back(fs::relative(entry.path(), root).generic_string());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<Include> includesOf(const std::string& file) {
    std::ifstream in(fs::path(TARNWICK_SOURCE_FOLDER) / file);
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

std::string firstPart(const std::string& path) { return path.substr(0, path.find('/')); }

std::string afterFirstPart(const std::string& path) {
    const std::size_t slash = path.find('/');
    return slash == std::string::npos ? std::string() : path.substr(slash + 1);
}

}  // namespace tarnwick::house
