#include "support/failing_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <string>

namespace tarnwick::test {

namespace {

std::mutex& guard() {
    static std::mutex mutex;
    return mutex;
}

FailingCalls* current = nullptr;  // guarded by guard()

}  // namespace

FailingCalls::FailingCalls(std::filesystem::path below, unsigned oneIn, unsigned seed)
    : below_(std::move(below)), oneIn_(oneIn), random_(seed) {
    const std::lock_guard lock(guard());
    current = this;
}

FailingCalls::~FailingCalls() {
    const std::lock_guard lock(guard());
    current = nullptr;
}

QStringList FailingCalls::failed() const {
    const std::lock_guard lock(guard());
    return failed_;
}

int FailingCalls::draw(const char* call, const std::filesystem::path& file, int error) {
    const std::lock_guard lock(guard());
    if (current == nullptr || !file.native().starts_with(current->below_.native())) return 0;
    if (current->random_() % current->oneIn_ != 0) return 0;
    current->failed_ << QString::fromStdString(std::string(call) + ' ' + file.filename().native() +
                                               ": " + std::strerror(error));
    return error;
}

}  // namespace tarnwick::test

namespace {

using tarnwick::test::FailingCalls;

template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

std::filesystem::path pathOf(int descriptor) {
    std::array<char, 4096> path;
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return std::string(path.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
}

bool fails(const char* call, const std::filesystem::path& file, int error) {
    const int drawn = FailingCalls::draw(call, file, error);
    if (drawn != 0) errno = drawn;
    return drawn != 0;
}

bool writes(int flags) { return (flags & O_ACCMODE) != O_RDONLY; }

mode_t modeOf(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

// The C library's functions, each of which may fail before it calls the real one.
extern "C" {

int open(const char* path, int flags, ...) {
    static auto* const real = next<int(const char*, int, ...)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (writes(flags) && fails("open", path, EACCES)) return -1;
    return real(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    static auto* const real = next<int(const char*, int, ...)>("open64");
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    if (writes(flags) && fails("open", path, EACCES)) return -1;
    return real(path, flags, mode);
}

ssize_t write(int file, const void* bytes, size_t count) {
    static auto* const real = next<ssize_t(int, const void*, size_t)>("write");
    return fails("write", pathOf(file), ENOSPC) ? -1 : real(file, bytes, count);
}

ssize_t pwrite(int file, const void* bytes, size_t count, off_t offset) {
    static auto* const real = next<ssize_t(int, const void*, size_t, off_t)>("pwrite");
    return fails("write", pathOf(file), ENOSPC) ? -1 : real(file, bytes, count, offset);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t offset) {
    static auto* const real = next<ssize_t(int, const void*, size_t, off64_t)>("pwrite64");
    return fails("write", pathOf(file), ENOSPC) ? -1 : real(file, bytes, count, offset);
}

// Sends every copy to the reads and writes that can fail.
ssize_t copy_file_range(int, off64_t*, int, off64_t*, size_t, unsigned) {
    errno = EXDEV;
    return -1;
}

int fsync(int file) {
    static auto* const real = next<int(int)>("fsync");
    return fails("fsync", pathOf(file), EIO) ? -1 : real(file);
}

int fdatasync(int file) {
    static auto* const real = next<int(int)>("fdatasync");
    return fails("fsync", pathOf(file), EIO) ? -1 : real(file);
}

int rename(const char* from, const char* to) noexcept {
    static auto* const real = next<int(const char*, const char*)>("rename");
    return fails("rename", to, EACCES) ? -1 : real(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept {
    static auto* const real = next<int(int, const char*, int, const char*, unsigned)>("renameat2");
    return fails("rename", to, EACCES) ? -1 : real(fromFolder, from, toFolder, to, flags);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    static auto* const real = next<int(int, const char*, int, const char*, int)>("linkat");
    return fails("rename", to, EACCES) ? -1 : real(fromFolder, from, toFolder, to, flags);
}

}  // extern "C"
