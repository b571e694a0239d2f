#include "platform/desktop_opener.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QStandardPaths>
#include <QUrl>

#include "runtime/file_names.h"

namespace tarnwick::platform {

namespace {

bool canBeOpened(const QString& target) {
    const QString scheme = QUrl(target).scheme();
    if (scheme == u"http" || scheme == u"https") return true;
    const std::filesystem::path file = runtime::pathOf(target);
    std::error_code ignored;
    return file.is_absolute() && exists(file, ignored);
}

// In a forked child. Only what may be called between fork and exec, since the program has threads.
[[noreturn]] void become(char* const* command) {
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nothing, stream);
    // The root is no folder that somebody wants to move.
    if (::chdir("/") == 0) ::execv(command[0], command);
    ::_exit(EXIT_FAILURE);
}

// By hand, since QProcess changes arguments that are no UTF-8. Forked twice, so that the started
// program is nobody's child and need not be waited for.
void startDetached(std::string program, std::string argument) {
    char* const command[] = {program.data(), argument.data(), nullptr};
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        if (::fork() == 0) become(command);
        ::_exit(EXIT_SUCCESS);
    }
    if (child > 0) ::waitpid(child, nullptr, 0);
}

}  // namespace

void DesktopOpener::open(const QString& target) {
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_qs);
    if (opener.isEmpty() || !canBeOpened(target)) return;
    startDetached(runtime::bytesOfFileName(opener), runtime::bytesOfFileName(target));
}

}  // namespace tarnwick::platform
