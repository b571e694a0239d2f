#include "sound/writing/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <random>
#include <string>
#include <system_error>
#include <utility>

#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

// Each time this many bytes have been written, the system is told to start bringing them to disk,
// so that the flush at the end has little left to do.
constexpr std::int64_t kFlushStep = 8 << 20;

std::string procName(int descriptor) { return "/proc/self/fd/" + std::to_string(descriptor); }

// 64 random bits make a clash with another file practically impossible.
std::filesystem::path randomName(const std::filesystem::path& folder) {
    std::random_device random;
    const std::string first = std::to_string(random()), second = std::to_string(random());
    return folder / (".tarnwick-" + first + "-" + second + ".tmp");
}

void closeIfOpen(int& descriptor) {
    if (descriptor >= 0) close(std::exchange(descriptor, -1));
}

bool makesNameless(int descriptor) { return access(procName(descriptor).c_str(), F_OK) == 0; }

}  // namespace

AtomicFile::AtomicFile(std::filesystem::path target, Temporary temporary)
    : target_(std::move(target)) {
    // The system would use only the part before the null as the name.
    if (target_.native().find('\0') != std::string::npos) fail(EINVAL, "a null in the name");
    std::error_code error;
    if (is_symlink(symlink_status(target_, error))) {
        target_ = canonical(target_, error);
        if (error) fail(error.value(), "the target is a link that leads nowhere");
    }
    folder_ = target_.has_parent_path() ? target_.parent_path() : ".";
    if (!target_.has_filename()) fail(ENOENT, "the target has no name");
    openTarget();
    openTemporary(temporary);
    // The new file gets the permissions of the old one. Fails on file systems without permissions.
    struct stat old;
    if (fstat(replaced_, &old) == 0) static_cast<void>(!fchmod(descriptor_, old.st_mode & 07777));
}

AtomicFile::~AtomicFile() { discard(); }

void AtomicFile::openTarget() {
    replaced_ = open(target_.c_str(), O_PATH | O_CLOEXEC);
    struct stat old;
    if (fstat(replaced_, &old) != 0) return;  // there is none
    // Replacing a device or a pipe would cut off other programs that use it.
    if (S_ISDIR(old.st_mode)) fail(EISDIR, "the target is a folder");
    if (!S_ISREG(old.st_mode)) fail(EEXIST, "the target is no regular file");
    // Replacing a file needs no permission to write it, but a protected file should stay.
    if (access(target_.c_str(), W_OK) != 0) fail(errno, "the target is protected");
}

void AtomicFile::openTemporary(Temporary temporary) {
    if (temporary == Temporary::Nameless) {
        descriptor_ = open(folder_.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
        if (makesNameless(descriptor_)) return;
        closeIfOpen(descriptor_);
    }
    hidden_ = randomName(folder_);
    descriptor_ = open(hidden_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor_ < 0) {
        hidden_.clear();
        fail(errno, "the target's folder cannot be written to");
    }
}

void AtomicFile::write(const void* data, std::size_t bytes) {
    writeAt(size_, data, bytes);
    size_ += static_cast<std::int64_t>(bytes);
    if (size_ - flushing_ >= kFlushStep) {
        sync_file_range(descriptor_, flushing_, size_ - flushing_, SYNC_FILE_RANGE_WRITE);
        flushing_ = size_;
    }
}

void AtomicFile::writeAt(std::int64_t offset, const void* data, std::size_t bytes) {
    const char* next = static_cast<const char*>(data);
    while (bytes > 0) {
        const ssize_t written = TEMP_FAILURE_RETRY(pwrite(descriptor_, next, bytes, offset));
        if (written <= 0) fail(written < 0 ? errno : ENOSPC, "the file cannot be written");
        next += written;
        offset += written;
        bytes -= static_cast<std::size_t>(written);
    }
}

void AtomicFile::commit() {
    // fdatasync also flushes the size.
    if (TEMP_FAILURE_RETRY(fdatasync(descriptor_)) != 0) fail(errno, "the file cannot be flushed");
    takePlace();
    if (close(std::exchange(descriptor_, -1)) != 0) fail(errno, "the file cannot be closed");
    const int folder = open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0) return;  // the folder may be writable but not readable; the file itself is safe
    const bool flushed = fsync(folder) == 0 || errno == EINVAL;
    const int error = errno;
    close(folder);
    if (!flushed) fail(error, "the folder cannot be flushed");
}

bool AtomicFile::isTakenByAnother() const {
    struct stat now, old;
    if (lstat(target_.c_str(), &now) != 0) return false;
    return fstat(replaced_, &old) != 0 || old.st_dev != now.st_dev || old.st_ino != now.st_ino;
}

void AtomicFile::takePlace() {
    if (isTakenByAnother()) fail(EEXIST, "another file has taken the target's name");
    const std::string nameless = procName(descriptor_);
    const auto giveName = [&nameless](const std::filesystem::path& name) {
        return linkat(AT_FDCWD, nameless.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    };
    if (hidden_.empty()) {
        const std::filesystem::path name = randomName(folder_);
        // linkat cannot replace a file. If there is none, the file gets its final name at once.
        if (giveName(target_)) return;
        if (errno != EEXIST || !giveName(name)) fail(errno, "the file cannot be named");
        hidden_ = name;
    }
    if (rename(hidden_.c_str(), target_.c_str()) != 0) fail(errno, "the target cannot be replaced");
    hidden_.clear();
}

void AtomicFile::discard() noexcept {
    if (!hidden_.empty()) unlink(hidden_.c_str());
    hidden_.clear();
    closeIfOpen(descriptor_);
    closeIfOpen(replaced_);
}

void AtomicFile::fail(int error, const char* what) {
    discard();
    constexpr int kFull[] = {ENOSPC, EDQUOT, EFBIG, ENOMEM};
    const bool full = std::ranges::find(kFull, error) != std::end(kFull);
    throw SoundError(full ? SoundFailure::NoSpace : SoundFailure::WriteFailed, what, error);
}

}  // namespace tarnwick::sound
