#include "project/working_files.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QHelpEvent>
#include <QToolTip>
#include <cerrno>

#include "forms/frm_main.h"
#include "support/scripted_editor.h"
#include "support/scripted_ports.h"

using namespace tarnwick;
using engine::Operation;

namespace {

struct WorkingFilesDesk : ::testing::Test {
    test::FailureDesk desk;
    test::ScriptedEditor EDT;
    test::ScriptedDialog cmdlg;
    platform::Disk files;
    runtime::ProcessState state;
    model::Session session;
    QTemporaryDir folder;
    int starts = 0;
    QStringList imports;
    bool exporting = false;
    forms::frmMain form;
    project::WorkingFiles working{
        form,
        {desk.failure, state, session, EDT, desk.boxes, cmdlg, files, desk.notices,
         [this] { ++starts; }, [this] { return exporting; }, [this] { imports << u"Excel"_qs; },
         [this] { imports << u"Word"_qs; }}};

    void SetUp() override {
        cmdlg.path = folder.filePath(u"take.aiff"_qs);
        test::writeFile(cmdlg.path, "recording");
        new QTreeWidgetItem(form.lvAudioDetails);
    }
    QByteArray backup(const QString& name) const {
        return test::contentOf(folder.filePath(u"BU_Source_Files/"_qs + name));
    }
};

TEST_F(WorkingFilesDesk, TheChosenFilesFolderBecomesTheProject) {
    const QString filters[] = {
        u"Audio Files (*.wav)|*.wav"_qs, u"Audio Files (*.mp3)|*.mp3"_qs,
        u"Audio Files (*.aif; *.aiff)|*.aif; *aiff"_qs,
        u"Audio Files (*.wav; *.mp3; *.aif; *aiff)|*.wav; *.mp3; *.aif; *aiff|"_qs};
    for (std::size_t i = 0; i < std::size(filters); ++i) {
        form.opSourceFileFormat[i]->setChecked(true);
        form.mnuLoadFiles->trigger();
        EXPECT_EQ(cmdlg.filter, filters[i]);
    }
    EXPECT_EQ(state.vsProjectFolder, folder.path());
    EXPECT_EQ(session.vsWorkingFile, u"take.aiff");
    EXPECT_EQ(form.txbAudio->text(), u"take.aiff");
    EXPECT_EQ(imports, QStringList(4, u"Excel"_qs));
    form.OpScriptFormat[0]->setChecked(true);
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(imports.last(), u"Word");
    EXPECT_EQ(starts, 5);
    cmdlg.path = u"/take.wav"_qs;
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(state.vsProjectFolder, u"/");
}

TEST_F(WorkingFilesDesk, ACancelledDialogOnlyEmptiesTheListAndAFolderInTheWayRefusesTheLoad) {
    state.vsProjectFolder = u"before"_qs;
    cmdlg.path.clear();
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(form.lvAudioDetails->topLevelItemCount(), 0);
    EXPECT_EQ(state.vsProjectFolder, u"before");
    EXPECT_TRUE(desk.boxes.shown.isEmpty());
    EXPECT_TRUE(imports.isEmpty());
    EXPECT_EQ(starts, 1);
    cmdlg.path = folder.filePath(u"take.aiff"_qs);
    QDir(folder.path()).mkdir(u"Raw_Files"_qs);
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(desk.boxes.shown,
              QStringList(u"The Project folder cannot contain a 'BU_Source_Files' or a 'Raw_Files' "
                          u"folder. Rename or move outside of the Project folder before "
                          u"proceeding."_qs));
    EXPECT_EQ(state.vsProjectFolder, folder.path());
    EXPECT_TRUE(imports.isEmpty());
}

TEST_F(WorkingFilesDesk, AFileChosenDuringAnExportWaitsForItsEnd) {
    exporting = true;
    state.vsProjectFolder = u"of the export"_qs;
    form.mnuLoadFiles->trigger();
    cmdlg.path.clear();
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(state.vsProjectFolder, u"of the export");
    EXPECT_TRUE(imports.isEmpty());
    exporting = false;
    working.loadWhatWaits();
    working.loadWhatWaits();
    EXPECT_EQ(state.vsProjectFolder, folder.path()) << "a later cancel gives nothing up";
    EXPECT_EQ(imports.size(), 1);
}

// No dialog opens for it. Everything else is as if the file had been chosen there.
TEST_F(WorkingFilesDesk, ADroppedFileIsLoadedLikeAChosenOne) {
    const platform::OpenDialog::Choice dropped{cmdlg.path, u"take.aiff"_qs};
    cmdlg.meanwhile = [] { FAIL() << "the dialog"; };
    form.opSourceFileFormat[1]->setChecked(true);
    exporting = true;
    working.loadDropped(dropped);
    EXPECT_EQ(starts, 1);
    EXPECT_EQ(form.lvAudioDetails->topLevelItemCount(), 0);
    EXPECT_EQ(cmdlg.filter, u"Audio Files (*.mp3)|*.mp3");
    EXPECT_TRUE(imports.isEmpty()) << "the export goes first";
    exporting = false;
    working.loadWhatWaits();
    EXPECT_EQ(state.vsProjectFolder, folder.path());
    EXPECT_EQ(form.txbAudio->text(), u"take.aiff");
    QDir(folder.path()).mkdir(u"Raw_Files"_qs);
    working.loadDropped(dropped);
    EXPECT_EQ(desk.boxes.shown.size(), 1);
    EXPECT_EQ(imports, QStringList(u"Excel"_qs));
}

TEST_F(WorkingFilesDesk, TheBackupKeepsTheFileOnDiskAndThenOverwritesIt) {
    form.mnuLoadFiles->trigger();
    working.Load_Working_Sound();
    EXPECT_TRUE(form.mnuBackupSourceFile->isEnabled());
    EXPECT_EQ(session.vsLoadStage, u"Initial Load");
    form.cbxChannels->setEditText(u"2"_qs);
    const QString loaded = u"SoundClose|SetLoadMode 0|LoadSound take.aiff"_qs,
                  save = u"SoundExport 44100 2 0 -1 take.aiff"_qs;
    EXPECT_EQ(EDT.taken(), loaded);

    working.mnuBackupSourceFile_Click();  // too early: nothing is copied, nothing written
    EXPECT_TRUE(EDT.taken().isEmpty());
    session.vsLoadStage = u"End Silence Added"_qs;
    working.mnuBackupSourceFile_Click();
    EXPECT_EQ(EDT.taken(), save);
    EXPECT_EQ(EDT.encodeFormats().WAV.EncodeMode, engine::kWav24);
    EXPECT_EQ(backup(u"take._100.wav"_qs), "recording");

    // While that is being written, another waits, so that the state between is copied too.
    working.mnuBackupSourceFile_Click();
    working.mnuBackupSourceFile_Click();
    EXPECT_TRUE(EDT.taken().isEmpty());
    test::writeFile(cmdlg.path, "saved");
    EDT.endExport();
    EXPECT_EQ(EDT.taken(), save);
    EXPECT_EQ(backup(u"take._101.wav"_qs), "saved");
    working.mnuBackupSourceFile_Click();
    working.Load_Working_Sound();
    EXPECT_EQ(EDT.taken(), save + u'|' + loaded)
        << "a backup that waits is made of the sound that was there";
    EDT.endExport();
    EDT.endExport();
    EXPECT_TRUE(EDT.taken().isEmpty());

    // A save that waits when nothing is left of the sound is forgotten.
    session.vsLoadStage = u"End Silence Added"_qs;
    working.mnuBackupSourceFile_Click();
    working.mnuBackupSourceFile_Click();
    EXPECT_EQ(EDT.taken(), save);

    EDT.duration = 0;
    working.saveWhatWaits();
    EDT.duration = 60000;
    EDT.endExport();
    EXPECT_TRUE(EDT.taken().isEmpty());
}

TEST_F(WorkingFilesDesk, TheNameOfABackupLosesFourCharacters) {
    session.vsLoadStage = u"End Silence Added"_qs;
    const std::pair<QString, QString> names[] = {{u"take"_qs, u"_100.wav"_qs},
                                                 {u"a.wav"_qs, u"a_101.wav"_qs}};
    for (const auto& [name, copy] : names) {
        EDT.pending = 0;
        test::writeFile(folder.filePath(name), name.toUtf8());
        session.loadedFolder = folder.path();
        session.loadedFile = name;
        QDir(folder.path()).mkdir(u"BU_Source_Files"_qs);
        working.mnuBackupSourceFile_Click();
        EXPECT_EQ(backup(copy), name.toUtf8());
    }
    EDT.pending = 0;
    session.loadedFile = u"abc"_qs;
    EXPECT_THROW(working.mnuBackupSourceFile_Click(), runtime::Fault);
}

TEST_F(WorkingFilesDesk, AGivenUpLoadLeavesTheLoadedRecordingItsFolderAndScript) {
    form.mnuLoadFiles->trigger();
    session.vsScriptFile = u"script.xlsx"_qs;
    working.Load_Working_Sound();
    session.vsScriptFile.clear();
    const QTemporaryDir other;
    QDir(other.path()).mkdir(u"BU_Source_Files"_qs);
    cmdlg.path = other.filePath(u"take.aiff"_qs);
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(state.vsProjectFolder, other.path());
    EXPECT_EQ(session.loadedScript, u"script.xlsx");
    session.vsLoadStage = u"End Silence Added"_qs;
    working.mnuBackupSourceFile_Click();
    EXPECT_EQ(backup(u"take._100.wav"_qs), "recording");
}

TEST_F(WorkingFilesDesk, ABackupThatCannotBeCopiedOverwritesNothing) {
    form.mnuLoadFiles->trigger();
    working.Load_Working_Sound();
    QDir(folder.filePath(u"BU_Source_Files"_qs)).removeRecursively();
    session.vsLoadStage = u"End Silence Added"_qs;
    form.mnuBackupSourceFile->setEnabled(true);
    // The fault of the copy arrives as an event.
    EXPECT_THROW(form.mnuBackupSourceFile->trigger();
                 QCoreApplication::sendPostedEvents(), test::ProcessEnded);
    EXPECT_TRUE(desk.boxes.shown.last().startsWith(u"Tarnwick|Path not found ("));
    EXPECT_TRUE(desk.boxes.shown.last().endsWith(
        u"; take.aiff is on the disk as it was loaded, without pauses and edits)"));
    EXPECT_TRUE(EDT.calls.filter(u"SoundExport"_qs).isEmpty());
    EXPECT_EQ(desk.log(), "");
}

// The command ends without a message. Only a quiet note says what it means for the list.
TEST_F(WorkingFilesDesk, AnEndedCommandSaysHowToGetTheRowsBack) {
    const auto cancel = [this] {
        cmdlg.path.clear();
        form.mnuLoadFiles->trigger();
    };
    const auto refuse = [this] {
        cmdlg.path = folder.filePath(u"take.aiff"_qs);
        QDir(folder.path()).mkdir(u"Raw_Files"_qs);
        form.mnuLoadFiles->trigger();
    };
    const auto fault = [this] {
        cmdlg.meanwhile = [] { throw runtime::Fault(u"Out of memory"_qs); };
        form.mnuLoadFiles->trigger();
    };
    const std::pair<std::function<void()>, QString> ends[] = {
        {cancel, u"No recording was chosen, so nothing was loaded."_qs},
        {refuse, u"The chosen recording was not loaded because of its folder."_qs},
        {fault, u"Loading ended early: out of memory."_qs}};
    for (const auto& [end, reason] : ends) {
        end();
        ASSERT_EQ(desk.notices.noted.size(), 1) << reason.toStdString();
        EXPECT_EQ(desk.notices.noted.takeFirst().what,
                  reason +
                      u" The list of prompts was emptied anyway, so Export has nothing to "
                      u"write."_qs);
        QHelpEvent hover(QEvent::ToolTip, QPoint(5, 5), form.lvAudioDetails->mapToGlobal(QPoint()));
        QApplication::sendEvent(form.lvAudioDetails->viewport(), &hover);
        EXPECT_TRUE(QToolTip::text().endsWith(u"Process brings the rows back."));
        new QTreeWidgetItem(form.lvAudioDetails);
        EXPECT_TRUE(form.lvAudioDetails->toolTip().isEmpty());
    }
    EXPECT_TRUE(desk.notices.told.isEmpty());
    EXPECT_EQ(desk.notices.sessions, 0) << "no session has begun";
    form.lvAudioDetails->clear();
    cmdlg.meanwhile = {};
    cancel();
    EXPECT_TRUE(desk.notices.noted.isEmpty()) << "there were no rows to lose";
    fault();
    EXPECT_EQ(desk.notices.noted.takeFirst().what,
              u"Loading ended early: out of memory. Nothing was loaded."_qs);
}

struct FailingEditor : WorkingFilesDesk {
    void SetUp() override {
        WorkingFilesDesk::SetUp();
        form.mnuLoadFiles->trigger();
        EXPECT_EQ(desk.notices.sessions, 1);
        working.Load_Working_Sound();
        EXPECT_TRUE(desk.notices.told.isEmpty());
    }
    void fails(Operation operation, engine::ErrorCode code, int error = 0) {
        Q_EMIT EDT.failed({operation, cmdlg.path, code, error});
    }
    void failsForPrompt(engine::ErrorCode code) {
        Q_EMIT EDT.failed({Operation::Export, folder.filePath(u"prompt.wav"_qs), code, 0});
    }
    platform::Notice told() {
        EXPECT_EQ(desk.notices.told.size(), 1);
        return desk.notices.told.isEmpty() ? platform::Notice() : desk.notices.told.takeFirst();
    }
    void endSave(qint32 bResult) {
        --EDT.pending;
        Q_EMIT EDT.SoundExportDone(bResult);
    }
};

TEST_F(FailingEditor, AFailedSaveTellsWhatLiesOnTheDisk) {
    session.vsLoadStage = u"End Silence Added"_qs;
    const model::RecordingState& state = session.recording;
    const QString copies = folder.filePath(u"BU_Source_Files/take._10%1.wav"_qs);
    Q_EMIT EDT.SoundEditDone(engine::kInsertSilence, 1);
    // Two saves that fail, one that does not, and one after an edit.
    const std::tuple<int, QString, QString> saves[] = {
        {ENOSPC, u"take.aiff was not saved: no space left on the device."_qs,
         u"take.aiff is on the disk as it was loaded, without pauses and edits; an untouched copy "
         u"is take._100.wav in BU_Source_Files."_qs},
        {EEXIST, u"take.aiff was not saved: another file has that name."_qs,
         u"take.aiff is now a file of another program and was not changed. The file that was "
         u"there before is take._101.wav in BU_Source_Files."_qs},
        {0, {}, {}},
        {EACCES, u"take.aiff was not saved: permission denied."_qs,
         u"take.aiff is on the disk as it was last saved, without the edits made since; a copy "
         u"of it is take._103.wav in BU_Source_Files."_qs}};
    for (const auto& [error, what, safe] : saves) {
        working.mnuBackupSourceFile_Click();
        failsForPrompt(engine::kWriteFailed);
        if (error != 0) {
            fails(Operation::Export, engine::kWriteFailed, error);
            const platform::Notice notice = told();
            EXPECT_EQ(notice.what, what);
            EXPECT_EQ(notice.safe, safe);
        }
        EXPECT_TRUE(desk.notices.settled.isEmpty());
        endSave(error == 0 ? 1 : 0);
        EXPECT_EQ(desk.notices.settled, QStringList(error == 0 ? 1 : 0, project::saveTopic()));
        desk.notices.settled.clear();
        EXPECT_EQ(state.unsaved, error != 0);
        EXPECT_EQ(state.damaged, error == EEXIST);
        EXPECT_EQ(state.goodCopy,
                  copies.arg(error == 0 ? 1 : EDT.calls.filter(u"SoundExport"_qs).size() - 1));
        if (error == 0) Q_EMIT EDT.SoundEditDone(engine::kDeleteRange, 1);
        fails(Operation::Export, engine::kWriteFailed, error);  // a prompt of that name
        EXPECT_TRUE(desk.notices.told.isEmpty());
    }
    // A refused save ends at once, so the exports after it do not count as saves.
    EDT.refuseExports = true;
    working.mnuBackupSourceFile_Click();
    fails(Operation::Export, engine::kBadFormat);
    const platform::Notice refused = told();
    EXPECT_EQ(refused.what,
              u"take.aiff was not saved: this format, rate or number of channels "
              u"cannot be written."_qs);
    EXPECT_TRUE(refused.remedy.startsWith(u"Set Channels in the Preferences to 1 or 2, then"));
    fails(Operation::Export, engine::kBadFormat);
    EXPECT_TRUE(desk.notices.told.isEmpty());
}

TEST_F(FailingEditor, ACopyOfAFileThatWasChangedIsNotGood) {
    session.vsLoadStage = u"End Silence Added"_qs;
    for (const engine::ErrorCode code : {engine::kWriteFailed, engine::kSourceChanged}) {
        working.mnuBackupSourceFile_Click();
        fails(Operation::Export, code);
        endSave(0);
        EXPECT_EQ(session.recording.goodCopy, folder.filePath(u"BU_Source_Files/take._100.wav"_qs));
        EXPECT_EQ(session.recording.damaged, code == engine::kSourceChanged);
    }
    working.Load_Working_Sound();
    EXPECT_TRUE(session.recording.goodCopy.isEmpty() && !session.recording.damaged);
}

TEST_F(FailingEditor, WhatTheSoundCannotDoIsTold) {
    for (int time = 0; time < 3; ++time)
        fails(Operation::Play, engine::kPlaybackFailed);
    EXPECT_TRUE(told().what.startsWith(u"There is no working sound device"));
    fails(Operation::Edit, engine::kBadRange);
    for (int prompt = 0; prompt < 40; ++prompt)
        failsForPrompt(engine::kSourceChanged);
    EXPECT_TRUE(told().what.startsWith(u"Another program has changed take.aiff since"));
    fails(Operation::Play, engine::kSourceChanged);
    told();
    Q_EMIT EDT.lateExportFailed({Operation::Export, cmdlg.path, engine::kNoMemory, ENOSPC});
    EXPECT_TRUE(told().what.endsWith(u"could not be completed: no space left on the device."));

    form.lvAudioDetails->clear();
    fails(Operation::Load, engine::kDamaged);
    EXPECT_EQ(told().what,
              u"take.aiff was not loaded: the file is damaged or cannot be read to its end. No "
              u"sound is loaded now; the duration and the counts in the window are out of "
              u"date."_qs);
    EXPECT_TRUE(form.lvAudioDetails->toolTip().contains(u"was not loaded"));
    working.Load_Working_Sound();
    fails(Operation::Play, engine::kPlaybackFailed);
    told();
    for (const qint64 claimed : {5'699, 11'200}) {
        EDT.facts[u"take.aiff"_qs] = {.lengthMs = 5'600, .claimedMs = claimed};
        working.Load_Working_Sound();
    }
    EXPECT_EQ(told().what,
              u"take.aiff ends early: its header tells of 11.2 s, the file holds 5.6 s.");
}

TEST_F(WorkingFilesDesk, AProjectFolderThatTakesNoCopiesIsToldBeforeTheFirstSave) {
    form.mnuLoadFiles->trigger();
    test::writeFile(folder.filePath(u"BU_Source_Files"_qs), "a file in the way");
    working.Load_Working_Sound();
    ASSERT_EQ(desk.notices.told.size(), 1);
    EXPECT_TRUE(desk.notices.told[0].what.startsWith(u"The folder BU_Source_Files is missing"));
    EXPECT_TRUE(desk.notices.told[0].remedy.startsWith(u"Rename the file BU_Source_Files"));
    session.vsLoadStage = u"End Silence Added"_qs;
    form.cbxChannels->setEditText(u"abc"_qs);
    EXPECT_THROW(form.mnuBackupSourceFile->trigger(), test::ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.last(), u"Tarnwick|Type mismatch (Channels is \"abc\")");
}

}  // namespace
