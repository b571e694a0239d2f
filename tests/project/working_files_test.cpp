#include "project/working_files.h"

#include <gtest/gtest.h>

#include <QDir>

#include "forms/frm_main.h"
#include "support/scripted_editor.h"
#include "support/scripted_ports.h"

using namespace tarnwick;

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
        {desk.failure, state, session, EDT, desk.boxes, cmdlg, files, [this] { ++starts; },
         [this] { return exporting; }, [this] { imports << u"Excel"_qs; },
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
    EXPECT_THROW(form.mnuBackupSourceFile->setEnabled(true);
                 form.mnuBackupSourceFile->trigger(), test::ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.last(), u"Tarnwick|Path not found");
    EXPECT_TRUE(EDT.calls.filter(u"SoundExport"_qs).isEmpty());
    EXPECT_EQ(desk.log(), "");
}

}  // namespace
