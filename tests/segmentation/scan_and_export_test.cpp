#include "desk.h"
#include "segmentation/individual_export.h"
#include "segmentation/silence_detection.h"

using namespace tarnwick;

namespace {

struct Scan : test::MainDesk {
    settings::SettingsDatabase database;
    int aligned = 0;
    segmentation::SilenceDetection detection{
        form, {desk.failure, state, EDT, database, desk.clock, [this] { ++aligned; }}};

    void SetUp() override {
        MainDesk::SetUp();
        desk.takeDatabase();
        state.vsConnection = settings::connectionString(desk.folder.path());
        form.chRecalcTimer->setChecked(false);
    }
    // A scan from its start to the list.
    void scan(int silences) {
        EDT.silenceCount = silences;
        detection.cbProcess_Click();
        Q_EMIT EDT.SilencePosDetectionDone(1);
        fire(form.EDTTimerSilencePosDetectionDone);
    }
    QString stored(const QString& what) {
        const settings::Access access(database, state.vsConnection);
        return database.Read(u"SELECT "_qs + what + u" AS X FROM Silences"_qs).text(u"X"_qs);
    }
};

TEST_F(Scan, AsksWithTheThresholdOfTheRoundedPercentage) {
    const std::tuple<QString, QString, QString> cases[] = {{u"-35"_qs, u"1.8"_qs, u"589"_qs},
                                                           {u"-100"_qs, u"0.0"_qs, u"0"_qs},
                                                           {u"0"_qs, u"100.0"_qs, u"32767"_qs},
                                                           {u"-26"_qs, u"5.0"_qs, u"1638"_qs}};
    for (const auto& [decibels, percent, amplitude] : cases) {
        addRows(2);
        form.txbThreshold->setText(decibels);
        form.cbProcess->setEnabled(true);
        form.cbProcess->click();
        EXPECT_EQ(EDT.taken(), u"SilencePositionsDetect %1 1500"_qs.arg(amplitude));
        EXPECT_EQ(form.txbSilencePerc->text(), percent);
        EXPECT_EQ(form.txbSilenceThreshold->text(), amplitude);
        EXPECT_EQ(form.lvAudioDetails->topLevelItemCount(), 0);
    }
    EXPECT_FALSE(form.txbCalculating->isHidden());
    EXPECT_TRUE(detection.scanning());
    Q_EMIT EDT.SilencePosDetectionDone(1);
    detection.drop();
    EXPECT_FALSE(detection.scanning() || form.EDTTimerSilencePosDetectionDone->isActive());
    EDT.detectResult = engine::kNoSound;
    detection.cbProcess_Click();
    EXPECT_FALSE(detection.scanning()) << "no event will come";
    form.txbSilence->setText(u"soon"_qs);
    EXPECT_THROW(detection.cbProcess_Click(), runtime::Fault);
    form.txbThreshold->setText(u"0.1"_qs);
    EXPECT_THROW(detection.cbProcess_Click(), runtime::Fault) << "beyond the engine's scale";
}

TEST_F(Scan, StoresUpTo501Silences) {
    for (const int count : {0, 1, 501, 3}) {
        scan(count);
        EXPECT_EQ(form.txbNberAudioFiles->text(), QString::number(count - 1));
        EXPECT_EQ(stored(u"COUNT(*)"_qs), QString::number(count));
        EXPECT_FALSE(detection.scanning());
    }
    EXPECT_EQ(stored(u"MAX(FinishAt)"_qs), u"2400");
    EXPECT_EQ(detection.silences()[2].FinishAt, 2400);
    EXPECT_EQ(detection.silences()[3].FinishAt, 0) << "cleared before each scan";
    EXPECT_EQ(aligned, 4);
    EXPECT_TRUE(form.mnuExport->isEnabled() && form.txbCalculating->isHidden());
    EXPECT_FALSE(database.isOpen());
    form.chRecalcTimer->setChecked(true);
    form.txbRecalcTimer->setText(u"1"_qs);
    scan(3);
    EXPECT_EQ(desk.clock.seconds, 1.25) << "service holds the window; the first look is at 0.25";
}

TEST_F(Scan, The502ndSilenceEndsTheProgramWithTheOthersStored) {
    EDT.silenceCount = 502;
    detection.cbProcess_Click();
    Q_EMIT EDT.SilencePosDetectionDone(1);
    EXPECT_THROW(test::waitUntil([] { return false; }, 400), test::ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.last(), u"Tarnwick|Subscript out of range");
    EXPECT_EQ(stored(u"COUNT(*)"_qs), u"501");
    EXPECT_EQ(aligned, 0);
    EXPECT_EQ(desk.log(), "");
}

struct Export : test::MainDesk {
    platform::Disk files;
    QTemporaryDir project;
    bool changing = false;
    int batch = 0;
    int stuck = 0;
    segmentation::IndividualExport exporting{
        form,
        {desk.failure, session, EDT, desk.boxes, files, [this] { return changing; },
         [this] { ++batch; }, [this] { ++stuck; }}};

    void SetUp() override {
        MainDesk::SetUp();
        session.loadedFolder = project.path();
        session.loadedFile = u"take.wav"_qs;
        session.loadedScript = u"script.xlsx"_qs;
        session.vsScriptFile = u"of a load that was given up.xlsx"_qs;
        QDir(project.path()).mkdir(u"BU_Source_Files"_qs);
        for (const QString& name : {u"take.wav"_qs, u"script.xlsx"_qs})
            test::writeFile(project.filePath(name), "recording");
        form.txbNberFileNames->setText(u"3"_qs);
        form.txbNberAudioFiles->setText(u"3"_qs);
        form.mnuExport->setEnabled(true);
        addRows(3);
    }

    void next() {
        EDT.endExport();
        fire(form.EDTTimerSoundExportDone);
    }
    bool moved(const QString& name) const {
        return QFile::exists(project.filePath(u"BU_Source_Files/"_qs + name)) &&
               !QFile::exists(project.filePath(name));
    }
};

TEST_F(Export, WithoutAListThereIsNothingToWriteAndDifferentCountersAreAskedAbout) {
    changing = true;
    form.mnuExport->trigger();
    changing = false;
    form.lvAudioDetails->clear();
    form.mnuExport->trigger();
    EXPECT_TRUE(form.frExportFiles->isHidden() && desk.boxes.shown.isEmpty());
    addRows(1);
    form.txbNberAudioFiles->setText(u"2"_qs);
    form.mnuExport->trigger();
    EXPECT_EQ(desk.boxes.shown,
              QStringList(u"Warning!|The file numbers are different so something is incorrect. Do "
                          u"you want proceed anyway?"_qs));
    EXPECT_TRUE(EDT.calls.isEmpty());
    desk.boxes.yes = true;
    form.mnuExport->trigger();
    EXPECT_EQ(EDT.calls.size(), 1);
}

TEST_F(Export, ABackupStillBeingWrittenFinishesNoRunEarly) {
    EDT.pending = 1;  // the backup
    form.mnuExport->trigger();
    next();
    EXPECT_EQ(EDT.calls.size(), 1) << "the backup's end moves nothing on: row 1 is on its way";
    EXPECT_EQ(form.lbExporting->text(), u"Exporting file 1 of 3");
    next();
    EXPECT_EQ(form.pbExporting->value(), 2);
    next();
    EXPECT_EQ(EDT.calls.size(), 3);
    EXPECT_EQ(EDT.calls.last(), u"SoundExport 44100 1 3000 3600 P3.wav");
    EDT.pending = 2;  // another backup was asked for while the last row is being written
    next();
    EXPECT_EQ(batch, 0);
    EXPECT_FALSE(moved(u"take.wav"_qs));
    next();
    EXPECT_EQ(batch, 1);
    EXPECT_TRUE(moved(u"take.wav"_qs) && moved(u"script.xlsx"_qs));
    EDT.pending = 1;
    next();  // a backup after the run
    EXPECT_EQ(batch, 1);
}

TEST_F(Export, ARunWaitsForAListThatIsBeingRebuilt) {
    form.mnuExport->trigger();
    changing = true;
    EDT.endExport();
    test::pass(250);
    EXPECT_EQ(EDT.calls.size(), 1) << "the old list is no guide";
    form.lvAudioDetails->clear();
    changing = false;
    test::pass(250);
    EXPECT_EQ(EDT.calls.size() + batch, 1);
    addRows(3);
    ASSERT_TRUE(test::waitUntil([this] { return EDT.calls.size() == 2; }, 1000));
    exporting.drop();
    EXPECT_TRUE(form.frExportFiles->isHidden());
    next();
    EXPECT_EQ(batch, 0);
    EXPECT_EQ(EDT.calls.size(), 2) << "another recording took the sound's place";
}

TEST_F(Export, ARunGoesOnWithTheRowsOfAListThatALoadCommandHasEmptied) {
    form.mnuExport->trigger();
    for (const QString& last : {u"P2.wav"_qs, u"P3.wav"_qs}) {
        exporting.keepRows();  // the second time there is nothing left in the list
        form.lvAudioDetails->clear();
        Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 0);  // a failed edit changes nothing
        EXPECT_TRUE(exporting.running());
        next();
        EXPECT_EQ(EDT.calls.last().section(u' ', -1), last);
    }
    next();
    EXPECT_EQ(batch, 1);
    EXPECT_TRUE(moved(u"take.wav"_qs) && moved(u"script.xlsx"_qs));
    EXPECT_FALSE(exporting.running());
    EXPECT_EQ(stuck, 0);
}

TEST_F(Export, KeptRowsGoWithTheSoundThatTheyBelongTo) {
    form.mnuExport->trigger();
    exporting.keepRows();
    form.lvAudioDetails->clear();
    Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 1);
    EDT.endExport();
    test::pass(250);
    EXPECT_EQ(EDT.calls.size(), 1);
    EXPECT_GT(stuck, 0) << "the edit has come to no list";
    EXPECT_FALSE(exporting.running());
    addRows(3);
    EXPECT_TRUE(test::waitUntil([this] { return EDT.calls.size() == 2; }, 1000));
    EXPECT_TRUE(exporting.running());
}

TEST_F(Export, RowsAreKeptForTheRunOnlyAndNotOfAListThatChanges) {
    form.mnuExport->trigger();
    changing = true;
    exporting.keepRows();
    changing = false;
    EXPECT_TRUE(exporting.running());
    form.lvAudioDetails->clear();
    EDT.endExport();
    EXPECT_FALSE(exporting.running()) << "the list was none of this sound";
    addRows(3);
    exporting.keepRows();
    exporting.drop();
    form.mnuExport->trigger();
    form.lvAudioDetails->clear();
    EDT.endExport();
    EXPECT_FALSE(exporting.running()) << "those rows were another run's";
}

TEST_F(Export, ARefusedRowIsAStandstillAndNoBackupMovesItOn) {
    EDT.refuseExports = true;
    form.mnuExport->trigger();
    EXPECT_EQ(stuck, 1);
    EXPECT_FALSE(form.frExportFiles->isHidden());
    EDT.refuseExports = false;
    EDT.pending = 1;  // a backup
    next();
    EXPECT_TRUE(EDT.calls.isEmpty());
    form.mnuExport->trigger();
    EXPECT_EQ(EDT.calls, QStringList(u"SoundExport 44100 1 1000 1600 P1.wav"_qs));
}

TEST_F(Export, NamesLeadNowhereElseAndDoNotCostTheRecording) {
    form.lvAudioDetails->topLevelItem(0)->setText(1, u"../BU_Source_Files/take_100"_qs);
    form.lvAudioDetails->topLevelItem(1)->setText(1, u"take"_qs);
    form.mnuExport->trigger();
    EXPECT_EQ(EDT.calls,
              QStringList(u"SoundExport 44100 1 1000 1600 .._BU_Source_Files_take_100.wav"_qs));
    next();
    EXPECT_EQ(test::contentOf(project.filePath(u"BU_Source_Files/take.wav"_qs)), "recording");
    test::writeFile(project.filePath(u"take.wav"_qs), "another");
    next();
    next();
    EXPECT_EQ(test::contentOf(project.filePath(u"take.wav"_qs)), "another") << "cannot be moved";
    EXPECT_TRUE(moved(u"script.xlsx"_qs));
    EXPECT_EQ(batch, 1);
}

}  // namespace
