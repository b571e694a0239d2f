#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tarnwick::sound {

// A file that appears under its name only when it is complete and safely on disk.
//
// What is written goes to a file without a name in the target's folder, or, where the file system
// has no such thing, to a hidden one that is removed when the AtomicFile goes. commit() flushes it
// and puts it in the place of what stood there. Until then, and after any failure, the old file is
// untouched. So is another one that has taken the target's name in the meantime: somebody renamed
// files, and that one was never meant. Where the target is a symbolic link, the file that it names
// is the target. Used by one thread.
class AtomicFile {
  public:
    enum class Temporary { Nameless, Hidden };

    // Opens the temporary file. `Hidden` does without the nameless kind. Throws
    // SoundError(WriteFailed) when the folder is not there or not to be written to, or when the
    // target is write-protected, a link that leads nowhere or there but no regular file.
    explicit AtomicFile(std::filesystem::path target, Temporary temporary = Temporary::Nameless);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Appends. Throws SoundError: NoSpace or WriteFailed.
    void write(const void* data, std::size_t bytes);

    // Overwrites bytes written earlier; write() goes on at the end. Throws like write().
    void writeAt(std::int64_t offset, const void* data, std::size_t bytes);

    std::int64_t size() const { return size_; }  // bytes appended so far

    // For libraries that write through a descriptor (read and write, positioned at the start).
    // The AtomicFile keeps it.
    int descriptor() const { return descriptor_; }

    // Makes the file the target. Once only, last. Throws like write(); the old file then stays,
    // unless only the flush of the folder failed, which comes after the new file has its place.
    void commit();

  private:
    void openTarget();
    void openTemporary(Temporary temporary);
    bool isTakenByAnother() const;
    void takePlace();
    void discard() noexcept;
    [[noreturn]] void fail(int error, const char* what);

    std::filesystem::path target_;
    std::filesystem::path folder_;
    std::filesystem::path hidden_;  // empty while the temporary has no name
    int replaced_ = -1;  // what the target was at first, held so that its number stays its own
    int descriptor_ = -1;
    std::int64_t size_ = 0;
    std::int64_t flushing_ = 0;  // bytes that the system was already told to bring to disk
};

}  // namespace tarnwick::sound
