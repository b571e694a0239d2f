#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace tarnwick::test {

// What `body` gives, 0 to 255, in a process that can start at most so many threads; -1 where it
// throws or the process dies of it. Where the tests do not run as the administrator it can start
// none, since the limit is for all processes of a person.
template <class Body>
int withFewThreads(rlim_t most, Body&& body) {
    const pid_t child = ::fork();
    if (child == 0) {
        constexpr uid_t kNobodyElse = 54321;
        const bool alone = ::geteuid() == 0 && ::setuid(kNobodyElse) == 0;
        const rlim_t processes = alone ? most + 1 : 0;
        const rlimit limit{.rlim_cur = processes, .rlim_max = processes};
        ::setrlimit(RLIMIT_NPROC, &limit);
        try {
            ::_exit(body());
        } catch (...) {
            std::abort();
        }
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace tarnwick::test
