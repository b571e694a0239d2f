#include <QPushButton>
#include <QtEndian>

#include "forms/frm_batch_processor.h"
#include "journey.h"
#include "model/list_columns.h"
#include "support/wav_samples.h"

using namespace tarnwick;
using test::Samples;
using test::operator+;

namespace {

using Session = test::Launched;

TEST_F(Session, TheDemoBecomesTenNamedFiles) {
    takeDemo(u"harbour_tour.wav"_qs);
    takeDemo(u"harbour_tour.xlsx"_qs);
    const QByteArray recording = read(u"harbour_tour.wav"_qs);
    load(u"harbour_tour.wav"_qs);
    ASSERT_TRUE(settled(10));
    EXPECT_EQ(form().txbNberAudioFiles->text(), u"10");
    EXPECT_EQ(form().txbNberAudioFiles->palette().color(QPalette::Base), QColor(0, 255, 0));
    EXPECT_TRUE(form().cbProcess->isEnabled());
    EXPECT_TRUE(form().frLoadFiles->isHidden());
    EXPECT_EQ(read(u"BU_Source_Files/harbour_tour_100.wav"_qs), recording);
    EXPECT_NE(read(u"harbour_tour.wav"_qs), recording);

    form().cbxChannels->setEditText(u"2"_qs);
    form().mnuExport->trigger();
    ASSERT_TRUE(test::waitUntil([&] { return !form().isVisible(); }));
    for (int row = 0; row < 10; ++row) {
        const QByteArray file = read(cell(row, model::kFileName) + u".wav"_qs);
        ASSERT_GT(file.size(), 44) << row;
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 22), 2);
        EXPECT_EQ(qFromLittleEndian<quint32>(file.constData() + 24), 44100u);
        EXPECT_EQ(qFromLittleEndian<quint16>(file.constData() + 34), 24);
    }
    EXPECT_EQ(listed(u"BU_Source_Files"_qs),
              u"harbour_tour.wav|harbour_tour.xlsx|harbour_tour_100.wav");
    EXPECT_TRUE(boxes().isEmpty());

    find<QPushButton>(u"cbClose"_qs)->click();
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(form().lvAudioDetails->topLevelItemCount(), 0);
    EXPECT_EQ(EDT->GetSoundDuration(), 0);
    EXPECT_EQ(form().txbNberFileNames->text(), u"0");
}

TEST_F(Session, ExportedPromptsContainTheirSpeechBitForBit) {
    Samples take = test::wave(300, 100);
    std::vector<Samples> words;
    for (int i = 0; i < 4; ++i) {
        words.push_back(test::wave(731 + 97 * i, 9000 + i));
        take = take + words.back() + test::wave(1801 + i, 120);
    }
    write(u"take.wav"_qs, test::wavFile(take));
    writeScript(5);  // the first row is the header
    load();
    ASSERT_TRUE(settled(4));
    EXPECT_EQ(form().txbNberAudioFiles->text(), u"4");
    EXPECT_EQ(cell(0, model::kWords), u"4");
    form().mnuExport->trigger();
    ASSERT_TRUE(test::waitUntil([&] { return !form().isVisible(); }));
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Samples file = test::samplesOf(in(u"Prompt %1.wav"_qs.arg(i + 2)));
        const auto found = std::search(file.begin(), file.end(), words[i].begin(), words[i].end());
        EXPECT_NE(found, file.end()) << "prompt " << i;
        EXPECT_LT(file.size() - words[i].size(), 2u * 45u) << "at most 1 ms more at each end";
    }
}

TEST_F(Session, ADocumentOrAChosenSheetBecomesTheListToo) {
    form().OpScriptFormat[0]->setChecked(true);
    write(u"take.wav"_qs, test::wavFile(test::wave(200, 9000)));
    write(u"script.docx"_qs, zipOf(documentParts("<tbl><tr><tc><p><r><t>F_1</t></r></p></tc><tc><p>"
                                                 "<r><t>one two</t></r></p></tc></tr></tbl>")));
    load();
    ASSERT_TRUE(settled(1));
    EXPECT_EQ(cell(0, model::kFileName) + u'|' + cell(0, model::kContent), u"F_1|one two");
    form().OpScriptFormat[1]->setChecked(true);
    form().chPromptSheet->setChecked(true);
    writeScript(3);
    loadAnew();
    QWidget* chooser = nullptr;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->objectName() == u"frmSelectImportSheet") chooser = window;
    ASSERT_TRUE(chooser != nullptr && chooser->isVisible());
    EXPECT_EQ(form().lvAudioDetails->topLevelItemCount(), 0) << "the import waits";
    chooser->findChild<QPushButton*>(u"cbSelectSheet"_qs)->click();
    EXPECT_TRUE(settled(2));
}

TEST_F(Session, BadRecordingsShowABoxAndNothingElseHappens) {
    const QByteArray whole = test::wavFile(test::wave(500, 9000));
    // Empty, no sound, cut in the header, without frames.
    const QByteArray cases[] = {{}, QByteArray(20000, 'n'), whole.left(30), test::wavFile({})};
    writeScript(3);
    for (const QByteArray& bytes : cases) {
        write(u"take.wav"_qs, bytes);
        load();
        ASSERT_TRUE(boxIsShown()) << bytes.size();
        EXPECT_TRUE(desk.boxes.shown[0].startsWith(u"Cannot "))
            << desk.boxes.shown[0].toStdString();
        test::pass(300);
        EXPECT_EQ(boxes().size(), 1);
        EXPECT_EQ(read(u"take.wav"_qs), bytes);
        EXPECT_EQ(EDT->GetSoundDuration(), 0);
        EXPECT_FALSE(form().mnuBackupSourceFile->isEnabled());
    }
    QFile::remove(in(u"take.wav"_qs));
    load();
    EXPECT_EQ(boxes(), QStringList(u"Cannot load file take.wav due to error -4"_qs));
    write(u"take.wav"_qs, whole.left(whole.size() / 2));
    load();
    EXPECT_TRUE(settled(2)) << "a truncated recording is loaded up to its end";
    EXPECT_EQ(desk.log().count("\r\n"), 2);
}

TEST_F(Session, ANewLoadReplacesOneInProgress) {
    const Samples speech = test::wave(900, 9000) + test::wave(1800, 100) + test::wave(900, 9000);
    writeScript(3);
    for (const int delay : {0, 120, 230, 340, 450, 560}) {
        write(u"take.wav"_qs, test::wavFile(speech));
        loadAnew();
        test::pass(delay);
        write(u"take.wav"_qs, test::wavFile(speech));
        loadAnew();
        ASSERT_TRUE(settled(2)) << delay;
        EXPECT_EQ(cell(0, model::kStartMsec), u"1500") << delay;
        EXPECT_EQ(EDT->GetSoundDuration(), 3000 + 3600) << delay;
        EXPECT_TRUE(boxes().isEmpty());
    }
    EDT->SoundPlay();
    ASSERT_TRUE(test::waitUntil([&] { return form().TimerPlaybackPos->isActive(); }, 2000));
    loadAnew();
    ASSERT_TRUE(settled(2));
    EXPECT_FALSE(form().TimerPlaybackPos->isActive()) << "the old sound has stopped";
}

TEST_F(Session, AReplacedWindowLivesUntilItsBoxIsAnswered) {
    form().mnuRenameWizard->trigger();
    const QPointer<QWidget> wizard = find<QWidget>(u"frmRenameWiz"_qs);
    QDialog box;
    QTimer::singleShot(0, &box, [this] { form().mnuBatchProcessor->trigger(); });
    QTimer::singleShot(300, &box, &QDialog::accept);
    box.exec();
    EXPECT_FALSE(wizard.isNull()) << "the code that opened the box still needs its window";
    EXPECT_TRUE(test::waitUntil([&] { return wizard.isNull(); }, 5000));
}

TEST_F(Session, OnlyOneWindowReplacesTheMainWindow) {
    const auto shown = [&](const QString& name) {
        qsizetype count = 0;
        for (const QWidget* window : application.frame().findChildren<QWidget*>(name))
            count += window->isVisible();
        return count;
    };
    form().mnuBatchProcessor->trigger();
    form().mnuBatchProcessor->trigger();
    EXPECT_EQ(shown(u"frmBatchProcessor"_qs), 1);
    form().mnuRenameWizard->trigger();
    EXPECT_EQ(shown(u"frmBatchProcessor"_qs), 0);
    EXPECT_EQ(shown(u"frmRenameWiz"_qs), 1);
    const auto* wizard = find<QWidget>(u"frmRenameWiz"_qs);
    EXPECT_EQ(wizard->findChild<QListWidget*>(u"Directorylb"_qs)->item(0)->text(),
              platform::Disk().homeFolder());
    EXPECT_EQ(shown(u"frmMain"_qs), 0);
    for (QWidget* window : application.frame().findChildren<QWidget*>(u"frmRenameWiz"_qs))
        window->findChild<QPushButton*>(u"cbClose"_qs)->click();
    EXPECT_EQ(shown(u"frmMain"_qs), 1);
    EXPECT_EQ(shown(u"frmRenameWiz"_qs), 0);
}

// Sessions in which a second recording is chosen.

constexpr int kPrompts = 6;

struct TwoSessions : test::Launched {
    QTemporaryDir other;

    void SetUp() override {
        Launched::SetUp();
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
    bool written(int prompt) const {
        return files.FileExists(in(u"Prompt %1.wav"_qs.arg(prompt + 1)));
    }
    forms::frmBatchProcessor* batch() { return find<forms::frmBatchProcessor>(); }
    // All prompts are written, recording and script are in the backup folder, and the Batch
    // Processor shows the prompts' folder.
    void expectExported() {
        ASSERT_TRUE(test::waitUntil([&] { return batch() != nullptr; }, 10000));
        for (int prompt = 1; prompt <= kPrompts; ++prompt)
            EXPECT_TRUE(written(prompt)) << prompt;
        EXPECT_EQ(listed(u"BU_Source_Files"_qs), u"script.xlsx|take.wav|take_100.wav");
        EXPECT_EQ(batch()->txbProjectFolder->text(), session.path());
        EXPECT_EQ(batch()->txbProjectFiles->text(), QString::number(kPrompts));
    }
};

TEST_F(TwoSessions, AFileChosenDuringAnExportIsLoadedAfterItAndACancelStopsNothing) {
    loadFirst();
    ASSERT_TRUE(QFile::copy(in(u"script.xlsx"_qs), other.filePath(u"script.xlsx"_qs)));
    form().mnuExport->trigger();
    cmdlg.meanwhile = [&] { test::waitUntil([&] { return written(2); }, 5000); };
    choose({});
    cmdlg.meanwhile = {};
    EXPECT_TRUE(written(2)) << "the export also continues while the dialog is open";
    EXPECT_EQ(form().lvAudioDetails->topLevelItemCount(), 0);
    choose(other.filePath(u"second.wav"_qs));
    EXPECT_FALSE(written(kPrompts));
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
    ASSERT_TRUE(boxIsShown());
    EXPECT_TRUE(boxes().value(0).startsWith(u"Cannot load file bad.wav"));
    test::pass(300);
    EXPECT_TRUE(form().txbCalculating->isHidden());
    EXPECT_TRUE(form().pbWAVFormBuilding->isHidden());
    EXPECT_EQ(form().lbStatus->text(), u"Status: Idle");
}

}  // namespace
