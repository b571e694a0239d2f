#include "segmentation/sound_notices.h"

#include <cerrno>

#include "desk.h"
#include "segmentation/alignment_row.h"
#include "segmentation/editing.h"
#include "segmentation/reload_chain.h"
#include "segmentation/silence_detection.h"

using namespace tarnwick;
using namespace tarnwick::segmentation;
using engine::Operation;

namespace {

TEST(SoundNotices, AFailedEditNamesItsReasonAndTheWayOut) {
    using enum EditKind;
    const std::tuple<EditKind, qint16, engine::ErrorCode, QString, QString> cases[] = {
        {Operator, engine::kDeleteRange, engine::kBadRange,
         u"The selection was not deleted: the times are outside the sound."_qs,
         u"Make the selection again."_qs},
        {Operator, engine::kInsertSilence, engine::kBadRange,
         u"The silence was not inserted: the length is negative."_qs, u"Enter a length"_qs},
        {Operator, engine::kApplyVolume, engine::kSourceChanged,
         u"The selection was not flattened: another program has changed the file of the loaded sound."_qs,
         u"Move or rename the folder BU_Source_Files"_qs},
        {Operator, engine::kUndo, engine::kNotSupported,
         u"Undo changed nothing: there is nothing to undo."_qs, u""_qs},
        {EndPause, engine::kInsertSilence, engine::kBadRange,
         u"The load could not add its pause at the end of the sound: the length is negative."_qs,
         u"Set Duration to"_qs}};
    for (const auto& [kind, command, code, what, remedy] : cases) {
        const platform::Notice notice = editFailed(kind, command, {Operation::Edit, {}, code});
        EXPECT_EQ(notice.what, what);
        EXPECT_EQ(notice.remedy.left(remedy.size()), remedy);
        EXPECT_EQ(notice.remedy.isEmpty(), remedy.isEmpty());
    }
}

struct SoundTells : test::MainDesk {
    settings::SettingsDatabase database;
    StatusLine status{form};
    ReloadChain chain{
        form, {desk.failure, session, EDT, desk.boxes, desk.notices, status, [] {}, [] {}, [] {}}};
    SilenceDetection detection{
        form, {desk.failure, state, EDT, database, desk.clock, desk.notices, [] {}}};

    QString told() {
        QStringList texts;
        for (const platform::Notice& notice : std::exchange(desk.notices.told, {}))
            texts << notice.what.section(u',', 0, 0);
        return texts.join(u'|');
    }
    // A load that has added both of its pauses.
    void load() {
        session.vsLoadStage = QString::fromUtf16(model::kInitialLoad);
        Q_EMIT EDT.SoundLoadingDone(1);
        for (int i = 0; i < 3; ++i) {
            fire(form.TimerReload);
            Q_EMIT EDT.WaveAnalysisDone();
            fire(form.TimerDisplayWaveform);
            if (i < 2) Q_EMIT EDT.SoundEditDone(engine::kInsertSilence, 1);
        }
    }
    void edit(engine::EditCommand command, qint32 result = 1) {
        chain.editAsked();
        Q_EMIT EDT.SoundEditDone(command, result);
    }
};

TEST_F(SoundTells, AnUndoThatTakesBackThePausesOfTheLoad) {
    const QString end = u"Undo took back the pause that the load had added at the end"_qs;
    const QString start = u"Undo took back the pause that the load had added at the start"_qs;
    load();
    edit(engine::kDeleteRange);
    edit(engine::kInsertSilence, 0);
    EXPECT_TRUE(told().startsWith(u"The silence was not inserted: "));
    for (const QString& expected : {QString(), end, start}) {
        edit(engine::kUndo);
        EXPECT_EQ(told(), expected);
    }
    edit(engine::kInsertSilence);
    edit(engine::kUndo);
    EXPECT_EQ(told(), QString()) << "the operator's own pause";
    chain.drop();
    load();
    edit(engine::kUndo);
    EXPECT_EQ(told(), end) << "the first load belongs to another session";
}

TEST_F(SoundTells, AnEditOrASearchThatFailsAndASoundThatIsGone) {
    Q_EMIT EDT.failed({Operation::Edit, u"/p/take.wav"_qs, engine::kDamaged, EIO});
    edit(engine::kDeleteRange, 0);
    EXPECT_EQ(told(), u"The selection was not deleted: the disk reports an error.");
    EDT.detectResult = engine::kNoSound;
    detection.cbProcess_Click();
    Q_EMIT EDT.failed({Operation::Scan, u"/p/take.wav"_qs, engine::kDamaged, 0});
    EXPECT_EQ(desk.notices.told.value(0).what,
              u"The search for pauses failed, so the list has no usable rows: no sound is loaded.");
    EXPECT_EQ(desk.notices.told.value(1).files, QStringList(u"/p/take.wav"_qs));
    told();
    Q_EMIT EDT.SilencePosDetectionDone(0);
    EXPECT_TRUE(desk.notices.settled.isEmpty());
    Q_EMIT EDT.SilencePosDetectionDone(1);
    EXPECT_EQ(desk.notices.settled, QStringList(scanTopic()));
    for (const Operation operation : {Operation::Edit, Operation::Scan})
        Q_EMIT EDT.failed({operation, u"/p/take.wav"_qs, engine::kSourceChanged, 0});
    edit(engine::kInsertSilence, 0);
    EXPECT_EQ(told(), QString()) << "the project room tells it";
    EDT.duration = 0;
    Q_EMIT EDT.SoundLoadingDone(0);
    fire(form.TimerReload);
    EXPECT_EQ(told(), QString()) << "a failed load is no edit";
    session.loadedFolder = u"/p"_qs;
    session.loadedFile = u"take.wav"_qs;
    edit(engine::kDeleteRange);
    fire(form.TimerReload);
    EXPECT_EQ(desk.notices.told.value(0).safe, u"take.wav is as it was last saved.");
}

TEST_F(SoundTells, AFaultNamesItsBox) {
    const auto detail = [](auto act) {
        try {
            act();
        } catch (const runtime::Fault& fault) {
            return fault.detail();
        }
        return u"none"_qs;
    };
    form.txbSilence->setText(u"%1"_qs);
    for (const auto& [threshold, expected] :
         std::map<QString, QString>{{u"abc"_qs, u"Threshold is \"abc\""_qs},
                                    {u"35"_qs, u"Threshold is \"35\""_qs},
                                    {u"-35"_qs, u"Duration is \"%1\""_qs}}) {
        form.txbThreshold->setText(threshold);
        EXPECT_EQ(detail([&] { detection.cbProcess_Click(); }), expected);
    }
    EXPECT_EQ(detail([] {
                  alignRow({{}, {}, u"3"_qs}, {}, {}, u"fast"_qs, u"50"_qs);
              }),
              u"Words/min is \"fast\"");
    Editing editing{form, desk.failure, session, EDT, [] {}};
    form.txbInsertSilence->setText(u"99999999999"_qs);
    EXPECT_THROW(form.cbInsertSilence->click(), test::ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.last(), u"Tarnwick|Overflow (Insert Silence is \"99999999999\")");
}

}  // namespace
