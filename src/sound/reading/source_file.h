#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace tarnwick::sound {

// A file held open for positioned reads, or a nameless scratch file that is filled first. Reads and
// writes of distinct places may run in several threads at once. Throws SoundError.
class SourceFile {
  public:
    // An existing file, for reading. Throws NotFound.
    static std::shared_ptr<const SourceFile> open(const std::filesystem::path& path);
    // A new file of `bytes` in the temporary folder that has no name, so that it goes with the
    // process however that ends. Throws NoSpace when the folder has no room for it.
    static std::shared_ptr<SourceFile> scratch(std::int64_t bytes);

    ~SourceFile();
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    std::int64_t size() const { return size_; }  // bytes when it was opened

    // Reads up to bytes.size() from `offset`; returns what there is. Throws Damaged.
    std::size_t readSome(std::int64_t offset, std::span<std::uint8_t> bytes) const;
    // Reads all of them. Throws SourceChanged when the file has become shorter, else Damaged.
    void read(std::int64_t offset, std::span<std::uint8_t> bytes) const;
    // Throws NoSpace.
    void write(std::int64_t offset, std::span<const std::uint8_t> bytes);

    // Throws SourceChanged when size or time stamp differ from those at opening.
    void checkUnchanged() const;

  private:
    SourceFile(int descriptor, bool scratch);

    int descriptor_;
    bool scratch_;
    std::int64_t size_ = 0;
    struct ::timespec modified_ = {};
};

}  // namespace tarnwick::sound
