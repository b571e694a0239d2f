#include <gtest/gtest.h>

#include "batch/choice_notices.h"
#include "batch/run_notices.h"
#include "batch/source_notices.h"
#include "chain.h"

using namespace tarnwick;
using batch::Halt;
using batch::Trouble;
using engine::Failure;
using engine::Operation;

namespace {

QString whatOf(const std::optional<platform::Notice>& notice) {
    return notice ? notice->what : u"none"_qs;
}

batch::RunReport report(qsizetype files, qsizetype written) {
    batch::RunReport made;
    made.underWay = true;
    made.rawFolder = u"/p/Raw_Files"_qs;
    made.files = files;
    made.written = written;
    return made;
}

TEST(RunNotices, TheEndCountsFilesByTroubleAndReason) {
    batch::RunReport run = report(9, 6);
    EXPECT_EQ(whatOf(noticeOfEnd(run)), u"none");
    for (const auto& [file, reason] : {std::pair{u"a.wav"_qs, u"no space"_qs},
                                       {u"b.wav"_qs, u"no permission"_qs},
                                       {u"c.wav"_qs, u"no space"_qs}}) {
        run.inWork = file;
        run.add(Trouble::NotWritten, reason);
        run.add(Trouble::NotWritten, reason);
    }
    run.add(Trouble::Uncut);
    EXPECT_EQ(whatOf(noticeOfEnd(run)),
              u"3 of 9 files were not written: a.wav and c.wav (no space); b.wav (no permission). "
              u"1 of 9 files was not cut at its end, because the cut is longer than the sound: "
              u"c.wav.");
    EXPECT_EQ(noticeOfEnd(run)->files.join(u'|'),
              u"/p/Raw_Files/a.wav|/p/Raw_Files/b.wav|/p/Raw_Files/c.wav");

    run = report(3, 0);
    run.output = u"x.mp3"_qs;
    for (const QString& file : {u"x.aa1"_qs, u"x.aa2"_qs, u"x.aa3"_qs}) {
        run.inWork = file;
        run.wrote();
    }
    EXPECT_EQ(
        whatOf(noticeOfEnd(run)),
        u"3 of 3 files were written. 2 of 3 files were written, but their outputs were "
        u"replaced by later ones of the same name: x.aa1 and x.aa2 (the output on the disk is "
        u"the one of x.aa3).");
    run = report(1, 1);
    run.inWork = u"a.wav"_qs;
    run.add(Trouble::Empty);
    EXPECT_TRUE(noticeOfEnd(run)->remedy.contains(u"copy the source of this file"));
    EXPECT_EQ(whatOf(noticeOfEnd(run)),
              u"1 of 1 file was written. 1 of 1 file was emptied, because the cut is as long as "
              u"the sound or longer: a.wav.");
}

TEST(RunNotices, AHaltTellsWhereTheSourceIsAndWhatHappenedBefore) {
    batch::RunReport run = report(3, 1);
    run.inWork = u"a.wav"_qs;
    run.add(Trouble::Inaudible);
    run.inWork = u"b.wav"_qs;
    run.add(Trouble::NotWritten, u"no space"_qs);
    const platform::Notice notice = noticeOfHalt(run, Halt::Export, u"no space"_qs);
    EXPECT_EQ(notice.what,
              u"The batch run is stuck at b.wav: its output could not be started: no space. 1 of 3 "
              u"files was written before that. 1 of 3 files was treated as silence, because "
              u"nothing in it is louder than the threshold: a.wav.");
    EXPECT_EQ(notice.safe, u"All sources are in Raw_Files; b.wav is called ZZ_TEMP_b.wav there.");
    EXPECT_EQ(notice.files.join(u'|'), u"/p/Raw_Files/ZZ_TEMP_b.wav|/p/Raw_Files/a.wav");
    EXPECT_TRUE(
        notice.remedy.startsWith(u"Close the window with its close button, which is safe. "));
}

TEST(ChoiceNotices, TellWhatWouldStopOrSpoilTheRun) {
    const QList<double> rates{320000, 128000};
    const struct {
        batch::Choices choices;
        QString told;  // words of the notice; empty if there is none
    } cases[] = {
        {{true, true, u"128 kbps"_qs, rates, u"5.0"_qs, true, u"0.0"_qs, u"100.0"_qs}, {}},
        {{false, false, u"x"_qs, {}, u"5.0"_qs, false, u"20"_qs, u"1000.0"_qs}, {}},
        {{true, false, u""_qs, {}, u"5.0"_qs, false, {}, {}},
         u"selected, and the bit rate (empty) is not a number: the program would end"_qs},
        {{true, false, u"128 kbps"_qs, {}, u"5.0"_qs, false, {}, {}},
         u"get stuck at its first file"_qs},
        {{true, true, u"129 kbps"_qs, rates, u"5.0"_qs, false, {}, {}},
         u"no bit rate of '129 kbps' at this frequency"_qs},
        {{true, true, u"128"_qs, rates, u"5.0"_qs, false, {}, {}},
         u"for the bit rate ('128') is not a number"_qs},
        {{false, true, {}, {}, u"5 x"_qs, false, {}, {}},
         u"for the silence threshold in percent ('5 x') is not a number"_qs},
        {{false, true, {}, {}, u"5.0"_qs, true, u"-1"_qs, u"89 %"_qs},
         u"for the maximum in percent ('89 %') is not a number"_qs},
        {{false, true, {}, {}, u"5.0"_qs, true, u"1.5"_qs, u"118.9"_qs},
         u"normalized to 1.5 dB, which is above full scale"_qs},
        {{false, true, {}, {}, u"3.0"_qs, false, {}, {}, true, u"-26 dB"_qs},
         u"('-26 dB') is not a number, so the run uses the percentage next to it, 3.0."_qs},
        {{false, true, {}, {}, u"3.0"_qs, true, u"loud"_qs, u"90"_qs, false, u"-26 dB"_qs},
         u"the maximum in dB ('loud') is not a number"_qs}};
    for (const auto& [choices, told] : cases) {
        QString what;
        for (const platform::Notice& notice : noticesOf(choices))
            what += notice.what;
        EXPECT_TRUE(told.isEmpty() ? what.isEmpty() : what.contains(told)) << what.toStdString();
    }
}

TEST(ChoiceNotices, TellTheBoxesThatCannotBeStored) {
    EXPECT_EQ(whatOf(batch::noticeOfEntries({{u"the cut"_qs, u"-5.5"_qs}})), u"none");
    EXPECT_EQ(
        whatOf(batch::noticeOfEntries(
            {{u"the cut"_qs, {}}, {u"the head"_qs, u"5"_qs}, {u"the tail"_qs, u"1e999"_qs}})),
        u"These boxes do not contain a number: the cut (empty) and the tail ('1e999'). The program "
        u"would end with an error when Process stores the settings.");
}

TEST(SourceNotices, FilesThatShareAnOutputAndDisksThatAreTooSmall) {
    const QString folder = u"/p"_qs;
    EXPECT_EQ(whatOf(batch::noticeOfSharedNames({u"a.wav"_qs, u"b.wav"_qs, u"ab"_qs}, folder)),
              u"none");
    EXPECT_EQ(whatOf(batch::noticeOfSharedNames(
                  {u"t.WAV"_qs, u"t.wav"_qs, u"ab01"_qs, u"ab02"_qs, u"u.wav"_qs}, folder)),
              u"These files would be written under the same name, so that only the last one would "
              u"be kept: ab01 and ab02; t.WAV and t.wav.");
    EXPECT_EQ(whatOf(batch::noticeOfSpace(3'200'000'000, 1'100'000'000, folder)),
              u"The disk of the project folder may be too small for this run: about 3.2 GB will be "
              u"written, and 1.1 GB is free.");
    for (const auto& [needed, free] : {std::pair<qint64, qint64>{5, 5}, {5, -1}, {-1, 0}})
        EXPECT_EQ(whatOf(batch::noticeOfSpace(needed, free, folder)), u"none");
}

// A run in the window with a sound editor that reports failures.
struct Told : test::Chain {
    void fail(Operation operation, engine::ErrorCode code) {
        Q_EMIT EDTX.failed({operation, {}, code, 0});
    }
    // The notices told since the last call, one per line.
    QString told() { return test::takeSentences(desk.notices.told).join(u'\n'); }
};

TEST_F(Told, ARunInWhichAllIsWellTellsNothing) {
    open({u"a.wav"_qs});
    for (QCheckBox* box : {form.chCutEnd, form.chSilenceEnds, form.chNormalize})
        box->setChecked(true);
    process();
    loaded();
    edited(1);
    edited(1);
    audible(800, 9000);
    edited(14);
    edited(14);
    edited(19);
    exported();
    processor->stop();
    EXPECT_EQ(told(), QString());
}

TEST_F(Told, FailedStepsAreCountedUntilTheEnd) {
    open({u"a.wav"_qs, u"b.wav"_qs, u"c.wav"_qs});
    for (QCheckBox* box : {form.chCutEnd, form.chSilenceEnds})
        box->setChecked(true);
    form.txbCutStart->setText(u"0"_qs);
    form.txbCutEnd->setText(u"10001"_qs);
    process();
    loaded();
    fail(Operation::Edit, engine::kBadRange);
    edited(1);
    fail(Operation::Scan, engine::kDamaged);
    audible(0, 0);
    edited(14);
    edited(14);
    fail(Operation::Export, engine::kWriteFailed);
    exported();
    form.txbCutEnd->setText(u"10000"_qs);
    loaded();
    edited(1);
    audible(0, 0);
    fail(Operation::Edit, engine::kNoMemory);
    edited(14);
    edited(14);
    exported();
    form.txbCutEnd->setText(u"1"_qs);
    loaded();
    edited(1);
    audible(0, 0);
    edited(14);
    edited(14);
    EXPECT_EQ(told(), QString());
    exported();
    EXPECT_EQ(
        told(),
        u"1 of 3 files was not written: a.wav (the file cannot be written). 1 of 3 files was "
        u"emptied, because the cut is as long as the sound or longer: b.wav. 1 of 3 files was not "
        u"cut at its end, because the cut is longer than the sound: a.wav. 1 of 3 files was "
        u"treated as silence, because nothing in it is louder than the threshold: c.wav. 1 of 3 "
        u"files was written with wrong silences, because the search for them failed: a.wav (the "
        u"file is damaged or cannot be read to its end). 1 of 3 files was not processed "
        u"completely: b.wav (setting the silence at the end failed: memory or disk space ran "
        u"out).");
}

TEST_F(Told, ASourceWhoseEndIsRightGetsTheLastEditOfTheFileBefore) {
    open({u"a.wav"_qs, u"b.wav"_qs});
    form.chSilenceEnds->setChecked(true);
    form.chNormalize->setChecked(true);
    process();
    loaded();
    audible(800, 9000);
    edited(14);
    edited(14);
    edited(19);
    exported();
    loaded();
    audible(800, 9500);
    asked();
    exported();
    EXPECT_EQ(told(),
              u"2 of 2 files were written. 1 of 2 files was written without a step, because the "
              u"silence at the end already had the right length: b.wav (no silence set at the "
              u"start, not normalized).");
}

TEST_F(Told, ARunThatWaitsForGoodIsToldOnce) {
    const std::pair<QString, std::function<void()>> halts[] = {
        {u"is stuck at a.wav: it could not be loaded: the file is damaged"_qs,
         [&] {
             EDTX.refuseExports = true;
             fail(Operation::Load, engine::kDamaged);
             loaded();
         }},
        {u"is stuck at b.wav: its output could not be started: this format"_qs,
         [&] {
             fail(Operation::Export, engine::kBadFormat);
             loaded();
             EDTX.refuseExports = false;
         }},
        {u"is stuck at c.wav: the search for its silences could not start: no sound"_qs,
         [&] {
             form.chSilenceEnds->setChecked(true);
             EDTX.detectResult = engine::kNoSound;
             fail(Operation::Scan, engine::kNoSound);
             loaded();
             EDTX.detectResult = engine::kOk;
         }},
        {u"is stuck at d.wav: the silence at its end already has the right length"_qs,
         [&] {
             loaded();
             audible(800, 9500);
             asked();
         }},
        {u"goes round in circles at e.wav"_qs,
         [&] {
             form.chCutEnd->setChecked(true);
             loaded();
             edited(1);
             edited(1);
             for (int round = 1; round <= 5; ++round) {
                 audible(800, 9500);
                 EXPECT_EQ(desk.notices.told.isEmpty(), round < 3);
                 asked();
             }
         }},
        {u"is stuck at f.wav: a step ended that was not expected"_qs,
         [&] {
             loaded();
             edited(2);
         }},
        {u"is stuck at g.wav: the hiss filter is on"_qs, [&] {
             form.chCutEnd->setChecked(false);
             form.chSilenceEnds->setChecked(false);
             form.chHissFilter->setChecked(true);
             loaded();
         }}};
    open({u"a.wav"_qs, u"b.wav"_qs, u"c.wav"_qs, u"d.wav"_qs, u"e.wav"_qs, u"f.wav"_qs,
          u"g.wav"_qs});
    process();
    for (const auto& [what, happens] : halts) {
        happens();
        EXPECT_EQ(desk.notices.told.size(), 1) << what.toStdString();
        EXPECT_TRUE(told().contains(what)) << what.toStdString();
        exported();  // lets the run continue for the next case
        told();
    }
}

TEST_F(Told, ClosingOrLeavingTheFolderDuringARun) {
    open({u"a.wav"_qs, u"b.wav"_qs});
    process();
    loaded();
    exported();
    const QTemporaryDir other;
    test::writeFile(other.filePath(u"x.wav"_qs), "x");
    cmdlg.path = other.filePath(u"x.wav"_qs);
    form.cbBrowse->click();
    EXPECT_TRUE(told().startsWith(u"Another folder was chosen during the batch run"));
    processor->stop();
    EXPECT_EQ(desk.notices.told.value(0).safe,
              u"All sources are in Raw_Files; b.wav is called ZZ_TEMP_b.wav there.");
    EXPECT_EQ(told(),
              u"The Batch Processor was closed during its run. 1 of 2 files was written before "
              u"that.");
    form.cbProcess->setEnabled(false);
    ASSERT_TRUE(QDir(other.path()).rmdir(u"Raw_Files"_qs));
    form.cbBrowse->click();
    EXPECT_EQ(told(), u"Process stays off, because a window can only be used for one run.");
}

TEST_F(Told, FilesThatStopARunOrShareANameAreToldWhereTheyAreListed) {
    EDTX.facts[u"b.wav"_qs] = {.code = engine::kNotASound};
    EDTX.facts[u"c.wav"_qs] = {.code = engine::kFileNotFound, .systemError = EACCES};
    open({u"a.wav"_qs, u"a.WAV"_qs, u"b.wav"_qs, u"c.wav"_qs});
    EXPECT_EQ(told(),
              u"2 of 4 files cannot be loaded, and the run would get stuck at the first of them: "
              u"b.wav (it is not a WAV, AIFF or MP3 file, or there is no sound in it); c.wav "
              u"(permission denied).\nThese files would be written under the same name, so that "
              u"only the last one would be kept: a.WAV and a.wav.");
    process();
    for (int file = 0; file < 4; ++file) {
        loaded();
        exported();
    }
    EXPECT_EQ(told(),
              u"4 of 4 files were written. 1 of 4 files was written, but its output was "
              u"replaced by a later one of the same name: a.WAV (the output on the disk is the one "
              u"of a.wav).");
}

TEST_F(Told, WhatARunNeedsIsComparedWithWhatIsFree) {
    struct Small : platform::Disk {
        qint64 freeBytes(const QString&) const override { return 4'000'000; }
    } small;
    EDTX.bytesPerMs = 50;
    EDTX.duration = 60000;
    open({u"a.wav"_qs, u"b.wav"_qs}, {desk.failure, state, database, desk.boxes, cmdlg, small,
                                      desk.notices, desk.clock, EDT, EDTX, [] {}});
    form.opFormat[batch::kAiff]->setChecked(true);
    test::writeFile(in(u"a.aiff"_qs), "mine");
    process();
    EXPECT_EQ(told(),
              u"The disk of the project folder may be too small for this run: about 6.0 MB will be "
              u"written, and 4.0 MB is free.\nThis file is not part of the run but has the name of "
              u"an output, so it is moved to Raw_Files: a.aiff.");
}

TEST_F(Told, ChoicesAreToldWhereTheyAreMadeAndWhereTheRunBegins) {
    test::writeFile(desk.folder.filePath(u"Lame.exe"_qs), "x");
    open({u"a.wav"_qs});
    form.opFrequency[6]->setChecked(true);
    form.opFormat[batch::kMp3]->click();
    EXPECT_TRUE(told().startsWith(u"None of the frequencies that MP3 supports is selected"));
    process();
    EXPECT_TRUE(told().startsWith(u"None of the frequencies that MP3 supports is selected"));
    form.opFrequency[4]->setChecked(true);
    form.cbxOutputCBR->setEditText(u"129 kbps"_qs);
    Q_EMIT form.cbxOutputCBR->lineEdit()->editingFinished();
    EXPECT_TRUE(told().startsWith(u"MP3 has no bit rate of '129 kbps'"));
    form.txbCutEnd->clear();
    Q_EMIT form.txbCutEnd->editingFinished();
    EXPECT_TRUE(
        told().startsWith(u"This box does not contain a number: the cut at the end (empty)"));
}

TEST_F(Told, AnEntryThatEndsTheProgramIsNamed) {
    open({u"a.wav"_qs});
    form.txbSetSilenceStart->clear();
    EXPECT_THROW(process(), test::ProcessEnded);
    EXPECT_TRUE(told().startsWith(u"This box does not contain a number: the silence at the start"));
    boxes();
    form.txbSetSilenceStart->setText(u"500"_qs);
    form.txbSilencePerc->setText(u"5 x"_qs);
    EXPECT_EQ(endOf([&] { form.cbProcess->click(); }),
              u"cbProcess_Click: Type mismatch (the silence threshold in percent: '5 x'), Line 70");
    form.chCutEnd->setChecked(true);
    form.txbCutStart->setText(u"1e99"_qs);
    EXPECT_EQ(endOf([&] { loaded(); }),
              u"Cut_File_Start: Overflow (the cut at the start: '1e99'), Line 30");
}

TEST_F(Told, ADialogThatFailsIsOnlyNoted) {
    open({u"a.wav"_qs});
    cmdlg.path = u"x"_qs;
    cmdlg.meanwhile = [] { runtime::permissionDenied(); };
    form.cbBrowse->click();
    ASSERT_EQ(desk.notices.noted.size(), 1);
    EXPECT_EQ(desk.notices.noted[0].what,
              u"The dialog for choosing a file failed, so nothing was chosen: permission denied.");
    EXPECT_EQ(told(), QString());
}

}  // namespace
