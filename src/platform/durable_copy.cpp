#include "platform/durable_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string>
#include <vector>

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;

std::error_code lastError() { return {errno, std::generic_category()}; }

// A file descriptor that closes itself.
class Descriptor {
  public:
    Descriptor(const fs::path& path, int flags, mode_t mode = 0)
        : number_(::open(path.c_str(), flags | O_CLOEXEC, mode)) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool valid() const { return number_ >= 0; }
    int number() const { return number_; }

  private:
    int number_;
};

std::error_code writeAll(int target, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(target, bytes, count);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return lastError();
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return {};
}

std::error_code copyBytes(int source, int target) {
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const ssize_t got = ::read(source, buffer.data(), buffer.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return lastError();
        if (got == 0) return ::fsync(target) == 0 ? std::error_code{} : lastError();
        if (const auto error = writeAll(target, buffer.data(), static_cast<std::size_t>(got)))
            return error;
    }
}

// The folder's own entry for a file that was just named in it.
std::error_code flushFolder(const fs::path& file) {
    const Descriptor folder(file.parent_path(), O_RDONLY | O_DIRECTORY);
    return folder.valid() && ::fsync(folder.number()) == 0 ? std::error_code{} : lastError();
}

}  // namespace

std::error_code copyDurably(const fs::path& from, const fs::path& to) {
    const Descriptor source(from, O_RDONLY);
    if (!source.valid()) return lastError();
    struct stat state {};
    if (::fstat(source.number(), &state) != 0) return lastError();
    if (S_ISDIR(state.st_mode)) return std::make_error_code(std::errc::no_such_file_or_directory);

    std::string hidden(1, '.');
    hidden.append(to.filename().string()).append(1, '.').append(std::to_string(::getpid()));
    const fs::path growing = to.parent_path() / hidden;
    std::error_code error;
    {
        const Descriptor target(growing, O_WRONLY | O_CREAT | O_TRUNC, state.st_mode & 0777);
        if (!target.valid()) return lastError();
        error = copyBytes(source.number(), target.number());
    }
    if (!error && ::rename(growing.c_str(), to.c_str()) != 0) error = lastError();
    if (error) {
        ::unlink(growing.c_str());
        return error;
    }
    return flushFolder(to);
}

std::error_code moveWithoutOverwriting(const fs::path& from, const fs::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return {};
    if (errno != EXDEV && errno != EINVAL) return lastError();

    std::error_code error;
    if (fs::exists(fs::symlink_status(to, error)))
        return std::make_error_code(std::errc::file_exists);
    if (errno == EINVAL) {  // a file system that cannot promise: the test above has to do
        fs::rename(from, to, error);
        if (error != std::errc::cross_device_link) return error;
    }
    if ((error = copyDurably(from, to))) return error;
    fs::remove(from, error);
    return error;
}

}  // namespace tarnwick::platform
