#include "platform/desktop_open_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include "support/files.h"

using namespace tarnwick;

namespace {

// The operator picks `file` in the dialog that shows next. Returns where that began.
QString picked(platform::OpenDialog& cmdlg, const QString& file) {
    QString begun;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        begun = dialog->directory().path();
        dialog->setDirectory(QFileInfo(file).path());
        dialog->selectFile(QFileInfo(file).fileName());
        QMetaObject::invokeMethod(dialog, "accept");
    });
    const auto choice = cmdlg.ShowOpen();
    return choice && choice->FileName == file ? begun : u"nothing"_qs;
}

TEST(DesktopOpenDialog, BeginsInTheProjectsFolderOrAtHomeAndLeavesNothingBehind) {
    const QTemporaryDir home, project, other;
    const QString file = other.filePath(u"take.wav"_qs);
    test::writeFile(file, "x");
    const auto backAgain = qScopeGuard([home = qgetenv("HOME"), folder = QDir::currentPath()] {
        qputenv("HOME", home);
        QDir::setCurrent(folder);
    });
    qputenv("HOME", home.path().toLocal8Bit());
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home.path());

    QString folder;
    platform::DesktopOpenDialog cmdlg([&] { return folder; });
    EXPECT_EQ(picked(cmdlg, file), home.path());
    EXPECT_EQ(QDir::currentPath(), other.path());
    folder = project.path();
    EXPECT_EQ(picked(cmdlg, file), project.path());
    folder = project.filePath(u"gone"_qs);
    EXPECT_EQ(picked(cmdlg, file), home.path());
    for (const QString& kept : {home.path(), project.path()})
        EXPECT_TRUE(QDir(kept).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    EXPECT_EQ(QDir(other.path()).entryList(QDir::Files | QDir::Hidden),
              QStringList(u"take.wav"_qs));
}

}  // namespace
