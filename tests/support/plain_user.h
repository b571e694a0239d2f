#pragma once

#include <unistd.h>

#include <cstdlib>

namespace tarnwick::test {

// While an object of this class exists, the process has the rights of an ordinary user, also if the
// administrator runs the tests, who may write everywhere.
class PlainUser {
  public:
    PlainUser() {
        if (root_ && seteuid(kNobody) != 0) std::abort();
    }
    ~PlainUser() {
        if (root_ && seteuid(0) != 0) std::abort();
    }
    PlainUser(const PlainUser&) = delete;
    PlainUser& operator=(const PlainUser&) = delete;

    // The user that the process is while an object exists.
    static uid_t id() { return geteuid() == 0 ? kNobody : geteuid(); }

  private:
    static constexpr uid_t kNobody = 65534;
    const bool root_ = geteuid() == 0;
};

}  // namespace tarnwick::test
