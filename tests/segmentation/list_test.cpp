#include <QClipboard>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include "desk.h"
#include "model/list_columns.h"
#include "segmentation/alignment.h"
#include "segmentation/prompt_list.h"
#include "segmentation/transport.h"

using namespace tarnwick;

namespace {

struct List : test::MainDesk {
    segmentation::StatusLine status{form};
    segmentation::PromptList list{form, desk.failure, state, session, EDT};
    segmentation::Transport transport{form, desk.failure, EDT, status};

    void mouse(QEvent::Type type, int row, Qt::KeyboardModifiers modifiers = {}) {
        mouse(type,
              form.lvAudioDetails->visualItemRect(form.lvAudioDetails->topLevelItem(row)).center(),
              form.lvAudioDetails->viewport(), modifiers);
    }
    static void mouse(QEvent::Type type, const QPoint& at, QWidget* part,
                      Qt::KeyboardModifiers modifiers = {}) {
        const bool moves = type == QEvent::MouseMove;
        QMouseEvent event(type, at, part->mapToGlobal(at), moves ? Qt::NoButton : Qt::LeftButton,
                          Qt::LeftButton, modifiers);
        QApplication::sendEvent(part, &event);
    }
    void key(int code, const QString& text = {}) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, code, {}, text);
            QApplication::sendEvent(form.lvAudioDetails, &event);
        }
    }
    void press(int row, Qt::KeyboardModifiers modifiers = {}) {
        mouse(QEvent::MouseButtonPress, row, modifiers);
    }
    void release(int row) { mouse(QEvent::MouseButtonRelease, row); }
    // The highlighted rows, from 1, behind what was played since the last look.
    QString playedAndHighlighted() {
        QString text = std::exchange(EDT.calls, {}).filter(u"SoundPlayRange"_qs).join(u' ');
        for (const QTreeWidgetItem* item : form.lvAudioDetails->selectedItems())
            text += u'|' + item->text(model::kRow);
        return text;
    }
};

TEST_F(List, APressPlaysFromTheRowAndAReleaseStopsInTheOneMode) {
    addRows(5);
    form.lvAudioDetails->topLevelItem(2)->setText(model::kContent, u"two\vlines"_qs);
    EDT.display.rangeEnd = 4000;
    press(2);
    EXPECT_EQ(EDT.taken(), u"SetDisplayRange 2000 6000|SoundPlayRange 3000 60000");
    EXPECT_EQ(session.viCurrentRow, 3);
    EXPECT_EQ(session.vlSavedRangeEnd, 4000);
    EXPECT_EQ(form.txbContent->toPlainText(), u"two\nlines");
    release(2);
    EXPECT_EQ(EDT.taken(), u"SoundStop");

    form.mnuPlayfromListView->trigger();
    EXPECT_TRUE(form.opPlayfromlistview[0]->isChecked());
    EXPECT_EQ(form.mnuPlayfromListView->text(), u"Play/Stop on Mouse Click");
    press(0);
    release(0);
    EXPECT_EQ(EDT.taken(), u"SoundPlayRange 1000 60000") << "too near the start";
    form.mnuPlayfromListView->trigger();
    EXPECT_TRUE(form.opPlayfromlistview[1]->isChecked());
    EXPECT_EQ(form.mnuPlayfromListView->text(), u"Play Continously on Mouse Click");
    const QTreeWidget& list = *form.lvAudioDetails;
    for (QWidget* part :
         std::initializer_list<QWidget*>{list.viewport(), list.header()->viewport(),
                                         list.verticalScrollBar(), list.horizontalScrollBar()}) {
        mouse(QEvent::MouseButtonRelease, QPoint(1, 1), part);
        EXPECT_EQ(EDT.taken(), u"SoundStop") << part->metaObject()->className();
    }
}

TEST_F(List, EachPressPlaysAndItsRowAloneIsHighlighted) {
    addRows(10);
    press(2);
    release(2);
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 3000 60000|3");
    mouse(QEvent::MouseButtonDblClick, 2);
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 3000 60000|3") << "as quick as that";
    release(2);
    EXPECT_EQ(EDT.taken(), u"SoundStop");
    press(2);
    mouse(QEvent::MouseMove, 5);
    release(5);
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 3000 60000|3") << "drawn over others";
    press(0);
    mouse(QEvent::MouseMove, QPoint(20, -30), form.lvAudioDetails->viewport());
    mouse(QEvent::MouseButtonRelease, QPoint(20, -30), form.lvAudioDetails->viewport());
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 1000 60000|1") << "drawn out of the list";
    mouse(QEvent::MouseButtonPress, QPoint(20, 400), form.lvAudioDetails->viewport());
    mouse(QEvent::MouseMove, 5);
    release(5);
    EXPECT_EQ(playedAndHighlighted(), u"|1") << "pressed below the rows";
    press(0, Qt::ControlModifier);
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 1000 60000|1");
    key(Qt::Key_8, u"8"_qs);
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 8000 60000|8");
    EXPECT_EQ(session.viCurrentRow, 8);
    key(Qt::Key_Shift);
    EXPECT_EQ(playedAndHighlighted(), u"|8");
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Up, {});
    QApplication::sendEvent(form.lvAudioDetails, &held);
    for (int i = 0; i < 2; ++i) {
        QFocusEvent left(QEvent::FocusOut);
        QApplication::sendEvent(form.lvAudioDetails, &left);
        EXPECT_EQ(playedAndHighlighted(), i == 0 ? u"SoundPlayRange 7000 60000|7" : u"|7");
    }
}

TEST_F(List, AKeyThatMovesPlaysAlsoWhereTheListEnds) {
    key(Qt::Key_Down);
    EXPECT_EQ(playedAndHighlighted(), QString()) << "no rows";
    addRows(1);
    press(0);
    EDT.taken();
    for (const int moves :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End}) {
        key(moves);
        EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 1000 60000|1") << moves;
    }
    for (const int stays : {Qt::Key_Shift, Qt::Key_Tab, Qt::Key_F5}) {
        key(stays);
        EXPECT_EQ(playedAndHighlighted(), u"|1") << stays;
    }
}

TEST_F(List, SpaceAndEscapeStopAndSpacePressesTheRowAtRest) {
    key(Qt::Key_Space);
    EXPECT_TRUE(EDT.taken().isEmpty()) << "no rows";
    addRows(3);
    press(1);
    EDT.taken();
    const double playing = 500, atRest = -1;
    const std::tuple<int, double, QString> keys[] = {
        {Qt::Key_Space, playing, u"SoundStop"_qs},
        {Qt::Key_Space, atRest, u"SoundPlayRange 2000 60000"_qs},
        {Qt::Key_Escape, playing, u"SoundStop"_qs},
        {Qt::Key_Escape, atRest, {}}};
    for (const auto& [code, position, calls] : keys) {
        EDT.display.playMs = position;
        key(code);
        EXPECT_EQ(EDT.taken(), calls) << code << " at " << position;
    }
    EDT.display.playMs = playing;
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Space, {}, u" "_qs, true);
    QApplication::sendEvent(form.lvAudioDetails, &held);
    EXPECT_TRUE(EDT.taken().isEmpty()) << "a key that repeats";
    form.lvAudioDetails->setCurrentItem(form.lvAudioDetails->topLevelItem(2));
    key(Qt::Key_Space);
    EXPECT_EQ(EDT.taken(), u"SoundStop") << "its release plays no row that was not pressed yet";
    EDT.display.playMs = atRest;
    key(Qt::Key_Shift);
    EXPECT_EQ(playedAndHighlighted(), u"SoundPlayRange 3000 60000|3") << "other keys do";
}

TEST_F(List, CtrlCCopiesTheCellsOfTheRow) {
    addRows(2);
    press(1);
    EDT.taken();
    form.lvAudioDetails->topLevelItem(1)->setText(model::kContent,
                                                  u"a\tb\vc\nd\re\ff\u2028g\u2029h i"_qs);
    form.lvAudioDetails->topLevelItem(1)->setText(model::kVariance, u"−5 %"_qs);
    QKeyEvent copy(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QApplication::sendEvent(form.lvAudioDetails, &copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              u"2\tP2\ta b c d e f g h i\t2000\t\t2600\t\t\t\t\t−5 %");
    EXPECT_EQ(playedAndHighlighted(), u"|2");
}

TEST_F(List, TheContentPaneTakesTheStripThatTheListGivesUp) {
    form.cbContent->setEnabled(true);
    const std::tuple<QString, bool, double> clicks[] = {{u"Hide Content"_qs, false, 3255},
                                                        {u"Expand Content"_qs, true, 4215}};
    for (const auto& [caption, hidden, height] : clicks) {
        form.cbContent->click();
        EXPECT_EQ(form.cbContent->text(), caption);
        EXPECT_EQ(form.txbContent->isHidden(), hidden);
        EXPECT_NEAR(form.lvAudioDetails->height(), height * 1.5 / 15, 1);
    }
}

TEST_F(List, TheTransportAsksTheEngineAndFollowsThePlayHead) {
    for (QPushButton* button : {form.CommandPlay, form.CommandPause, form.CommandStop}) {
        EXPECT_FALSE(button->isEnabled());
        button->setEnabled(true);
    }
    const std::tuple<qint16, qint32, qint32, QString> plays[] = {
        {0, 300, 400, u"SoundPlay"_qs},
        {1, 700, 700, u"SoundPlayRange 700 -1"_qs},
        {1, 700, 9000, u"SoundPlayRange 700 9000"_qs}};
    for (const auto& [available, begin, end, call] : plays) {
        select(available, begin, end);
        form.CommandPlay->click();
        EXPECT_EQ(EDT.taken(), call);
    }
    Q_EMIT EDT.SoundPlaybackStarted();
    form.CommandPause->click();
    Q_EMIT EDT.SoundPlaybackPaused();
    EXPECT_EQ(form.CommandPause->text(), u"Resume");
    EDT.position = 7200;
    const auto jumped = [this] { return EDT.calls.contains(u"SetDisplayRange 6400 14400"_qs); };
    ASSERT_TRUE(test::waitUntil(jumped, 2000)) << "while paused, too";
    EXPECT_EQ(form.pbWAVFormBuilding->value(), 80);
    form.CommandPause->click();
    EXPECT_TRUE(EDT.taken().endsWith(u"|SoundResume"));
    const auto tick = [this] { QMetaObject::invokeMethod(form.TimerPlaybackPos, "timeout"); };
    select(1, 0, 0);
    tick();
    EXPECT_TRUE(EDT.taken().isEmpty()) << "a cursor at the start bounds nothing";
    select(0, 0, 0);
    EDT.position = 21474837;
    EXPECT_THROW(tick(), test::ProcessEnded);
    EXPECT_TRUE(desk.boxes.shown.last().endsWith(u"Overflow"));
    Q_EMIT EDT.SoundPlaybackStopped();
    EXPECT_FALSE(form.TimerPlaybackPos->isActive());
    EXPECT_EQ(form.CommandPause->text(), u"Pause");
    form.CommandStop->click();
    EXPECT_EQ(EDT.taken(), u"SoundStop");
}

struct Pairing : test::MainDesk {
    model::Script script;
    segmentation::SilenceArray silences{};
    segmentation::Alignment alignment{form, {session, script, silences, EDT}};

    void prompts(int count) {
        script.viPromptCount = static_cast<qint16>(count);
        for (int i = 1; i <= std::min(count, 500); ++i)
            script.Prompts[static_cast<std::size_t>(i)] = {u"N"_qs, u"a b"_qs, u"2"_qs};
    }
    // The cells of all rows.
    QString rows() const {
        QString text;
        for (int i = 0; i < form.lvAudioDetails->topLevelItemCount(); ++i)
            for (int column = 0; column < model::kListColumns; ++column)
                text += form.lvAudioDetails->topLevelItem(i)->text(column) +
                        (column + 1 < model::kListColumns ? u'|' : u'\n');
        return text;
    }
    QList<QColor> grounds() const {
        return {form.txbNberAudioFiles->palette().color(QPalette::Base),
                form.txbNberFileNames->palette().color(QPalette::Base)};
    }
};

TEST_F(Pairing, RowsPairByPositionAndRowsWithoutSpeechShowIt) {
    prompts(4);
    silences[0] = {0, 0, 1500};
    silences[1] = {0, 2300, 4000};
    silences[2] = {0, 6000, 7500};
    session.viCurrentRow = 2;
    form.txbNberAudioFiles->setText(u"3"_qs);
    alignment.Align();
    EXPECT_EQ(grounds(), QList<QColor>(2, QColor(255, 0, 0)));
    form.txbNberAudioFiles->setText(u"4"_qs);
    alignment.Align();
    EXPECT_EQ(grounds(), QList<QColor>(2, QColor(0, 255, 0)));
    EXPECT_EQ(rows(),
              u"1|N|a b|1500|1500|2300|2300|800|2|800| 0 %\n"
              u"2|N|a b|4000|4000|6000|6000|2000|2|800| 150 %\n"
              u"3|N|a b|7500|7500|0|0|-7500|2|800|-1038 %\n"
              u"4|N|a b|0|0|0|0|0|2|800|-100 %\n");
    const auto* flagged = form.lvAudioDetails->topLevelItem(1);
    EXPECT_EQ(flagged->textAlignment(model::kEndAudio), Qt::AlignCenter);
    EXPECT_NE(flagged->textAlignment(model::kContent), Qt::AlignCenter);
    for (const int column : {model::kActual, model::kProjected, model::kVariance})
        EXPECT_EQ(flagged->foreground(column).color(), QColor(255, 0, 0));
    EXPECT_NE(flagged->foreground(model::kWords).color(), QColor(255, 0, 0));
    EXPECT_EQ(form.lvAudioDetails->currentItem(), flagged);
    EXPECT_EQ(form.txbNberFileNames->text(), u"4");
    EXPECT_TRUE(form.txbSpeed->isEnabled() && form.cbContent->isEnabled());
    prompts(40);
    session.viCurrentRow = 35;
    alignment.Align();
    const QTreeWidget& list = *form.lvAudioDetails;
    EXPECT_TRUE(list.viewport()->rect().intersects(list.visualItemRect(list.currentItem())));
}

TEST_F(Pairing, FaultsLeaveTheListHalfBuilt) {
    prompts(0);
    try {
        alignment.Align();
        ADD_FAILURE() << "there is no current row to select";
    } catch (const runtime::Fault& fault) {
        EXPECT_EQ(fault.detail(), u"the script has no rows");
    }
    EXPECT_EQ(form.txbNberFileNames->text(), u"0");
    prompts(501);
    EXPECT_THROW(alignment.Align(), runtime::Fault);
    EXPECT_EQ(form.lvAudioDetails->topLevelItemCount(), 500);
    prompts(3);
    form.txbSpeed->setText(u""_qs);
    EXPECT_THROW(alignment.Align(), runtime::Fault);
}

}  // namespace
