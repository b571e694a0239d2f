#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

namespace tarnwick::platform {

// A file descriptor that closes itself.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const std::filesystem::path& path, int flags, mode_t mode = 0) {
        open(path, flags, mode);
    }
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    // Call only while not valid(). Returns false on failure, with the reason in errno.
    bool open(const std::filesystem::path& path, int flags, mode_t mode) {
        number_ = ::open(path.c_str(), flags | O_CLOEXEC, mode);
        return valid();
    }
    bool valid() const { return number_ >= 0; }
    int number() const { return number_; }

  private:
    int number_ = -1;
};

}  // namespace tarnwick::platform
