#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

namespace tarnwick::sound {

// A file held open for positioned reads, or a scratch file without a name, which is written first.
// Several threads may read and write different places at once. Throws SoundError.
class SourceFile {
  public:
    // Opens an existing file for reading. Throws NotFound.
    static std::shared_ptr<const SourceFile> open(const std::filesystem::path& path);
    // Creates a file for `bytes` bytes in the temporary folder. It has no name, so it disappears
    // with the process even after a crash. Throws NoSpace if the folder has no room for it.
    static std::shared_ptr<SourceFile> scratch(std::int64_t bytes);

    ~SourceFile();
    SourceFile(const SourceFile&) = delete;
    SourceFile& operator=(const SourceFile&) = delete;

    std::int64_t size() const { return size_; }  // bytes when it was opened

    // Reads up to bytes.size() bytes from `offset`; returns the number read, less only at the end
    // of the file. Throws Damaged.
    std::size_t readSome(std::int64_t offset, std::span<std::uint8_t> bytes) const;
    // Reads bytes.size() bytes. Throws SourceChanged if the file has become shorter, else Damaged.
    void read(std::int64_t offset, std::span<std::uint8_t> bytes) const;
    // Throws NoSpace.
    void write(std::int64_t offset, std::span<const std::uint8_t> bytes);

    // Throws SourceChanged if the size or the time stamp differs from that at opening.
    void checkUnchanged() const;

  private:
    SourceFile(int descriptor, bool scratch);

    int descriptor_;
    bool scratch_;
    std::int64_t size_ = 0;
    struct ::timespec modified_ = {};
};

}  // namespace tarnwick::sound
