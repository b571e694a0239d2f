#include <QButtonGroup>

#include <QDir>

#include "batch/project_files.h"
#include "batch/run_checks.h"
#include "desk.h"

using namespace tarnwick;

namespace {

// A disk that may have its root in another folder.
struct RootedDisk : platform::Disk {
    QString root;

    bool FolderExists(const QString& path) const override {
        return !path.isEmpty() && Disk::FolderExists(root + path);
    }
    QStringList list(const QString& folder, const QStringList& patterns) const override {
        return folder.isEmpty() ? QStringList() : Disk::list(root + folder, patterns);
    }
    void createFolder(const QString& path) override { Disk::createFolder(root + path); }
};

struct Files : test::BatchDesk {
    RootedDisk disk;
    batch::Services rooted{desk.failure, state,      database, desk.boxes, cmdlg, disk,
                           desk.notices, desk.clock, EDT,      EDTX,       [] {}};
    batch::ProjectFiles projectFiles{form, run, rooted};

    Files() {
        QPalette dark;
        dark.setColor(QPalette::Base, Qt::darkGray);
        form.setPalette(dark);
    }
    void open() {
        runtime::guarded(desk.failure, u"frmBatchProcessor.Form_Load: ",
                         [&](runtime::Line& line) { projectFiles.open(line, 40); });
    }
    void put(const QStringList& names) const {
        for (const QString& name : names)
            test::writeFile(in(name), name.toUtf8());
    }
    // "folder ground|number|its ground|process button|maximum"
    QString shown() const {
        const auto ground = [](const QLineEdit* box) {
            const QColor colour = box->palette().color(QPalette::Base);
            return colour == Qt::red ? u"red"_qs : colour == Qt::white ? u"white"_qs : u"plain"_qs;
        };
        return QStringList{ground(form.txbProjectFolder), form.txbProjectFiles->text(),
                           ground(form.txbProjectFiles),
                           form.cbProcess->isHidden() ? u"hidden"_qs : u"shown"_qs,
                           QString::number(form.pbConversion->maximum())}
            .join(u'|');
    }
    void browse(const QString& path) {
        cmdlg.path = path;
        form.cbBrowse->click();
    }
};

TEST_F(Files, TheWindowOpensOnTheRecordings) {
    put({u"b.wav"_qs, u"A.WAV"_qs, u"c.mp3"_qs, u"c.wav.txt"_qs});
    open();
    EXPECT_EQ(run.files().join(u' '), u"A.WAV b.wav");
    EXPECT_EQ(run.vsRawFolder, in(u"Raw_Files"_qs));
    EXPECT_TRUE(QDir(run.vsRawFolder).exists());
    EXPECT_EQ(form.txbProjectFolder->text(), project.path());
    EXPECT_EQ(shown(), u"plain|2|plain|shown|1");
    EXPECT_EQ(form.pbConversion->minimum() + form.pbConversion->value(), 0);
    EXPECT_EQ(form.lbConversion->text(), u"Batch Processing Progress...");
    EXPECT_FALSE(form.lbConversion->font().bold());
    put({u"d.wav"_qs});
    run = {};
    open();
    EXPECT_TRUE(boxes().value(0).contains(u"'Raw_Files' folder at the beginning"_qs));
    EXPECT_EQ(shown(), u"plain|3|plain|shown|1");
    EXPECT_FALSE(run.vsFiles || !run.vsRawFolder.isEmpty());
}

TEST_F(Files, WithoutRecordingsThereIsNothingToProcess) {
    put({u"a.mp3"_qs});
    open();
    EXPECT_EQ(shown(), u"red|0|red|hidden|100");
    EXPECT_FALSE(QDir(in(u"Raw_Files"_qs)).exists());
    state.vsProjectFolder = in(u"gone"_qs);
    form.txbProjectFiles->clear();
    open();
    EXPECT_EQ(shown(), u"red||red|hidden|100");
    EXPECT_EQ(boxes(), QStringList());
    EXPECT_FALSE(run.vsFiles);
}

TEST_F(Files, TheirSoundIsMeasuredTogether) {
    EDTX.duration = 60000;
    for (const QStringList& names : {QStringList{}, {u"a"_qs}, {u"a"_qs, u"b"_qs}}) {
        run.vsFiles = names;
        batch::checkSources(run, services);
        EXPECT_EQ(run.soundMs, names.size() * 60000);
    }
}

TEST_F(Files, BrowsingTakesTheFilesOfTheChosenKind) {
    EXPECT_EQ(cmdlg.title, u"Select a Script");
    EXPECT_TRUE(cmdlg.filter.section(u'|', 1, 1) == u"*.TXT") << "on at first";
    put({u"a.mp3"_qs, u"b.MP3"_qs, u"c.mp3"_qs, u"d.wav"_qs});
    state.vsProjectFolder = u"/before"_qs;
    browse({});
    EXPECT_EQ(state.vsProjectFolder, u"/before");
    open();
    browse(in(u"b.MP3"_qs));
    EXPECT_EQ(state.vsProjectFolder, project.path());
    EXPECT_EQ(shown(), u"white|3|white|shown|2");
    EXPECT_EQ(run.files().join(u' '), u"a.mp3 b.MP3 c.mp3");
    EXPECT_EQ(form.cbBrowse->palette().color(QPalette::Button), QColor(192, 192, 192));

    form.txbProjectFolder->clear();
    browse(in(u"d.wav"_qs));
    EXPECT_EQ(form.txbProjectFolder->text(), project.path());
    EXPECT_TRUE(boxes().value(0).contains(u"'Raw_Files' folder at the beginning"_qs));
    EXPECT_EQ(run.files().size(), 3);

    const QTemporaryDir plain(QDir::tempPath() + u"/batchXXXXXX"_qs);
    for (const QString& name : {u"take"_qs, u"note.txt"_qs})
        test::writeFile(plain.filePath(name), "x");
    browse(plain.filePath(u"take"_qs));
    EXPECT_EQ(run.files().join(u' '), u"take") << "without a dot: those without an extension";
    EXPECT_EQ(shown(), u"white|1|white|shown|1");
}

TEST_F(Files, TheRootIsAFolderLikeAnyOtherAndNoFolderIsNone) {
    const QStringList names{u"a.wav"_qs, u"b.wav"_qs};
    put(names);
    disk.root = project.path();
    browse(u"/b.wav"_qs);
    EXPECT_EQ(state.vsProjectFolder + form.txbProjectFolder->text() + run.vsRawFolder,
              u"///Raw_Files");
    EXPECT_EQ(run.files(), names);

    ASSERT_TRUE(QDir(disk.root).rmdir(u"Raw_Files"_qs));
    run = {};
    open();
    EXPECT_EQ(run.files(), names);
    EXPECT_FALSE(form.cbProcess->isHidden());
    state.vsProjectFolder.clear();  // none was ever chosen
    open();
    EXPECT_TRUE(form.cbProcess->isHidden());
}

struct Output : Files {
    batch::Trace trace{*form.txbDebug};
    batch::OutputEncoding output{form, run, services, trace};

    // The path's last part of what the engine is asked to write, or the fault that ends it.
    QString written(const QString& source) {
        run.vsFiles = QStringList(source);
        const QString fault = endOf([&] { output.EDTX_Export_File(); });
        return EDTX.taken() + fault.section(u"_File: "_qs, 1);
    }
    QStringList raw() const { return QDir(in(u"Raw_Files"_qs)).entryList(QDir::Files); }
};

TEST_F(Output, TheFormatDecidesWhatIsShown) {
    const auto seen = [&] {
        QString text;
        for (const QWidget* control : std::initializer_list<const QWidget*>{
                 form.opFrequency[6], form.opFrequency[7], form.frResampleSettings, form.frRate,
                 form.frKbps, form.frACMCodecs})
            text += control->isHidden() ? u'-' : u'+';
        return text;
    };
    const std::pair<int, QString> clicks[] = {{1, u"--+-+-"_qs}, {2, u"----++"_qs},
                                              {3, u"++++--"_qs}, {1, u"--+-+-"_qs},
                                              {0, u"++++--"_qs}, {2, u"++-+-+"_qs}};
    for (const auto& [format, expected] : clicks) {
        form.opFormat[format]->setChecked(true);
        EXPECT_EQ(seen(), expected) << format;
    }
    EXPECT_EQ(form.frKbps->y(), 64);
    EXPECT_EQ(form.frACMCodecs->pos(), QPoint(147, 45));
}

TEST_F(Output, ListsAreTheEngines) {
    form.opFormat[1]->click();
    EXPECT_EQ(form.cbxOutputCBR->itemText(0), u"32 kbps");
    EXPECT_EQ(form.cbxOutputCBR->currentText(), u"320 kbps") << "the engine's first";
    for (const std::size_t frequency : {0, 6}) {
        form.opFrequency[frequency]->setChecked(true);
        EXPECT_EQ(form.cbxOutputCBR->currentText(), u"64 kbps") << "the seventh keeps the first's";
    }
    for (const int listed : {6, 12}) {
        form.opFormat[2]->setChecked(true);
        EXPECT_EQ(form.cbxCodecs->count(), listed);
        EXPECT_EQ(form.cbxCodecs->currentIndex(), 0);
        EXPECT_EQ(form.cbxCodecFormats->currentText(), u"8.000 kHz, 8 Bit, Mono");
        form.cbxCodecs->setCurrentIndex(listed - 1);
        EXPECT_EQ(form.cbxCodecFormats->currentText(), u"8.000 kHz, Mono");
        EXPECT_EQ(form.cbxCodecFormats->count(), 4);
        form.opFormat[0]->setChecked(true);
    }
    form.opFormat[1]->setChecked(true);
    EXPECT_FALSE(output.encoderIsThere());
    EXPECT_TRUE(boxes().value(0).startsWith(u"Lame.exe Not Installed!|Lame.exe not detected"_qs));
    test::writeFile(desk.folder.filePath(u"Lame.exe"_qs), "x");
    EXPECT_TRUE(output.encoderIsThere());
    EXPECT_THROW(form.cbxCodecs->setCurrentIndex(-1), test::ProcessEnded);
    EXPECT_TRUE(boxes().value(0).contains(u"UpdateCodecFormatsCombo: Invalid property value"_qs));
}

TEST_F(Output, ChoicesThatNobodyMadeAreTheEngines) {
    for (QRadioButton* on :
         {form.opFrequency[5], form.opChannel[1], form.opRate[2], form.opFormat[0]}) {
        ASSERT_TRUE(on->isChecked()) << qPrintable(on->objectName());
        on->group()->setExclusive(false);
        on->setChecked(false);
    }
    EXPECT_EQ(written(u"a.wav"_qs), u"SoundExport 0 0 0 -1 a");
    EDTX.encodeFormats().ACM.Reserved3 = 5;
    form.opFormat[2]->setChecked(true);
    written(u"a.wav"_qs);
    EXPECT_EQ(EDTX.encodeFormats().ACM.Reserved3, 0);
}

TEST_F(Output, TheNameLosesFourCharactersWhateverTheyAre) {
    const std::tuple<int, QString, QString> cases[] = {
        {0, u"a.wav"_qs, u"SoundExport 48000 2 0 -1 a.wav"_qs},
        {3, u"take1.aiff"_qs, u"SoundExport 48000 2 0 -1 take1..aiff"_qs},
        {1, u"a.wav"_qs, u"SoundExport 48000 2 0 -1 a.mp3"_qs},
        {2, u"x.y.WAV"_qs, u"SoundExport 0 0 0 -1 x.y.wav"_qs},
        {1, u".wav"_qs, u"SoundExport 48000 2 0 -1 .mp3"_qs},
        {0, u"abc"_qs, u"Invalid procedure call or argument, Line 30"_qs}};
    for (const auto& [format, source, expected] : cases) {
        form.opFormat[format]->setChecked(true);
        EXPECT_EQ(written(source), expected);
    }
    EXPECT_TRUE(
        form.txbDebug->toPlainText().endsWith(u"Enter Export\nExit Export\nEnter Export"_qs));
    form.opFormat[1]->setChecked(true);
    form.cbxOutputCBR->setEditText(u"62.5 kHz."_qs);
    written(u"a.wav"_qs);
    EXPECT_EQ(EDTX.encodeFormats().MP3.CBR, 62500);
    for (const QString& typed : {u"9,6 kbps"_qs, u"kbps"_qs}) {
        form.cbxOutputCBR->setEditText(typed);
        EXPECT_TRUE(written(u"a.wav"_qs).endsWith(u", Line 40"_qs)) << typed.toStdString();
    }
    form.opFormat[1]->group()->setExclusive(false);
    form.opFormat[1]->setChecked(false);
    EXPECT_EQ(written(u"a.wav"_qs), u"SoundExport 48000 2 0 -1 a");
}

TEST_F(Output, ARecordingThatHasNoPartInTheRunIsNeverReplaced) {
    put({u"a.aif"_qs, u"b.aif"_qs, u"a.wav"_qs});
    browse(in(u"a.aif"_qs));
    put({u"Raw_Files/a.wav"_qs});
    form.opFormat[0]->setChecked(true);
    written(u"a.aif"_qs);
    EXPECT_EQ(raw(), QStringList({u"a (2).wav"_qs, u"a.wav"_qs}));
    EXPECT_EQ(test::contentOf(in(u"Raw_Files/a (2).wav"_qs)), "a.wav");
    put({u"a.wav"_qs});  // now it is the run's own
    written(u"a.AIF"_qs);
    EXPECT_EQ(raw().size(), 2);
    EXPECT_EQ(test::contentOf(in(u"a.wav"_qs)), "a.wav");
    put({u"b.wav"_qs});
    written(u"b.wav"_qs);
    EXPECT_TRUE(raw().contains(u"b (2).wav"_qs)) << "the source in work gets its name back";
}

}  // namespace
