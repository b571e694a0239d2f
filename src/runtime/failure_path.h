#pragma once

#include <QDateTime>
#include <QString>
#include <exception>
#include <functional>

#include "runtime/fault.h"

namespace tarnwick::runtime {

// What the failure path needs from outside, as callables so that tests can replace them.
struct FailureOutlets {
    std::function<void(const QString& title, const QString& text)> criticalBox;
    std::function<void()> endProcess;  // must not return; tests throw an exception of their own
    std::function<QDateTime()> now;
};

// Handles every unexpected fault: writes a record to `Error.log` beside the executable, shows one
// critical box and ends the process. UI thread.
class FailurePath {
  public:
    // `appPath`: folder of the executable, no trailing separator.
    FailurePath(QString appPath, FailureOutlets outlets);

    // Set by the entry point before anything else happens; part of every record.
    QString vsBuild;

    const QString& appPath() const { return appPath_; }

    // Appends one line, stamped "HH:MM " unless the text is blank. Throws Fault when the log
    // cannot be opened or written.
    void Write_Log(const QString& text) const;

    // The current date in the log's format, "dd-mmm-yyyy" with English month names.
    QString logDate() const;

    // Writes five log lines with `text`, shows the box and ends the process. If the log cannot be
    // written, it still shows the box and ends the process. `shown` replaces `text` in the
    // box, which may say more than the log; empty: the box shows `text`.
    [[noreturn]] void Fatal_Error(const QString& text, const QString& shown = {}) const;

    // The delivered database is not beside the executable: writes two log lines, shows the box
    // and ends the process.
    [[noreturn]] void Database_Missing() const;

    // A fault outside any guarded procedure: shows one critical box with its description and ends
    // the process, without a log entry.
    [[noreturn]] void Default_Path(const QString& description) const;

    // Runs `body` directly below the event loop; an exception goes to Default_Path.
    template <class Body>
    void unguarded(Body&& body) const {
        try {
            body();
        } catch (const std::exception& error) {
            Default_Path(detailedDescriptionOf(error));
        }
    }

  private:
    void writeRecord(const QString& text) const;
    [[noreturn]] void end() const;

    QString appPath_;
    FailureOutlets outlets_;
};

}  // namespace tarnwick::runtime
