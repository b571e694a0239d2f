#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace tarnwick::sound {

// A file that appears under its name only when it is complete and safely on disk.
//
// Data goes to a file without a name in the target's folder or, if the file system does not support
// that, to a hidden one that is removed with the AtomicFile. commit() flushes it and replaces the
// target with it. Until then, and after any failure, the old file is untouched. A different file
// that has taken the target's name in the meantime is not replaced, as it was not the one meant. If
// the target is a symbolic link, the file it points to is written. Used by one thread.
class AtomicFile {
  public:
    enum class Temporary { Nameless, Hidden };

    // Opens the temporary file. `Hidden` does not try a file without a name. Throws
    // SoundError(WriteFailed) if the folder does not exist or is not writable, or if the target is
    // write-protected, a dangling link or not a regular file.
    explicit AtomicFile(std::filesystem::path target, Temporary temporary = Temporary::Nameless);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Appends. Throws SoundError: NoSpace or WriteFailed.
    void write(const void* data, std::size_t bytes);

    // Overwrites bytes written earlier; write() continues at the end. Throws like write().
    void writeAt(std::int64_t offset, const void* data, std::size_t bytes);

    std::int64_t size() const { return size_; }  // bytes appended so far

    // For libraries that write through a descriptor (read and write, positioned at the start).
    // Owned by the AtomicFile.
    int descriptor() const { return descriptor_; }

    // Replaces the target. Must be the last call, and only once. Throws like write(); the old file
    // then stays, unless only flushing the folder failed, which comes after the replacement.
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
    std::filesystem::path hidden_;  // empty while the temporary file has no name
    int replaced_ = -1;  // the old target, held open so that its inode number is not reused
    int descriptor_ = -1;
    std::int64_t size_ = 0;
    std::int64_t flushing_ = 0;  // bytes that the system was already told to write to disk
};

}  // namespace tarnwick::sound
