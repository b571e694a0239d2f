#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QAccessible>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>

#include "app/appearance.h"
#include "app/notice_list.h"
#include "app/notice_strip.h"
#include "app/setting_notices.h"
#include "app/shell_notices.h"
#include "journey.h"
#include "support/plain_user.h"
#include "support/text_table.h"
#include "widgets/waveform_colours.h"

using namespace tarnwick::app;
using namespace tarnwick;

namespace {

platform::Notice notice(const QString& what) { return {what, {u"/s/"_qs + what}, {}, u"Try."_qs}; }

TEST(NoticeBoard, CountsEqualNoticesAndDropsTheOldest) {
    const test::StoppedClock clock;
    NoticeBoard board(clock);
    for (const char* what : {"a.", "b.", "a."})
        board.tell(notice(QLatin1String(what)));
    board.note(notice(u"b."_qs));
    const auto sentences = [](const QList<NoticeBoard::Entry>& entries) {
        QStringList texts;
        for (const NoticeBoard::Entry& entry : entries)
            texts << sentencesOf(entry);
        return texts.join(u'|');
    };
    EXPECT_EQ(sentences(board.shown()), u"b. Try.|a. (2 times.) Try.");
    EXPECT_EQ(sentences(board.entries()), u"a. (2 times.) Try.|b. (2 times.) Try.");
    board.startSession();
    EXPECT_TRUE(board.shown().isEmpty());
    for (const char* what : {"c.", "c.", "d.", "d."})
        board.tell({.what = QLatin1String(what),
                    .files = {},
                    .safe = {},
                    .remedy = {},
                    .topic = u"save"_qs});
    board.tell(notice(u"e."_qs));
    EXPECT_EQ(sentences(board.shown()), u"d. (2 times.)|e. Try.") << "the same topic";
    for (const QString& topic : {u"load"_qs, QString(), u"save"_qs}) {
        board.settle(topic);
        EXPECT_EQ(board.shown().size(), topic == u"save" ? 1 : 2);
    }
    EXPECT_EQ(board.entries().size(), 5) << "the list keeps them";
    board.dismiss();
    for (int i = 0; i < NoticeBoard::kMost; ++i)
        board.note(notice(QString::number(i)));
    EXPECT_EQ(board.entries().size(), NoticeBoard::kMost);
    EXPECT_EQ(board.entries().first().notice.what, u"0");
    EXPECT_TRUE(board.shown().isEmpty());
}

// The values of a load as its boxes show them, and words of the only notice about them.
TEST(SettingNotices, NameEveryValueThatEndsALoad) {
    const char* const cases = R"(
threshold|-35||threshold|-0.1||threshold|-200||threshold|35|“Overflow”|threshold|0.01|“Overflow”|
threshold|1e999|“Overflow”|threshold|abc|“Type mismatch”|threshold||Threshold is empty|
threshold|0|one pause|duration|20||duration|19|“Subscript out of range”|duration|-5|without a list|
duration|700 ms|“Type mismatch”|duration||Duration is empty|duration|3e9|“Overflow”|
speed|150 wpm||speed|0.5||speed|-150||speed||“Division by zero”|speed|0|“Division by zero”|
speed|fast|“Division by zero”|speed|120000|“Division by zero”|speed|0.0001|“Overflow”|
channels|2||channels|3|first row|channels||“Type mismatch”|rows|1-500||rows|2-502|“Subscript|
rows|7-6|“Index out of bounds”|rows|0-6|“Application-defined|rows|1-40000|“Overflow”)";
    for (const QStringList& row : test::rowsOf(cases, 3)) {
        LoadSettings settings{.duration = u"1500"_qs,
                              .threshold = u"-35"_qs,
                              .wordsPerMinute = u"150"_qs,
                              .channels = u"1"_qs,
                              .onlyRows = row[0] == u"rows",
                              .firstRow = row[1].section(u'-', 0, 0),
                              .lastRow = row[1].section(u'-', 1),
                              .database = u"/t/Tarnwick.mdb"_qs};
        if (row[0] == u"threshold") settings.threshold = row[1];
        if (row[0] == u"duration") settings.duration = row[1];
        if (row[0] == u"speed") settings.wordsPerMinute = row[1];
        if (row[0] == u"channels") settings.channels = row[1];
        QStringList found;
        for (const bool live : {false, true}) {
            settings.boxesAreLive = live;
            for (const platform::Notice& told : noticesOf(settings))
                found << told.what + u'#' + told.remedy + told.files.join(u' ');
        }
        if (row[2].isEmpty()) {
            EXPECT_TRUE(found.isEmpty()) << qPrintable(found.join(u'\n'));
            continue;
        }
        ASSERT_EQ(found.size(), 2) << qPrintable(row.join(u'|'));
        EXPECT_TRUE(found[0].contains(row[2])) << qPrintable(row.join(u'|') + found[0]);
        const bool onThePage = row[0] == u"channels" || row[0] == u"rows";
        const bool endsAll = !row[2].contains(u"one pause") && row[1] != u"19";
        EXPECT_EQ(found[0].endsWith(u"/t/Tarnwick.mdb"), !onThePage && endsAll);
        EXPECT_EQ(found[0].contains(u"Load a session"), !endsAll);
        // A bad text that is stored as a good number ends loads until the next start only.
        const QString stored = row[1] == u"abc"      ? u"0"_qs
                               : row[1] == u"700 ms" ? u"700"_qs
                                                     : u""_qs;
        EXPECT_EQ(found[1].contains(u": %1 was stored"_qs.arg(stored)), !stored.isEmpty());
        EXPECT_TRUE(found[1].contains(u"press Save"));
    }
}

TEST(ShellNotices, SayWhatToDo) {
    EXPECT_FALSE(windowTooLarge({1402, 1084}, {1402, 1084}, 1.53));
    EXPECT_TRUE(windowTooLarge({1402, 1084}, {1354, 724}, 1.53)->remedy.contains(u"to 102 % or"));
    EXPECT_TRUE(windowTooLarge({1402, 1084}, {790, 550}, 1.53)->remedy.contains(u"value, 100 %"));
    EXPECT_EQ(notOpened(u"/s/Folder/"_qs, u"it is not there"_qs, true).what,
              u"Folder did not open: it is not there.");
    EXPECT_EQ(notOpened(u"https://a.b/c"_qs, u"no"_qs, false).files,
              QStringList(u"https://a.b/c"_qs));
    EXPECT_TRUE(notOpened(u"/s/m.pdf"_qs, u"no"_qs, false).remedy.startsWith(u"Put it back"));
}

struct Strip : test::Launched {
    void SetUp() override {
        Launched::SetUp();
        strip = find<NoticeStrip>(u"frNotice"_qs);
        list = find<NoticeList>(u"frmNotices"_qs);
        ASSERT_TRUE(strip != nullptr && list != nullptr);
        EXPECT_TRUE(strip->isHidden());
        application.frame().activateWindow();
        EXPECT_TRUE(test::waitUntil([&] { return application.frame().isActiveWindow(); }, 5000));
    }
    QString text() { return find<QLabel>(u"lbNotice"_qs)->text(); }
    QPushButton* button(const char* name) { return find<QPushButton>(QLatin1String(name)); }
    QRect placeOf(const QWidget* control) {
        return {control->mapTo(&application.frame(), QPoint()), control->size()};
    }
    void press(QWidget* target, int key) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, Qt::NoModifier);
            QCoreApplication::sendEvent(target, &event);
        }
    }

    NoticeStrip* strip = nullptr;
    NoticeList* list = nullptr;
};

TEST_F(Strip, ShowsTheNewestSentenceAndNeverTakesTheFocus) {
    form().slWAVFormScale->setFocus();
    notices.note(notice(u"quiet."_qs));
    EXPECT_TRUE(strip->isHidden());
    notices.tell(notice(u"one %1."_qs));
    EXPECT_EQ(text(), u"one %1. Try.");
    notices.tell(notice(u"two %2."_qs));
    EXPECT_EQ(text(), u"two %2. Try. (1 more)");
    EXPECT_TRUE(strip->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), form().slWAVFormScale);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(strip);
    EXPECT_EQ(spoken->role(), QAccessible::AlertMessage);
    EXPECT_EQ(spoken->text(QAccessible::Name), text());
    notices.startSession();
    EXPECT_TRUE(strip->isHidden());
    EXPECT_TRUE(desktopNotes.isEmpty()) << "the frame is active";
}

TEST_F(Strip, IsDismissedByItsButtonAndByEscapeWithTheFocusGivenBack) {
    const std::function<void(QPushButton*)> ways[] = {
        [](QPushButton* dismiss) { dismiss->click(); },
        [this](QPushButton* dismiss) { press(dismiss, Qt::Key_Escape); },
        [this](QPushButton*) { notices.startSession(); }};
    for (const auto& way : ways) {
        form().slWAVFormScale->setFocus();
        notices.tell(notice(u"one."_qs));
        button("cbNoticeClose")->setFocus();
        way(button("cbNoticeClose"));
        EXPECT_TRUE(strip->isHidden());
        EXPECT_EQ(QApplication::focusWidget(), form().slWAVFormScale);
    }
    EXPECT_EQ(notices.entries().size(), 1) << "the list keeps it";
}

TEST_F(Strip, KeepsClearOfTheControlWithTheFocus) {
    notices.tell(notice(QString(u"A long sentence that wraps. "_qs).repeated(20)));
    application.frame().resize(1402, 700);
    form().txbSilence->setEnabled(true);
    bool moved = false;
    for (QWidget* control : std::initializer_list<QWidget*>{
             form().lvAudioDetails, form().slWAVFormScale, form().txbSilence}) {
        control->setFocus();
        QCoreApplication::processEvents();
        EXPECT_FALSE(strip->geometry().intersects(placeOf(control)))
            << qPrintable(control->objectName());
        const QRect room = placeOf(application.frame().mdiArea->viewport());
        EXPECT_TRUE(room.contains(strip->geometry()));
        moved = moved || strip->geometry().top() == room.top();
        EXPECT_GE(
            strip->height(),
            find<QLabel>(u"lbNotice"_qs)->heightForWidth(find<QLabel>(u"lbNotice"_qs)->width()));
    }
    EXPECT_TRUE(moved);
    application.frame().resize(700, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(strip->geometry().bottomLeft(),
              placeOf(application.frame().mdiArea->viewport()).bottomLeft());
    EXPECT_EQ(strip->width(), application.frame().mdiArea->viewport()->width())
        << "the scroll bars stay free";
}

TEST_F(Strip, TheListShowsEveryNoticeAndCopies) {
    notices.note(notice(u"quiet."_qs));
    notices.tell(notice(u"loud."_qs));
    auto* key = find<QShortcut>();
    EXPECT_EQ(key->key(), QKeySequence(Qt::Key_F9));
    Q_EMIT key->activated();
    EXPECT_TRUE(list->isVisible());
    press(list, Qt::Key_Return);
    EXPECT_FALSE(list->isVisible()) << "Enter closes it and dismisses nothing";
    EXPECT_TRUE(strip->isVisible());
    Q_EMIT key->activated();
    list->findChild<QPushButton*>(u"cbNoticesDismiss"_qs)->click();
    EXPECT_TRUE(strip->isHidden());
    auto* rows = list->findChild<QListWidget*>();
    ASSERT_EQ(rows->count(), 2);
    EXPECT_EQ(rows->item(0)->text(), u"09:05:59  loud. Try.\n    /s/loud.");
    rows->item(1)->setSelected(true);
    notices.note(notice(u"later."_qs));
    EXPECT_EQ(rows->count(), 3);
    list->findChild<QPushButton*>(u"cbNoticesCopy"_qs)->click();
    const QString quiet = u"09:05:59  quiet. Try.\n    /s/quiet."_qs;
    EXPECT_EQ(QGuiApplication::clipboard()->text(), quiet);
    rows->clearSelection();
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QCoreApplication::sendEvent(rows, &copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text().count(u'\n'), 5);
    list->close();
}

TEST_F(Strip, TellsTheDesktopOnlyWhileTheFrameIsNotActive) {
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(test::waitUntil([&] { return other.isActiveWindow(); }, 5000));
    notices.tell(notice(u"loud."_qs));
    notices.note(notice(u"quiet."_qs));
    EXPECT_EQ(desktopNotes, QStringList(u"loud."_qs));
}

TEST_F(Strip, IsReadableInLightAndDark) {
    const QPalette before = QApplication::palette();
    const auto label = find<QLabel>(u"lbNotice"_qs);
    notices.tell(notice(u"one."_qs));
    for (const QPalette& palette : {darkPalette(), lightPalette(), darkPalette()}) {
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
        const QColor ground = strip->grab().toImage().pixelColor(label->geometry().topLeft());
        EXPECT_EQ(ground, QApplication::palette().color(QPalette::ToolTipBase));
        EXPECT_GE(widgets::contrast(label->palette().color(label->foregroundRole()), ground), 4.5);
    }
    QApplication::setPalette(before);
}

TEST_F(Strip, SavingAValueThatEndsALoadIsToldAndSoIsTheNextStart) {
    form().txbThreshold->setEnabled(true);
    form().txbThreshold->setText(u"35"_qs);
    form().cbPreferencesSave->click();
    EXPECT_TRUE(text().startsWith(u"Threshold is “35”.")) << qPrintable(text());
    EXPECT_TRUE(text().contains(u"Correct it now"));
    app::Application second(services);
    second.Sub_Main();
    EXPECT_TRUE(notices.entries().last().notice.remedy.contains(u"replace Tarnwick.mdb"));
    EXPECT_EQ(notices.entries().last().notice.files, QStringList(desk.databaseFile()));
}

TEST_F(Strip, WhatCannotBeStoredOrOpenedIsSaid) {
    opener.failure = u"no program for it is installed"_qs;
    form().mnuManual->trigger();
    EXPECT_TRUE(strip->isHidden());
    EXPECT_EQ(notices.entries().last().notice.what,
              u"Tarnwick_Manual.pdf did not open: no program for it is installed.");
    form().txbPrefix->setText(u"O'Hara"_qs);
    EXPECT_THROW(form().cbPreferencesSave->click(), test::ProcessEnded);
    EXPECT_TRUE(text().startsWith(u"Not all settings were stored: syntax error in string"));
    EXPECT_EQ(boxes().size(), 2);
}

using ReadOnly = test::Journey;

TEST_F(ReadOnly, ADatabaseThatCannotBeWrittenIsToldAtTheStart) {
    const QString log = desk.folder.filePath(u"Error.log"_qs);
    test::writeFile(log, {});
    ASSERT_EQ(chmod(qPrintable(log), 0666), 0);
    ASSERT_EQ(chmod(qPrintable(desk.databaseFile()), 0444), 0);
    ASSERT_EQ(chmod(qPrintable(desk.folder.path()), 0555), 0);
    {
        const test::PlainUser user;
        application.Sub_Main();
    }
    ASSERT_EQ(chmod(qPrintable(desk.folder.path()), 0755), 0);
    ASSERT_EQ(notices.shown().size(), 1);
    EXPECT_TRUE(notices.shown()[0].notice.what.startsWith(
        u"Tarnwick.mdb cannot be written: permission denied."));
}

}  // namespace
