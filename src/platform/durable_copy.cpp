#include "platform/durable_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

#include "platform/descriptor.h"

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;

constexpr int kNameTries = 100;

std::error_code lastError() { return {errno, std::generic_category()}; }

bool isTaken(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

std::error_code writeAll(int target, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = TEMP_FAILURE_RETRY(::write(target, bytes, count));
        if (written < 0) return lastError();
        if (written == 0) return std::make_error_code(std::errc::no_space_on_device);
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return {};
}

void copyDate(int source, int target) {
    struct stat state {};
    if (::fstat(source, &state) != 0) return;
    const timespec times[] = {{.tv_sec = 0, .tv_nsec = UTIME_OMIT}, state.st_mtim};
    ::futimens(target, times);
}

// Copies the rest of the source through memory.
std::error_code copyByHand(int source, int target) {
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const ssize_t got = TEMP_FAILURE_RETRY(::read(source, buffer.data(), buffer.size()));
        if (got <= 0) return got == 0 ? std::error_code{} : lastError();
        if (const auto error = writeAll(target, buffer.data(), static_cast<std::size_t>(got)))
            return error;
    }
}

// Lets the kernel copy, which shares the blocks where the file system can, or copies on the file
// server. What it does not copy, for whatever reason, is left to copyByHand.
void copyInKernel(int source, int target) {
    constexpr std::size_t kAtOnce = 1 << 30;
    while (TEMP_FAILURE_RETRY(::copy_file_range(source, nullptr, target, nullptr, kAtOnce, 0)) >
           0) {
    }
}

// Copies all bytes and, where the file system allows it, the date of last modification.
std::error_code copyContent(int source, int target) {
    copyInKernel(source, target);
    if (const auto error = copyByHand(source, target)) return error;
    copyDate(source, target);
    return ::fsync(target) == 0 ? std::error_code{} : lastError();
}

// Flushes the folder entry of a file that was just named. Some network file systems cannot flush a
// folder; they write in an order of their own.
std::error_code flushFolder(const fs::path& file) {
    const Descriptor folder(file.parent_path(), O_RDONLY | O_DIRECTORY);
    if (folder.valid() && ::fsync(folder.number()) != 0 && errno != EINVAL && errno != ENOTSUP)
        return lastError();
    return {};
}

// A hidden name beside the target for a file that is still being written; always short enough.
fs::path hiddenBeside(const fs::path& target) {
    static unsigned count{};
    std::string name(".tarnwick-");
    name.append(std::to_string(::getpid())).append(1, '-').append(std::to_string(++count));
    return target.parent_path() / name;
}

// Makes a file under an unused hidden name and stores that name in `hidden`.
template <class Make>
std::error_code makeHidden(const fs::path& target, fs::path& hidden, Make make) {
    for (int tried = 0; tried < kNameTries; ++tried) {
        const fs::path name = hiddenBeside(target);
        if (make(name)) {
            hidden = name;
            return {};
        }
        if (errno != EEXIST) break;
    }
    return lastError();
}

bool nameFile(int file, const fs::path& name) {
    const std::string open = std::string("/proc/self/fd/").append(std::to_string(file));
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// Copies into a file that is called `hidden` when it is complete. Where the file system supports
// it, the file has no name until then, so that even a killed process leaves nothing behind.
std::error_code copyHidden(int source, const fs::path& target, mode_t mode, fs::path& hidden) {
    const Descriptor nameless(target.parent_path(), O_WRONLY | O_TMPFILE, mode);
    if (nameless.valid()) {
        const std::error_code error = copyContent(source, nameless.number());
        if (error) return error;
        return makeHidden(target, hidden,
                          [&](const fs::path& name) { return nameFile(nameless.number(), name); });
    }
    Descriptor named;
    const std::error_code error = makeHidden(target, hidden, [&](const fs::path& name) {
        return named.open(name, O_WRONLY | O_CREAT | O_EXCL, mode);
    });
    return error ? error : copyContent(source, named.number());
}

std::error_code renameOver(const fs::path& from, const fs::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? std::error_code{} : lastError();
}

std::error_code renameUnlessTaken(const fs::path& from, const fs::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EINVAL) return lastError();
    // This file system has no such atomic operation, so test first.
    return isTaken(to) ? std::make_error_code(std::errc::file_exists) : renameOver(from, to);
}

}  // namespace

std::error_code copyDurably(const fs::path& from, const fs::path& to, IfTaken ifTaken) {
    // Without O_NONBLOCK, opening a pipe could wait forever.
    const Descriptor source(from, O_RDONLY | O_NONBLOCK);
    if (!source.valid()) return lastError();
    struct stat state {};
    if (::fstat(source.number(), &state) != 0) return lastError();
    if (S_ISDIR(state.st_mode)) return std::make_error_code(std::errc::no_such_file_or_directory);
    if (!S_ISREG(state.st_mode)) return std::make_error_code(std::errc::invalid_argument);

    fs::path hidden;
    std::error_code error = copyHidden(source.number(), to, state.st_mode & 0777, hidden);
    if (!error)
        error =
            ifTaken == IfTaken::Replace ? renameOver(hidden, to) : renameUnlessTaken(hidden, to);
    if (error) {
        if (!hidden.empty()) ::unlink(hidden.c_str());
        return error;
    }
    return flushFolder(to);
}

std::error_code moveWithoutOverwriting(const fs::path& from, const fs::path& to) {
    std::error_code error = renameUnlessTaken(from, to);
    if (error != std::errc::cross_device_link) return error;
    if ((error = copyDurably(from, to, IfTaken::Fail))) return error;
    fs::remove(from, error);
    return error;
}

}  // namespace tarnwick::platform
