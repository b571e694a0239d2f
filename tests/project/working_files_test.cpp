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
    QStringList imports;
    bool exporting = false;
    forms::frmMain form;
    project::WorkingFiles working{
        form,
        {desk.failure, state, session, EDT, desk.boxes, cmdlg, files, [] {},
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
    form.opSourceFileFormat[2]->setChecked(true);
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(cmdlg.filter, u"Audio Files (*.aif; *.aiff)|*.aif; *aiff");
    EXPECT_EQ(state.vsProjectFolder, folder.path());
    EXPECT_EQ(session.vsWorkingFile, u"take.aiff");
    EXPECT_EQ(form.txbAudio->text(), u"take.aiff");
    EXPECT_EQ(imports, QStringList(u"Excel"_qs));
    form.OpScriptFormat[0]->setChecked(true);
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(imports.last(), u"Word");
}

TEST_F(WorkingFilesDesk, ARecordingInTheRootHasTheRootAsItsProject) {
    cmdlg.path = u"/take.wav"_qs;
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(state.vsProjectFolder, u"/");
}

TEST_F(WorkingFilesDesk, ACancelledDialogOnlyEmptiesTheList) {
    state.vsProjectFolder = u"before"_qs;
    cmdlg.path.clear();
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(form.lvAudioDetails->topLevelItemCount(), 0);
    EXPECT_EQ(state.vsProjectFolder, u"before");
    EXPECT_TRUE(desk.boxes.shown.isEmpty());
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

TEST_F(WorkingFilesDesk, AFolderThatIsInTheWayRefusesTheLoad) {
    QDir(folder.path()).mkdir(u"Raw_Files"_qs);
    form.mnuLoadFiles->trigger();
    EXPECT_EQ(desk.boxes.shown,
              QStringList(u"The Project folder cannot contain a 'BU_Source_Files' or a 'Raw_Files' "
                          u"folder. Rename or move outside of the Project folder before "
                          u"proceeding."_qs));
    EXPECT_EQ(state.vsProjectFolder, folder.path());
    EXPECT_TRUE(imports.isEmpty());
}

TEST_F(WorkingFilesDesk, TheBackupKeepsTheFileOnDiskAndThenOverwritesIt) {
    form.mnuLoadFiles->trigger();
    working.Load_Working_Sound();
    EXPECT_TRUE(form.mnuBackupSourceFile->isEnabled());
    EXPECT_EQ(session.vsLoadStage, u"Initial Load");
    form.cbxChannels->setEditText(u"2"_qs);
    EDT.taken();

    working.mnuBackupSourceFile_Click();  // too early: nothing is copied, nothing written
    EXPECT_TRUE(EDT.taken().isEmpty());
    session.vsLoadStage = u"End Silence Added"_qs;
    working.mnuBackupSourceFile_Click();
    EXPECT_EQ(EDT.taken(), QStringList(u"SoundExport 44100 2 0 -1 take.aiff"_qs));
    EXPECT_EQ(EDT.encodeFormats().WAV.EncodeMode, engine::kWav24);
    EXPECT_EQ(backup(u"take._100.wav"_qs), "recording");

    // While that is being written, another waits, so that the state between is copied too.
    working.mnuBackupSourceFile_Click();
    working.mnuBackupSourceFile_Click();
    EXPECT_TRUE(EDT.taken().isEmpty());
    test::writeFile(cmdlg.path, "saved");
    EDT.endExport();
    EXPECT_EQ(EDT.taken(), QStringList(u"SoundExport 44100 2 0 -1 take.aiff"_qs));
    EXPECT_EQ(backup(u"take._101.wav"_qs), "saved");
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
