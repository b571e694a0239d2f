#include "platform/desktop_opener.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>
#include <memory>

#include "platform/descriptor.h"
#include "runtime/file_names.h"

namespace tarnwick::platform {

namespace {

// Runs the opener and writes its exit status to descriptor 3. A shell does the waiting, because a
// forked copy of this program would keep its memory and open files.
constexpr char kShell[] = "/bin/sh";
constexpr char kScript[] = R"("$1" "$2" 3>&-; echo $? >&3)";
constexpr int kReport = 3;

// If a signal ended the opener, the shell reports this number plus the number of the signal.
constexpr int kSignalled = 128;

bool isPage(const QString& target) {
    const QString scheme = QUrl(target).scheme();
    return scheme == u"http" || scheme == u"https";
}

// Why the target cannot be opened; empty if nothing is known against it.
QString objectionTo(const QString& target) {
    if (isPage(target)) return {};
    const std::filesystem::path file = runtime::pathOf(target);
    std::error_code ignored;
    const bool there = file.is_absolute() && exists(file, ignored);
    return there ? QString() : u"it is not there"_qs;
}

// In a forked child. Only what may be called between fork and exec, since the program has threads.
[[noreturn]] void become(char* const* command, int report) {
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nothing, stream);
    if (report == kReport)
        ::fcntl(report, F_SETFD, 0);  // keep it open across exec
    else
        ::dup2(report, kReport);
    // The root is no folder that somebody wants to move.
    if (::chdir("/") == 0) ::execv(command[0], command);
    ::_exit(EXIT_FAILURE);
}

// By hand, since QProcess changes arguments that are no UTF-8. Forked twice, so that the started
// program is not our child and need not be waited for. Returns the descriptor from which its exit
// status can be read; -1 if it was not started.
int startDetached(std::string program, std::string argument) {
    std::string shell = kShell, option = "-c", script = kScript;
    char* const command[] = {shell.data(),   option.data(),   script.data(), shell.data(),
                             program.data(), argument.data(), nullptr};
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return -1;
    const Descriptor report(ends[1]);
    const pid_t child = ::fork();
    if (child == 0) {
        ::setsid();
        const pid_t started = ::fork();
        if (started == 0) become(command, ends[1]);
        ::_exit(started > 0 ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = EXIT_FAILURE;
    if (child > 0) ::waitpid(child, &status, 0);
    if (status == EXIT_SUCCESS) return ends[0];
    ::close(ends[0]);
    return -1;
}

// The reason that belongs to an exit status of the opener; empty if it opened the target or was
// ended by a signal.
QString failureOf(int status) {
    switch (status) {
        case 0:
            return {};
        case 2:
            return u"the desktop did not find it"_qs;
        case 3:
            return u"no program for it is installed"_qs;
        default:
            return status > kSignalled ? QString() : u"the desktop could not open it"_qs;
    }
}

}  // namespace

void DesktopOpener::open(const QString& target, const Failed& failed) {
    if (const QString objection = objectionTo(target); !objection.isEmpty())
        return failed(objection);
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_qs);
    if (opener.isEmpty()) return failed(u"xdg-open is not installed"_qs);
    const int report =
        startDetached(runtime::bytesOfFileName(opener), runtime::bytesOfFileName(target));
    if (report < 0) return failed(u"no program could be started"_qs);
    tellWhenEnded(report, failed);
}

// The status arrives in one read. If the shell was killed, the read is empty and nothing is told.
void DesktopOpener::tellWhenEnded(int report, const Failed& failed) {
    auto* ended = new QSocketNotifier(report, QSocketNotifier::Read, this);
    const auto descriptor = std::make_shared<Descriptor>(report);
    connect(ended, &QSocketNotifier::activated, this, [ended, descriptor, failed] {
        ended->setEnabled(false);
        ended->deleteLater();
        char status[8];
        const ssize_t length = ::read(descriptor->number(), status, sizeof status);
        const QByteArray text(status, std::max<qsizetype>(length, 0));
        if (const QString reason = failureOf(text.trimmed().toInt()); !reason.isEmpty())
            failed(reason);
    });
}

}  // namespace tarnwick::platform
