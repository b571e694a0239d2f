#include "segmentation/slip_guide.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

#include "desk.h"
#include "model/list_columns.h"
#include "segmentation/prompt_list.h"

using namespace tarnwick;

namespace {

// A script of twelve rows and a recording of them in which the test makes slips. A word takes
// 400 ms, and the pauses last two seconds.
struct Guide : test::MainDesk {
    model::Script script;
    segmentation::SilenceArray silences{};
    segmentation::Alignment alignment{form, {session, script, silences, EDT}};
    std::vector<qint32> lengths;
    std::vector<bool> flagged;
    std::vector<qint32> places;
    std::vector<int> pressed, shown;
    segmentation::SlipGuide guide{
        form,
        {session, script, silences, alignment, EDT, desk.notices,
         [this](const std::vector<bool>& rows, const std::vector<qint32>& slips) {
             flagged = rows;
             places = slips;
         },
         [this](int row) { shown.push_back(row); }, [this](int row) { pressed.push_back(row); }}};

    void SetUp() override {
        MainDesk::SetUp();
        for (const int words : {4, 9, 2, 12, 6, 3, 15, 5, 8, 1, 7, 11}) {
            const int row = ++script.viPromptCount;
            script.Prompts[static_cast<std::size_t>(row)] = {
                u"P_%1"_qs.arg(row), QStringList(words, u"words"_qs).join(u' '),
                QString::number(words)};
            lengths.push_back(words * 400);
        }
        session.viCurrentRow = 5;
    }
    void scan() {
        silences.fill({});
        qint32 at = 0;
        for (std::size_t i = 0; i <= lengths.size(); ++i) {
            silences[i] = {0, at, at + 2000};
            at += 2000 + (i < lengths.size() ? lengths[i] : 0);
        }
        EDT.silenceCount = static_cast<qint32>(lengths.size()) + 1;
        form.txbNberAudioFiles->setText(QString::number(lengths.size()));
        alignment.Align();
        guide.listRebuilt();
    }
    qint32 endOf(int silence) const { return silences[std::size_t(silence)].FinishAt; }
    qint32 startOf(int silence) const { return silences[std::size_t(silence)].StartAt; }
    void split(int row) {
        const auto at = lengths.begin() + row - 1;
        const qint32 first = *at * 2 / 5;
        *at -= first;
        lengths.insert(at, first);
    }
    void merge(int row) {
        const auto at = lengths.begin() + row - 1;
        *at += 800 + *(at + 1);
        lengths.erase(at + 1);
    }
};

TEST_F(Guide, TellsOfTheLikeliestSlipsWhenTheCountersAreRed) {
    split(5);
    scan();
    EXPECT_EQ(test::takeSentences(desk.notices.told),
              QStringList{u"13 stretches, 12 prompts. Likeliest: a pause inside row 5 (stretches 5 "
                          u"and 6)."_qs});
    for (const QLineEdit* counter : {form.txbNberAudioFiles, form.txbNberFileNames})
        EXPECT_EQ(counter->toolTip(),
                  u"Row 5: stretches 5 and 6 together fit it: a pause inside the prompt.");
    EXPECT_EQ(places, std::vector<qint32>{startOf(5) + 1000});
    EXPECT_EQ(shown, std::vector<int>{5});

    lengths[4] += lengths[5];
    lengths.erase(lengths.begin() + 5);
    scan();
    EXPECT_EQ(test::takeSentences(desk.notices.told), QStringList());
    EXPECT_EQ(desk.notices.settled, QStringList{u"slips"_qs});
    EXPECT_EQ(form.txbNberAudioFiles->toolTip(), u"");
    EXPECT_EQ(std::ranges::count(flagged, true), 0);
    EXPECT_TRUE(places.empty());

    split(9);
    merge(2);
    desk.notices.settled.clear();
    scan();
    EXPECT_EQ(form.txbNberFileNames->toolTip(),
              u"Stretch 2 fits rows 2 and 3 together: a pause is missing.\n"
              u"Row 9: stretches 8 and 9 together fit it: a pause inside the prompt.");
    EXPECT_EQ(test::takeSentences(desk.notices.told), QStringList()) << "the counters are green";
    EXPECT_EQ(places.size(), 2u);
}

TEST_F(Guide, SelectsWhereTheEditBelongs) {
    EDT.display.rangeEnd = 20000;
    split(9);
    lengths.insert(lengths.begin() + 6, 250);
    merge(2);
    scan();
    ASSERT_EQ(places.size(), 3u);
    const std::tuple<int, qint32, qint32, const char*> cases[] = {
        {1, endOf(5), startOf(6), "the extra stretch"},
        {2, startOf(9) + 250, endOf(9) - 250, "all of the pause that would divide"}};
    for (const auto& [slip, begin, end, what] : cases) {
        EDT.calls.clear();
        guide.selectMending(slip);
        EXPECT_EQ(EDT.calls.last(), u"SetSelection 1 %1 %2"_qs.arg(begin).arg(end)) << what;
        const qint32 from = std::max(begin + (end - begin) / 2 - 10000, 0);
        EXPECT_EQ(EDT.calls.first(), u"SetDisplayRange %1 %2"_qs.arg(from).arg(from + 20000));
    }

    // Loud but for 400 ms not far from the projected border of rows 2 and 3.
    EDT.display.rate = 1000;
    EDT.display.durationMs = 120000;
    EDT.display.samples.assign(120000, 0.5f);
    const qint32 quiet = places[0] + 300;
    std::fill_n(EDT.display.samples.begin() + quiet, 400, 0.001f);
    EDT.calls.clear();
    guide.selectMending(0);
    ASSERT_EQ(EDT.calls.size(), 1) << "the view shows it already";
    const QStringList call = EDT.calls[0].split(u' ');
    EXPECT_EQ(call[2], call[3]) << "a caret";
    EXPECT_NEAR(call[2].toInt(), quiet + 200, 60);

    EDT.calls.clear();
    guide.selectMending(3);
    guide.selectMending(-1);
    EXPECT_TRUE(EDT.calls.isEmpty()) << "no such slip";

    lengths.assign({1600, 3600, 800, 4800, 2400, 1200, 6000, 2000, 3200, 400, 2800});
    form.txbSilence->setText(u"1e300"_qs);
    scan();
    ASSERT_EQ(places.size(), 1u) << "the last row was not read";
    guide.selectMending(0);
    EXPECT_EQ(EDT.calls.last(), u"SetSelection 1 %1 %1"_qs.arg(startOf(11) + 1000));
}

TEST_F(Guide, PressesTheNextDoubtfulRow) {
    scan();
    guide.pressDoubtful(true);
    EXPECT_TRUE(pressed.empty()) << "nothing is doubtful";

    lengths[2] *= 2;
    lengths[7] *= 2;
    scan();
    guide.pressDoubtful(true);
    guide.rowPressed(5);
    for (const bool forward : {true, false})
        guide.pressDoubtful(forward);
    EXPECT_EQ(pressed, (std::vector<int>{3, 8, 3})) << "flagged rows: the first, then around row 5";

    lengths.insert(lengths.begin() + 8, 250);
    scan();
    for (const int current : {5, 9, 12}) {
        guide.rowPressed(current);
        pressed.clear();
        for (const bool forward : {true, false})
            guide.pressDoubtful(forward);
        EXPECT_EQ(pressed, std::vector<int>(current == 9 ? 0 : 1, 9))
            << "only likely slips, " << current;
    }
    pressed.clear();
    form.lvAudioDetails->clear();
    guide.pressDoubtful(false);
    guide.forget();
    EXPECT_TRUE(pressed.empty()) << "a scan is under way, or the sound is gone";
    EXPECT_EQ(form.txbNberAudioFiles->toolTip(), u"");
    EXPECT_EQ(desk.notices.settled.last(), u"slips");
    guide.selectMending(0);
    EXPECT_EQ(guide.tipOfSlip(0), u"");
}

TEST_F(Guide, ExplainsRowsAndStretches) {
    script.Prompts[2].Content = u"<b>\vbold</b>"_qs;
    lengths[1] = 5200;
    lengths.resize(9);
    scan();
    const QString row2 = guide.tipOfStretch(2);
    for (const QString& part :
         {u"Row 2: P_2"_qs, u"&lt;b&gt; bold&lt;/b&gt;"_qs, u"5600 to 10800, 5.2 s"_qs})
        EXPECT_TRUE(row2.contains(part)) << part.toStdString() << " in " << row2.toStdString();
    EXPECT_FALSE(row2.contains(u"Red:"));
    EXPECT_EQ(form.lvAudioDetails->topLevelItem(1)
                  ->data(model::kRow, Qt::AccessibleDescriptionRole)
                  .toString(),
              u"Row 2: P_2 <b> bold</b> 5600 to 10800, 5.2 s");
    lengths[1] = 5500;
    scan();
    EXPECT_TRUE(
        guide.tipOfRow(2).contains(u"Red: 5.5 s; 9 words at 150 a minute would take 3.6 s."));
    EXPECT_TRUE(guide.tipOfRow(2).contains(u"while the button is held"));
    form.mnuPlayfromListView->setChecked(false);
    form.opPlayfromlistview[0]->setChecked(true);
    EXPECT_TRUE(guide.tipOfRow(2).contains(u"plays on to the end of the recording"));
    EXPECT_TRUE(guide.tipOfRow(10).contains(u"it plays from the end of the last pause"));
    EXPECT_TRUE(guide.tipOfRow(11).contains(u"it plays from the recording's begin"));
    EXPECT_EQ(guide.tipOfRow(0) + guide.tipOfRow(13), u"");

    lengths.assign(14, 2000);
    scan();
    EXPECT_TRUE(guide.tipOfStretch(13).contains(u"the script has no row for it"));
}

TEST_F(Guide, IsAskedByTheList) {
    QList<bool> asked;
    segmentation::PromptList list(
        form, desk.failure, state, session, EDT,
        {[this](int row) { shown.push_back(row); }, [&](bool forward) { asked << forward; },
         [this](int row) { return guide.tipOfRow(row); }});
    scan();
    shown.clear();
    for (const Qt::KeyboardModifiers held :
         {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier})
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent key(type, Qt::Key_N, held);
            QApplication::sendEvent(form.lvAudioDetails, &key);
        }
    EXPECT_EQ(asked, (QList<bool>{true, false}));
    EXPECT_TRUE(shown.empty()) << "the release presses nothing";
    list.pressRow(7);
    EXPECT_EQ(shown, std::vector<int>{7});
    EXPECT_EQ(session.viCurrentRow, 7);

    frame.show();
    QWidget* rows = form.lvAudioDetails->viewport();
    const QPoint at =
        form.lvAudioDetails->visualItemRect(form.lvAudioDetails->topLevelItem(3)).center();
    QHelpEvent hover(QEvent::ToolTip, at, rows->mapToGlobal(at));
    QApplication::sendEvent(rows, &hover);
    EXPECT_TRUE(QToolTip::text().contains(u"Row 4: P_4")) << QToolTip::text().toStdString();
}

}  // namespace
