#pragma once

#include <gtest/gtest.h>

#include <QDateTime>
#include <QTemporaryDir>
#include <utility>

#include "platform/boxes.h"
#include "platform/clock.h"
#include "platform/disk.h"
#include "platform/notices.h"
#include "platform/open_dialog.h"
#include "platform/opener.h"
#include "runtime/failure_path.h"
#include "support/files.h"

// Fakes of the outside world that return scripted answers and record the calls.

namespace tarnwick::test {

// Thrown where the program would end. Not a std::exception, so that nothing in between catches it.
struct ProcessEnded {};

class ScriptedBoxes : public platform::Boxes {
  public:
    void plain(const QString& text) override { shown << text; }
    void critical(const QString& title, const QString& text) override {
        shown << title + u"|"_qs + text;
    }
    bool askYesNo(const QString& title, const QString& text) override {
        shown << title + u"|"_qs + text;
        return yes;
    }
    std::optional<QString> input(const QString& prompt) override {
        shown << prompt;
        return entry;
    }

    QStringList shown;
    bool yes = false;
    std::optional<QString> entry;  // none if the input box is cancelled
};

class ScriptedNotices : public platform::Notices {
  public:
    void tell(const platform::Notice& notice) override { told << notice; }
    void note(const platform::Notice& notice) override { noted << notice; }

    void settle(const QString& topic) override { settled << topic; }
    void startSession() override { ++sessions; }

    QList<platform::Notice> told, noted;
    QStringList settled;
    int sessions = 0;
};

// What the notices say, without the safe state and the remedy. Empties the list.
inline QStringList takeSentences(QList<platform::Notice>& notices) {
    QStringList sentences;
    for (const platform::Notice& notice : std::exchange(notices, {}))
        sentences << notice.what;
    return sentences;
}

class ScriptedDialog : public platform::OpenDialog {
  public:
    void setTitle(const QString& text) override { title = text; }
    void setFilter(const QString& text) override { filter = text; }
    std::optional<Choice> ShowOpen() override {
        if (meanwhile) meanwhile();
        if (path.isEmpty()) return {};
        return Choice{path, path.section(u'/', -1)};
    }

    QString title;
    QString filter;
    QString path;                     // empty if the operator cancels
    std::function<void()> meanwhile;  // called while the dialog is open
};

class ScriptedOpener : public platform::Opener {
  public:
    void open(const QString& target, const Failed& failed) override {
        opened << target;
        if (!failure.isEmpty()) failed(failure);
    }
    QStringList opened;
    QString failure;  // empty if the target opens
};

class StoppedClock : public platform::Clock {
  public:
    QDateTime now() const override { return QDateTime(QDate(2020, 3, 7), QTime(9, 5, 59)); }
    double Timer() const override { return seconds += 0.25; }
    mutable double seconds = 0.0;
};

// A temporary program folder with a failure path that ends in an exception.
struct FailureDesk {
    QTemporaryDir folder;
    ScriptedBoxes boxes;
    ScriptedNotices notices;
    StoppedClock clock;
    runtime::FailurePath failure{
        folder.path(),
        {.criticalBox = [this](const QString& title,
                               const QString& text) { boxes.critical(title, text); },
         .endProcess = [] { throw ProcessEnded(); },
         .now = [this] { return clock.now(); }}};

    QByteArray log() const { return contentOf(folder.filePath(u"Error.log"_qs)); }
    QString databaseFile() const { return folder.filePath(u"Tarnwick.mdb"_qs); }
    // Puts a copy of the delivered database into the folder.
    void takeDatabase() const {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TARNWICK_SEED_DATABASE), databaseFile()));
        QFile::setPermissions(databaseFile(), QFile::ReadOwner | QFile::WriteOwner);
    }
};

}  // namespace tarnwick::test
