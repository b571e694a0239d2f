#include <QRegularExpression>

#include "journey.h"
#include "model/list_columns.h"
#include "support/wav_samples.h"

using namespace tarnwick;
using test::Samples;
using test::operator+;

namespace {

// Records the texts that a label painted, each once in a row; all counted percents are one text.
struct Painted : QObject {
    QString last, texts;
    bool eventFilter(QObject* label, QEvent* event) override {
        static const QRegularExpression counted(u"(Status[257]: .*)\\b\\d+%"_qs);
        if (event->type() != QEvent::Paint) return false;
        const QString text = static_cast<QLabel*>(label)->text().replace(counted, u"\\1N%"_qs);
        if (text != std::exchange(last, text)) texts += u'|' + text;
        return false;
    }
    // Those since the last look, each behind a bar.
    QString take() {
        last.clear();
        return std::exchange(texts, {});
    }
};

qsizetype frame(qint32 ms) { return std::lrint(ms * 44.1L); }

Samples without(Samples samples, qint32 from, qint32 to) {
    samples.erase(samples.begin() + frame(from), samples.begin() + frame(to));
    return samples;
}
Samples flat(Samples samples, qint32 from, qint32 to) {
    std::fill(samples.begin() + frame(from), samples.begin() + frame(to), 0);
    return samples;
}
Samples with(Samples samples, qint32 at, const Samples& more) {
    samples.insert(samples.begin() + frame(at), more.begin(), more.end());
    return samples;
}
Samples pause(qint32 ms) { return Samples(static_cast<std::size_t>(frame(ms))); }

// The operator at the waveform, with the demo session in the format that the program saves.
struct Editing : test::Launched {
    Painted status;
    Samples take;

    void SetUp() override {
        Launched::SetUp();
        takeDemo(u"harbour_tour.xlsx"_qs);
        const QByteArray bytes = test::contentOf(QStringLiteral(TARNWICK_DEMO "/harbour_tour.wav"));
        for (const char* at = bytes.constData() + 44; at + 1 < bytes.constEnd(); at += 2)
            take.insert(take.end(), 2, qFromLittleEndian<qint16>(at) * 256);  // from 22050 Hz
        form().lbStatus->installEventFilter(&status);
        ASSERT_TRUE(test::waitUntil([&] { return !status.texts.isEmpty(); })) << "never shown";
    }
    bool loads(const Samples& samples) {
        write(u"take.wav"_qs, test::wavFile(samples));
        loadAnew();
        return settled(10);
    }
    // Does something that rebuilds the list, and waits for the new list.
    template <class Act>
    bool rebuilds(Act act) {
        const QPersistentModelIndex old = form().lvAudioDetails->model()->index(0, 0);
        act();
        return test::waitUntil([&] { return !old.isValid(); }) && settled(10);
    }
    bool undoes() {
        const auto ready = [&] { return form().cbUndo->isEnabled(); };
        return test::waitUntil(ready) && rebuilds([&] { form().cbUndo->click(); });
    }
    void select(qint32 begin, qint32 end) { EDT->waveform().SetSelection(1, begin, end); }
    bool saved(const Samples& samples) { return test::samplesOf(in(u"take.wav"_qs)) == samples; }
    bool says(const QString& text) {
        return test::waitUntil([&] { return form().lbStatus->text().startsWith(text); }, 2000);
    }
    qint32 start(int row) { return cell(row, model::kStartMsec).toInt(); }
    qint32 end(int row) { return cell(row, model::kEndMsec).toInt(); }
    std::pair<qint32, qint32> view() {
        std::pair<qint32, qint32> view;
        EDT->waveform().GetDisplayRange(view.first, view.second);
        return view;
    }
    // The number of stretches of speech found, and the colour of both counters.
    QString found() {
        const QColor colour = form().txbNberAudioFiles->palette().color(QPalette::Base);
        EXPECT_EQ(form().txbNberFileNames->palette().color(QPalette::Base), colour);
        return form().txbNberAudioFiles->text() + u' ' + colour.name();
    }
    // The first row with red cells, from 1; 0 if there is none.
    int firstRed() {
        for (int row = 0; row < form().lvAudioDetails->topLevelItemCount(); ++row) {
            const auto* item = form().lvAudioDetails->topLevelItem(row);
            if (item->foreground(model::kVariance).color() == QColor(255, 0, 0)) return row + 1;
        }
        return 0;
    }
};

const QString kGreen = u"10 #00ff00"_qs;

TEST_F(Editing, EveryEditRebuildsTheListAndIsUndoneBitForBit) {
    ASSERT_TRUE(loads(take));
    const QString analysis =
        u"|Status12: Analyzing waveform...|Status7: Analyzing waveform... N%|Status13: Idle"_qs;
    const QString edit = u"|Status3: Editing...  0%|Status2: Editing... N%|Status1: Idle"_qs;
    EXPECT_EQ(status.take(),
              u"|Status: Idle|Status6: Loading... 0%|Status5: Loading... N%|Status4: Idle"_qs +
                  analysis + edit + analysis + edit + analysis);
    const Samples loaded = pause(1500) + take + pause(1500);
    ASSERT_TRUE(saved(loaded));
    const qint32 from = start(3), to = end(3);
    const qint32 between = to + 400;
    const QString rest = u"9 #ff0000"_qs;
    struct Case {
        QPushButton* command;
        qint32 begin, end;
        std::optional<QString> length;  // typed by the operator; else the program's own value
        Samples after;
        QString found;
    };
    const std::vector<Case> cases{
        {form().cbDeleteSelection, from, start(4), {}, without(loaded, from, start(4)), rest},
        {form().cbFlattenSelection, from, to, {}, flat(loaded, from, to), rest},
        {form().cbInsertSilence, between, between, {}, with(loaded, between, pause(1500)), kGreen},
        {form().cbInsertSilence, from, to, {}, with(loaded, from, pause(to - from)), kGreen},
        {form().cbInsertSilence, to, to, u"250.5 ms"_qs, with(loaded, to, pause(250)), kGreen},
        {form().cbInsertSilence, to, to, u""_qs, loaded, kGreen}};
    for (const Case& c : cases) {
        SCOPED_TRACE(&c - cases.data());
        const std::pair shown{from - 2000, to + 3000};
        EDT->waveform().SetDisplayRange(shown.first, shown.second);
        select(c.begin, c.end);
        EXPECT_EQ(form().cbFlattenSelection->isEnabled(), c.end > c.begin);
        if (c.length) form().txbInsertSilence->setText(*c.length);
        status.take();
        ASSERT_TRUE(rebuilds([&] { c.command->click(); }));
        EXPECT_EQ(status.take(), edit + analysis);
        EXPECT_EQ(form().cbFlattenSelection->isEnabled(), c.command == form().cbFlattenSelection)
            << "all commands but Flatten clear the selection";
        EXPECT_TRUE(saved(c.after));
        EXPECT_EQ(found(), c.found);
        EXPECT_EQ(EDT->GetSoundDuration(), static_cast<qint32>(c.after.size() * 10 / 441));
        EXPECT_EQ(form().LabelTotalDuration->text(), EDT->FormatMs(EDT->GetSoundDuration(), 0, 1));
        EXPECT_EQ(view(), shown);
        ASSERT_TRUE(undoes());
        EXPECT_TRUE(saved(loaded));
        EXPECT_EQ(found(), kGreen);
        EXPECT_EQ(start(3), from);
        EXPECT_EQ(view(), shown);
    }
    ASSERT_TRUE(loads(take));
    EXPECT_EQ(view(), std::pair(from - 2000, to + 3000)) << "the range is kept";
}

TEST_F(Editing, RedCellsPointAtTheMismatchAndOneEditFixesIt) {
    ASSERT_TRUE(loads(take));
    ASSERT_EQ(found(), kGreen);
    ASSERT_EQ(firstRed(), 0);
    const qint32 head = 1500;  // the times in the rows include the added pause
    const qint32 middle = (end(3) + start(4)) / 2 - head;
    const qint32 joint = end(5) + 50;
    const Samples together = without(take, joint - head, start(6) - 50 - head);
    const Samples cough = test::wave(2500, 100) + test::wave(300, 9000) + test::wave(2500, 100);

    ASSERT_TRUE(loads(with(take, middle, cough)));
    EXPECT_EQ(found(), u"11 #ff0000");
    ASSERT_EQ(firstRed(), 5);
    EXPECT_NEAR(end(4) - start(4), 300, 5);
    select(start(4), end(4));
    ASSERT_TRUE(rebuilds([&] { form().cbDeleteSelection->click(); }));
    EXPECT_EQ(found(), kGreen);
    EXPECT_EQ(firstRed(), 0);

    ASSERT_TRUE(loads(together));
    EXPECT_EQ(found(), u"9 #ff0000");
    ASSERT_EQ(firstRed(), 6);
    EXPECT_EQ(cell(9, model::kActual).at(0), u'-') << "the last row has no speech";
    select(joint, joint);
    ASSERT_TRUE(rebuilds([&] { form().cbInsertSilence->click(); }));
    EXPECT_EQ(found(), kGreen);
    EXPECT_EQ(firstRed(), 0);
}

TEST_F(Editing, UndoWhilePlayingGoesStraightToTheEngine) {
    ASSERT_TRUE(loads(take));
    select(5000, 9000);
    ASSERT_TRUE(rebuilds([&] { form().cbFlattenSelection->click(); }));
    EXPECT_TRUE(form().cbDeleteSelection->isEnabled()) << "the selection is kept";
    form().CommandPlay->click();
    ASSERT_TRUE(says(u"Status15: Playing...00:00:05."_qs));
    EXPECT_GE(form().pbWAVFormBuilding->value(), 55) << "measured from the start of the sound";
    form().CommandPause->click();
    ASSERT_TRUE(says(u"Status14: Paused at "_qs));
    const qint32 held = EDT->GetPlaybackPosition();
    EXPECT_EQ(form().lbStatus->text(), u"Status14: Paused at "_qs + EDT->FormatMs(held, 0, 1));
    form().CommandPause->click();
    ASSERT_TRUE(says(u"Status15: Playing..."_qs));
    EDT->waveform().SetDisplayRange(0, EDT->GetPlaybackPosition() + 50);
    const qint32 width = view().second;
    ASSERT_TRUE(test::waitUntil([&] { return view().first > 0; }, 2000));
    EXPECT_EQ(view(), std::pair(qRound(0.8 * width), qRound(1.8 * width)));
    ASSERT_TRUE(rebuilds([&] { form().mnuUndo->trigger(); }));
    EXPECT_FALSE(form().TimerPlaybackPos->isActive());
    EXPECT_TRUE(status.take().contains(u"|Status11: Idle"));
    EXPECT_TRUE(saved(pause(1500) + take + pause(1500)));
}

TEST_F(Editing, DeletingTheWholeSoundStopsTheChain) {
    ASSERT_TRUE(loads(take));
    select(700, 700);
    EXPECT_TRUE(test::waitUntil([&] { return form().cbZoomSelection->isEnabled(); }, 2000));
    select(0, EDT->GetSoundDuration());
    status.take();
    form().cbDeleteSelection->click();
    ASSERT_TRUE(test::waitUntil([&] { return EDT->GetSoundDuration() == 0; }));
    ASSERT_TRUE(test::waitUntil([&] { return !form().cbUndo->isEnabled(); }));
    EXPECT_FALSE(form().cbZoomSelection->isEnabled());
    EXPECT_TRUE(status.take().endsWith(u"|Status1: Idle"));
    Q_EMIT form().lvAudioDetails->itemPressed(form().lvAudioDetails->topLevelItem(3), 0);
    form().CommandPlay->click();
    EXPECT_TRUE(says(u"Status11: Idle"_qs));
    EXPECT_TRUE(boxes().isEmpty());
    ASSERT_TRUE(loads(take));
}

}  // namespace
