#pragma once

#include <QDateTime>
#include <QString>
#include <exception>
#include <functional>

#include "runtime/fault.h"

namespace tarnwick::runtime {

// What the failure path needs of the outside: both boxes and the end of the process come in as
// callables, so that a test can stand in for them.
struct FailureOutlets {
    std::function<void(const QString& title, const QString& text)> criticalBox;
    std::function<void()> endProcess;  // does not return; a test throws something of its own
    std::function<QDateTime()> now;
};

// The one way in which the program deals with a fault that it did not foresee: a record in
// `Error.log` beside the executable, one critical box, the end of the process. UI thread.
class FailurePath {
  public:
    // `appPath`: folder of the executable, no trailing separator.
    FailurePath(QString appPath, FailureOutlets outlets);

    // Set by the entry point before anything else happens; stands in every record.
    QString vsBuild;

    const QString& appPath() const { return appPath_; }

    // Appends one line, stamped "HH:MM " unless the text is blank. Throws Fault when the log
    // cannot be opened or written.
    void Write_Log(const QString& text) const;

    // The present date as the log writes it, "dd-mmm-yyyy" with English month names.
    QString logDate() const;

    // Five log lines, the box, the end. Does not return; where the log cannot be written, the box
    // and the end still come.
    [[noreturn]] void Fatal_Error(const QString& text) const;

    // The delivered database is not beside the executable: two log lines, the box, the end.
    [[noreturn]] void Database_Missing() const;

    // A fault that no procedure guards: one critical box with its description, the end, no log.
    [[noreturn]] void Default_Path(const QString& description) const;

    // Runs `body` at the event loop's edge; what it throws takes the default path.
    template <class Body>
    void unguarded(Body&& body) const {
        try {
            body();
        } catch (const std::exception& error) {
            Default_Path(descriptionOf(error));
        }
    }

  private:
    void writeRecord(const QString& text) const;
    [[noreturn]] void end() const;

    QString appPath_;
    FailureOutlets outlets_;
};

}  // namespace tarnwick::runtime
