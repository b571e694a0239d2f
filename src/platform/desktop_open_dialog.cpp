#include "platform/desktop_open_dialog.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QProcess>
#include <QSettings>
#include <algorithm>
#include <filesystem>

#include "runtime/file_names.h"

namespace tarnwick::platform {

namespace {

// A file dialog writes its last folders down when it goes, and no option prevents that. Where it
// would do so no file can be.
void letDialogsForget() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QProcess::nullDevice());
}

}  // namespace

OpenDialog::Choice chosenFile(const QString& path) {
    const QFileInfo chosen(path);
    std::error_code ignored;
    std::filesystem::current_path(runtime::pathOf(chosen.absolutePath()), ignored);
    return {QDir::toNativeSeparators(chosen.absoluteFilePath()), chosen.fileName()};
}

const QStringList& recordingPatterns() {
    static const QStringList patterns{u"*.wav"_qs, u"*.mp3"_qs, u"*.aif"_qs, u"*.aiff"_qs};
    return patterns;
}

QStringList nameFilters(const QString& classicFilter) {
    QStringList filters;
    const QStringList parts = classicFilter.split(u'|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i].section(u'(', 0, 0).trimmed();
        QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns)
            pattern = pattern.trimmed();
        filters << description + u" ("_qs + patterns.join(u' ') + u')';
    }
    return filters;
}

QString readyName(const QString& folder, const QStringList& filters) {
    const auto isFirst = [&](const QString& pattern) {
        return !filters.isEmpty() && filters.front().contains(pattern, Qt::CaseInsensitive);
    };
    const QStringList& patterns = recordingPatterns();
    if (std::none_of(patterns.begin(), patterns.end(), isFirst)) return {};
    const QStringList there = QDir(folder).entryList(patterns, QDir::Files);
    return there.size() == 1 ? there.front() : QString();
}

std::optional<OpenDialog::Choice> DesktopOpenDialog::ShowOpen() {
    letDialogsForget();
    const QString project = projectFolder_();
    const QString begin = !project.isEmpty() && QDir(project).exists() ? project : QDir::homePath();
    // Qt's own dialog rather than the desktop's, so that it looks and answers the same everywhere.
    QFileDialog dialog(QApplication::activeWindow(), title_, begin);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QStringList filters = nameFilters(filter_);
    dialog.setNameFilters(filters);
    dialog.selectFile(readyName(begin, filters));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return chosenFile(dialog.selectedFiles().front());
}

}  // namespace tarnwick::platform
