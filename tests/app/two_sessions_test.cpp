#include <QPushButton>

#include "forms/frm_batch_processor.h"
#include "model/list_columns.h"
#include "session.h"
#include "support/wav_samples.h"

// What happens to a session when another one is chosen.

using namespace tarnwick;
using test::Samples;
using test::operator+;

namespace {

constexpr int kPrompts = 6;

struct TwoSessions : test::Session {
    QTemporaryDir other;

    void SetUp() override {
        Session::SetUp();
        Samples take;
        for (int i = 0; i < kPrompts; ++i)
            take = take + test::wave(400, 9000) + test::wave(1600, 100);
        write(u"take.wav"_qs, test::wavFile(take));
        writeScript(kPrompts + 1);
        ASSERT_TRUE(QFile::copy(in(u"take.wav"_qs), other.filePath(u"second.wav"_qs)));
    }
    void loadFirst() {
        load();
        ASSERT_TRUE(settled(kPrompts));
    }
    void choose(const QString& path) {
        cmdlg.path = path;
        form().mnuLoadFiles->trigger();
    }
    bool written(int prompt) const {
        return files.FileExists(in(u"Prompt %1.wav"_qs.arg(prompt + 1)));
    }
    forms::frmBatchProcessor* batch() {
        return application.frame().findChild<forms::frmBatchProcessor*>();
    }
    // All prompts are written, recording and script are in the backup folder, and the Batch
    // Processor shows the prompts' folder.
    void expectExported() {
        ASSERT_TRUE(test::waitUntil([&] { return batch() != nullptr; }, 10000));
        for (int prompt = 1; prompt <= kPrompts; ++prompt)
            EXPECT_TRUE(written(prompt)) << prompt;
        EXPECT_EQ(files.list(in(u"BU_Source_Files"_qs), u"*"_qs),
                  QStringList({u"script.xlsx"_qs, u"take.wav"_qs, u"take_100.wav"_qs}));
        EXPECT_EQ(batch()->txbProjectFolder->text(), session.path());
        EXPECT_EQ(batch()->txbProjectFiles->text(), QString::number(kPrompts));
    }
};

TEST_F(TwoSessions, ACancelledDialogDoesNotStopAnExport) {
    loadFirst();
    form().mnuExport->trigger();
    cmdlg.meanwhile = [&] { test::waitUntil([&] { return written(3); }, 5000); };
    choose({});
    EXPECT_TRUE(written(3)) << "the export also continues while the dialog is open";
    EXPECT_EQ(form().lvAudioDetails->topLevelItemCount(), 0);
    expectExported();
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(TwoSessions, AFileChosenDuringAnExportIsLoadedAfterIt) {
    loadFirst();
    ASSERT_TRUE(QFile::copy(in(u"script.xlsx"_qs), other.filePath(u"script.xlsx"_qs)));
    form().mnuExport->trigger();
    ASSERT_TRUE(test::waitUntil([&] { return written(1); }, 5000));
    choose(other.filePath(u"second.wav"_qs));
    expectExported();
    EXPECT_FALSE(QFile::exists(other.filePath(u"BU_Source_Files"_qs)));
    batch()->cbClose->click();
    ASSERT_TRUE(settled(kPrompts));
    EXPECT_EQ(state.vsProjectFolder, other.path());
    EXPECT_TRUE(QFile::exists(other.filePath(u"BU_Source_Files/second_101.wav"_qs)));
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(TwoSessions, AnExportUsesTheLoadedSession) {
    loadFirst();
    choose(other.filePath(u"second.wav"_qs));  // without a script
    EXPECT_EQ(boxes().size(), 1);
    EXPECT_EQ(state.vsProjectFolder, other.path());
    form().cbProcess->click();
    ASSERT_TRUE(settled(kPrompts));
    form().mnuExport->trigger();
    expectExported();
    EXPECT_EQ(files.list(other.path(), u"*"_qs), QStringList(u"second.wav"_qs));
    EXPECT_FALSE(QFile::exists(other.filePath(u"Raw_Files"_qs)));
}

TEST_F(TwoSessions, ABadFileChosenDuringALoadLeavesNothingInProgress) {
    ASSERT_TRUE(QFile::copy(in(u"script.xlsx"_qs), other.filePath(u"script.xlsx"_qs)));
    test::writeFile(other.filePath(u"bad.wav"_qs), "no sound");
    QObject::connect(EDT, &engine::SoundEditor::SoundLoadingStarted, &form(), [&] {
        EXPECT_FALSE(form().pbWAVFormBuilding->isHidden());
        choose(other.filePath(u"bad.wav"_qs));
    });
    load();
    ASSERT_TRUE(test::waitUntil([&] { return !desk.boxes.shown.isEmpty(); }, 5000));
    EXPECT_TRUE(boxes().value(0).startsWith(u"Cannot load file bad.wav"));
    test::pass(300);
    EXPECT_TRUE(form().txbCalculating->isHidden());
    EXPECT_TRUE(form().pbWAVFormBuilding->isHidden());
    EXPECT_EQ(form().lbStatus->text(), u"Status: Idle");
}

}  // namespace
