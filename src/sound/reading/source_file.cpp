#include "sound/reading/source_file.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>

#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

// Space that a scratch file leaves free for other programs.
constexpr std::int64_t kSpareBytes = 16 << 20;

int openNameless(const std::filesystem::path& folder) {
#ifdef O_TMPFILE
    const int descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor >= 0) return descriptor;
#endif
    std::string name = (folder / ".tarnwick-XXXXXX").string();
    const int named = ::mkostemp(name.data(), O_CLOEXEC);
    if (named >= 0) ::unlink(name.c_str());
    return named;
}

}  // namespace

SourceFile::SourceFile(int descriptor, bool scratch) : descriptor_(descriptor), scratch_(scratch) {
    struct ::stat state = {};
    if (::fstat(descriptor_, &state) == 0) {
        size_ = state.st_size;
        modified_ = state.st_mtim;
    }
}

SourceFile::~SourceFile() { ::close(descriptor_); }

std::shared_ptr<const SourceFile> SourceFile::open(const std::filesystem::path& path) {
    // Without O_NONBLOCK, opening a named pipe would wait for a writer.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        throw SoundError(SoundFailure::NotFound, "the file cannot be opened", errno);
    std::shared_ptr<const SourceFile> file(new SourceFile(descriptor, false));
    struct ::stat state = {};
    if (::fstat(descriptor, &state) != 0 || !S_ISREG(state.st_mode))
        throw SoundError(SoundFailure::NotASound, "not a regular file");
    return file;
}

std::shared_ptr<SourceFile> SourceFile::scratch(std::int64_t bytes) {
    std::error_code failed;
    const std::filesystem::path folder = std::filesystem::temp_directory_path(failed);
    struct ::statvfs space = {};
    if (failed || ::statvfs(folder.c_str(), &space) != 0)
        throw SoundError(SoundFailure::NoSpace, "there is no temporary folder");
    const auto available =
        static_cast<std::int64_t>(space.f_bavail) * static_cast<std::int64_t>(space.f_frsize);
    if (available - kSpareBytes < bytes)
        throw SoundError(SoundFailure::NoSpace, "the temporary folder is too full", ENOSPC);
    const int descriptor = openNameless(folder);
    if (descriptor < 0)
        throw SoundError(SoundFailure::NoSpace, "no scratch file can be made", errno);
    return std::shared_ptr<SourceFile>(new SourceFile(descriptor, true));
}

std::size_t SourceFile::readSome(std::int64_t offset, std::span<std::uint8_t> bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ::ssize_t got =
            TEMP_FAILURE_RETRY(::pread(descriptor_, bytes.data() + done, bytes.size() - done,
                                       offset + static_cast<std::int64_t>(done)));
        if (got < 0) throw SoundError(SoundFailure::Damaged, "the file cannot be read", errno);
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

void SourceFile::read(std::int64_t offset, std::span<std::uint8_t> bytes) const {
    if (readSome(offset, bytes) == bytes.size()) return;
    checkUnchanged();
    throw SoundError(SoundFailure::Damaged, "the file ends early");
}

void SourceFile::write(std::int64_t offset, std::span<const std::uint8_t> bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ::ssize_t put =
            TEMP_FAILURE_RETRY(::pwrite(descriptor_, bytes.data() + done, bytes.size() - done,
                                        offset + static_cast<std::int64_t>(done)));
        if (put <= 0)
            throw SoundError(SoundFailure::NoSpace, "the scratch file is full",
                             put < 0 ? errno : ENOSPC);
        done += static_cast<std::size_t>(put);
    }
}

void SourceFile::checkUnchanged() const {
    if (scratch_) return;  // no other program can open it
    struct ::stat state = {};
    if (::fstat(descriptor_, &state) != 0 || state.st_size != size_ ||
        state.st_mtim.tv_sec != modified_.tv_sec || state.st_mtim.tv_nsec != modified_.tv_nsec)
        throw SoundError(SoundFailure::SourceChanged, "the sound's file was changed");
}

}  // namespace tarnwick::sound
