#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include "platform/clock.h"
#include "platform/desktop_boxes.h"
#include "platform/desktop_open_dialog.h"
#include "platform/desktop_opener.h"
#include "runtime/file_names.h"
#include "support/files.h"
#include "support/wait_until.h"

using namespace tarnwick;

namespace {

// Records the text of the next message box, and answers it with that button or closes it.
struct Answer {
    explicit Answer(QMessageBox::StandardButton button) {
        QTimer::singleShot(0, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            shown = box->windowTitle() + u'|' + box->text() + u'|' +
                    (box->icon() == QMessageBox::Critical ? u"stop "_qs : QString()) +
                    (box->textFormat() == Qt::PlainText ? u"as it is"_qs : QString());
            buttons = box->standardButtons();
            button == QMessageBox::NoButton ? box->reject() : box->button(button)->click();
        });
    }
    QString shown;
    QMessageBox::StandardButtons buttons;
};

TEST(DesktopBoxes, ShowTheirTextAsItIsWithLineFeeds) {
    platform::DesktopBoxes boxes;
    const Answer plain(QMessageBox::Ok);
    boxes.plain(u"a\r\nb\rc <b>"_qs);
    EXPECT_EQ(plain.shown, u"|a\nb\nc <b>|as it is");
    EXPECT_EQ(plain.buttons, QMessageBox::Ok);
    const Answer critical(QMessageBox::Ok);
    boxes.critical(u"Title"_qs, u"text"_qs);
    EXPECT_EQ(critical.shown, u"Title|text|stop as it is");
    const std::pair<QMessageBox::StandardButton, bool> answers[] = {
        {QMessageBox::Yes, true}, {QMessageBox::No, false}, {QMessageBox::NoButton, false}};
    for (const auto& [button, yes] : answers) {
        const Answer answer(button);
        EXPECT_EQ(boxes.askYesNo(u"Title"_qs, u"text"_qs), yes);
        EXPECT_EQ(answer.buttons, QMessageBox::Yes | QMessageBox::No);
    }
}

TEST(DesktopBoxes, AnInputThatIsCancelledIsNone) {
    platform::DesktopBoxes boxes;
    for (const bool accepted : {true, false}) {
        QTimer::singleShot(0, [accepted] {
            auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            box->setTextValue(box->labelText() + u"!"_qs);
            accepted ? box->accept() : box->reject();
        });
        EXPECT_EQ(boxes.input(u"prompt"_qs),
                  accepted ? std::optional(u"prompt!"_qs) : std::nullopt);
    }
}

// Picks `file` in the next dialog. Returns the folder in which the dialog opened.
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

TEST(DesktopOpener, HandsOverWhatIsThereAndTellsWhyItCannot) {
    const QTemporaryDir desktop;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", desktop.path().toLocal8Bit());
    const auto backAgain = qScopeGuard([&] { qputenv("PATH", path); });
    const QString odd = desktop.filePath(u"-a #1 100% \"b\" 'é' $x;?&"_qs);
    ASSERT_TRUE(QDir().mkdir(odd));
    const QString noText = odd + u'/' + runtime::textOfFileName("\xff.pdf");
    std::filesystem::create_directory(runtime::pathOf(noText));
    const auto tidied = qScopeGuard([&] { std::filesystem::remove_all(runtime::pathOf(odd)); });
    const QString noted = desktop.filePath(u"noted"_qs);
    platform::DesktopOpener opener;
    QStringList failures;
    const auto open = [&](const QString& target) {
        opener.open(target, [&](const QString& reason) { failures << reason; });
    };
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    open(odd);
    EXPECT_EQ(failures, QStringList(u"xdg-open is not installed"_qs));
    failures.clear();

    const QString script = desktop.filePath(u"xdg-open"_qs);
    test::writeFile(script, "#!/bin/sh\necho noise; echo noise >&2\nprintf '%s\\n' \"$#:$1\" >> '" +
                                noted.toLocal8Bit() + "'\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    for (const QString& none : {u""_qs, u"."_qs, u"-v"_qs, odd + u'x', u"mailto:a@b"_qs})
        open(none);
    EXPECT_EQ(failures, QStringList(5, u"it is not there"_qs));
    failures.clear();
    QByteArray expected;
    for (const QString& target : {odd, noText, u"https://tarnwick.example/a?b=c#d"_qs}) {
        open(target);
        expected += "1:" + QByteArray::fromStdString(runtime::bytesOfFileName(target)) + '\n';
        EXPECT_TRUE(test::waitUntil([&] { return test::contentOf(noted) == expected; }, 5000));
    }
    const auto rewrite = [&](const QByteArray& lines) {
        test::writeFile(script, "#!/bin/sh\n" + lines);
    };
    rewrite(": >'" + noted.toLocal8Bit() + "'; kill $$\n");
    open(odd);
    EXPECT_TRUE(test::waitUntil([&] { return test::contentOf(noted).isEmpty(); }, 5000));
    for (const auto& [ending, reason] : {std::pair("exit 2\n", "the desktop did not find it"),
                                         {"exit 3\n", "no program for it is installed"},
                                         {"exit 4\n", "the desktop could not open it"}}) {
        rewrite(ending);
        open(odd);
        EXPECT_TRUE(test::waitUntil([&] { return !failures.isEmpty(); }, 5000));
        EXPECT_EQ(failures, QStringList(QLatin1String(reason)));
        failures.clear();
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left behind";
}

TEST(SystemClock, CountsSecondsFromMidnight) {
    struct : platform::SystemClock {
        QDateTime now() const override { return {QDate(2024, 1, 2), QTime(12, 0, 1, 250)}; }
    } clock;
    EXPECT_EQ(clock.Timer(), 43201.25);
}

}  // namespace
