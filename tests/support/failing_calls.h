#pragma once

#include <QString>
#include <QStringList>
#include <filesystem>
#include <random>

namespace tarnwick::test {

// While an object of this class exists, system calls that write, open for writing, rename, link or
// flush a file below a folder fail at random, whichever thread or library makes them. Link
// failing_calls.cpp into the test program; it replaces the C library's functions.
class FailingCalls {
  public:
    // About one call in `oneIn` fails; the same seed draws the same numbers.
    FailingCalls(std::filesystem::path below, unsigned oneIn, unsigned seed);
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    // The calls that failed so far, "fsync take.wav: Input/output error".
    QStringList failed() const;

    // For the replaced functions: an errno value if this call has to fail, otherwise 0.
    static int draw(const char* call, const std::filesystem::path& file, int error);

  private:
    const std::filesystem::path below_;
    const unsigned oneIn_;
    std::mt19937 random_;
    QStringList failed_;
};

}  // namespace tarnwick::test
