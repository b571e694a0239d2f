#include "runtime/failure_path.h"

#include <QLocale>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "runtime/file_names.h"
#include "runtime/product.h"

namespace tarnwick::runtime {

FailurePath::FailurePath(QString appPath, FailureOutlets outlets)
    : appPath_(std::move(appPath)), outlets_(std::move(outlets)) {}

void FailurePath::Write_Log(const QString& text) const {
    const auto isBlank = [](QChar c) { return c == u' '; };
    QString line = text;
    if (!std::all_of(text.begin(), text.end(), isBlank))
        line = outlets_.now().toString(QStringLiteral("HH:mm")) + u' ' + text;
    errno = 0;
    std::ofstream log(pathOf(appPath_) / "Error.log", std::ios::app | std::ios::binary);
    log << (line + QStringLiteral("\r\n")).toStdString() << std::flush;
    if (!log) throw Fault(QString::fromStdString(std::generic_category().message(errno)));
}

QString FailurePath::logDate() const {
    return QLocale::c().toString(outlets_.now().date(), QStringLiteral("dd-MMM-yyyy"));
}

void FailurePath::Fatal_Error(const QString& text, const QString& shown) const {
    writeRecord(text);
    outlets_.criticalBox(
        QStringLiteral("An error has occured in the program execution!"),
        QStringLiteral("Error: ") + (shown.isEmpty() ? text : shown) +
            QStringLiteral("\r\n\r\nIf this error persists after restarting the program and/or the "
                           "PC,\r\nplease e-mail the Error.log file (located in the ") +
            readableFileName(appPath_) + QStringLiteral(" folder)\r\nto ") +
            QString::fromUtf16(product::kSupportAddress) + QStringLiteral(" for assistance."));
    end();
}

void FailurePath::writeRecord(const QString& text) const {
    try {
        Write_Log(text);
        Write_Log(vsBuild);
        Write_Log(QStringLiteral("Program terminated with error"));
        Write_Log(logDate());
        Write_Log(QString());
    } catch (const Fault&) {
        // A log that cannot be written must not prevent the box and the exit.
    }
}

void FailurePath::Database_Missing() const {
    Write_Log(QStringLiteral("Database file Tarnwick.mdb must be in ") +
              readableFileName(appPath_));
    Write_Log(QStringLiteral("Program execution terminated - No database!"));
    outlets_.criticalBox(
        QStringLiteral("Database Cannot Be Found!"),
        QStringLiteral("The database Tarnwick.mdb cannot be found.\r\n"
                       "It has been moved or renamed.\r\n"
                       "It must be located in the same directory as Tarnwick.exe.\r\n"
                       "Please correct before restarting the application."));
    end();
}

void FailurePath::Default_Path(const QString& description) const {
    outlets_.criticalBox(QStringLiteral("Tarnwick"), description);
    end();
}

void FailurePath::end() const {
    outlets_.endProcess();
    std::abort();  // if the outlet returned, a broken procedure would continue
}

}  // namespace tarnwick::runtime
