#include <sys/resource.h>

#include <csignal>

#include "desk.h"
#include "rename/name_check.h"
#include "rename/rename_notices.h"
#include "support/text_table.h"

using namespace tarnwick;

namespace {

QList<model::RenameRecord> recordsOf(const QString& list) {
    QList<model::RenameRecord> records;
    for (const QString& row : list.split(u' '))
        records << model::RenameRecord{row.section(u'>', 0, 0), row.section(u'>', 1)};
    return records;
}

TEST(NameCheck, FollowsTheOrderInWhichFilesAreRenamed) {
    // The records, and those whose new name cannot be given, with a letter for the reason: S slash,
    // E empty, N no name, T too long, M more than once, H has it, L a later file has it, O another,
    // G its file is gone.
    const char* const cases = R"(
a>x b>y||a>b b>x|a:L|b>x a>b||a>b b>c c>x|a:L b:L|a>d b>x|a:O|a>a b>x|a:H|a>x b>x c>y|b:M|
a>x b>a c>x|c:M|gone>x b>x c>gone|gone:G|a>b/x b>a|a:S b:O|a>.. b>.|a:N b:N|a> b>|a:E b:E|a>TOO b>FIT|a:T|a>a b>a|a:M b:M)";
    for (const QStringList& row : test::rowsOf(cases, 2)) {
        // 255 bytes in 128 characters, and one byte more.
        const QString fits = u"n"_qs + u"ä"_qs.repeated(127);
        QList<model::RenameRecord> records = recordsOf(row[0]);
        for (model::RenameRecord& record : records)
            record.Renamed.replace(u"FIT"_qs, fits).replace(u"TOO"_qs, fits + u'n');
        const QStringList reasons = rename::whyNotGiven(records, [](const QString& name) {
            return QStringList{u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs}.contains(name);
        });
        QStringList refused;
        for (qsizetype i = 0; i < reasons.size(); ++i)
            if (const QString& reason = reasons[i]; !reason.isEmpty())
                refused << records[i].Original + u':' +
                               (reason.contains(u"slash")        ? u'S'
                                : reason.contains(u"empty")      ? u'E'
                                : reason.contains(u"not a file") ? u'N'
                                : reason.contains(u"bytes")      ? u'T'
                                : reason.contains(u"once")       ? u'M'
                                : reason.contains(u"no longer")  ? u'G'
                                : reason.contains(u"already")    ? u'H'
                                : reason.contains(u"later")      ? u'L'
                                                                 : u'O');
        EXPECT_EQ(refused.join(u' '), row[1]) << qPrintable(row[0]);
    }
}

TEST(RenameNotices, CountAndNameWhatFailed) {
    const auto records = recordsOf(u"a>x b>x c> d>y e>"_qs + u"n"_qs.repeated(80));
    const QStringList reasons{{}, u"twice"_qs, u"empty"_qs, {}, u"long"_qs};
    const platform::Notice names = rename::newNamesNotGiven(records, reasons, u"/in/"_qs);
    EXPECT_EQ(names.what,
              u"3 of 5 new names cannot be given: x (twice); the name for c (empty); "_qs +
                  u"n"_qs.repeated(39) + u'…' + u"n"_qs.repeated(20) + u" (long)."_qs);
    EXPECT_EQ(names.files.join(u' '), u"/in/b /in/c /in/e");
    EXPECT_TRUE(names.remedy.endsWith(u"would end the program at the new name of b."));
    for (const auto& [row, why] :
         {std::pair{301, u"could not be read: no memory"_qs}, {302, u"has more than 301 rows"_qs}})
        EXPECT_EQ(rename::perListEnded(
                      {rename::PerListRun::Step::Reading, u"/in/li%1st.xlsx"_qs, row, {}, {}},
                      u"no memory"_qs)
                      .what,
                  u"Rename Per List did not start: li%1st.xlsx "_qs + why + u'.');
    QList<platform::NameAndReason> many;
    for (int i = 0; i < 40; ++i)
        many << platform::NameAndReason{u"f%1"_qs.arg(i), u"locked"_qs};
    const platform::Notice dates = rename::datesNotSet(many, {}, 41, u"/in"_qs);
    EXPECT_EQ(dates.what, u"40 of 41 files kept the old date: f0, f1, f2 and 37 more (locked).");
    EXPECT_EQ(dates.safe, u"1 file has its new date.");
    EXPECT_EQ(rename::datesNotSet(many, {}, 40, u"/in"_qs).safe, u"No date was changed.");
}

struct Notices : test::RenameDesk {
    QString told() { return test::takeSentences(desk.notices.told).join(u'|'); }
    QString noted() {
        QStringList texts;
        for (const platform::Notice& notice : std::exchange(desk.notices.noted, {}))
            texts << platform::sentencesOf(notice);
        return texts.join(u'|');
    }
    QString onButton() const { return form.cbRenamePerList->accessibleDescription(); }
};

TEST_F(Notices, APreviewMarksAndCountsNewNamesThatCannotBeGiven) {
    select({u"a.wav"_qs, u"b.mp3"_qs});
    put({u"a.mp3"_qs});
    form.txbSourceExt->setText(u".wav"_qs);
    form.txbTargetExt->setText(u".mp3"_qs);
    form.cbPreview->click();
    EXPECT_EQ(told(),
              u"2 of 2 new names cannot be given: a.mp3 (another file or folder has it); b.mp3 "
              u"(the file already has it).");
    EXPECT_EQ(marks(),
              u"a.mp3: This name cannot be given: another file or folder has it. "
              u"b.mp3: This name cannot be given: the file already has it.");
    form.cbCancel->click();
    EXPECT_EQ(marks(), u"");
    form.txbAddPrefix->setText(u"p"_qs);
    form.cbPreview->click();
    form.cbRename->click();
    EXPECT_EQ(told() + boxes() + marks(), u"");
    ASSERT_TRUE(QFile::remove(in(u"pa.mp3"_qs)));
    form.cbPreview->click();
    EXPECT_EQ(marks(), u"ppa.mp3: This name cannot be given: its file is no longer there.");
    EXPECT_EQ(told(), u"1 of 2 new names cannot be given: ppa.mp3 (its file is no longer there).");
}

TEST_F(Notices, RenamePerListNotesWhereItEndedAndTheWayBack) {
    // The rows of the list, and the note.
    const char* const cases = R"(
a=x;gone=y;b=z|Rename Per List ended at row 2 of list.xlsx: file not found (gone). No file was 
renamed. 1 file is in Original_Files: a. To undo this, move the files in Original_Files back to 
the folder of the list, remove Original_Files, correct row 2 and start again.|
../a=x|Rename Per List ended at row 1 of list.xlsx: bad file name or number (it contains a slash). 
No file was renamed. All files are where they were; Original_Files is empty. Remove the folder 
Original_Files, correct row 1 and start again.|
a=dir;b=%1|Rename Per List ended at row 1 of list.xlsx: a folder has that name (dir). No file was 
renamed. 2 files are in Original_Files: a and b. To undo this, move the files in Original_Files back 
to the folder of the list, remove Original_Files, correct row 1 and start again.|
NNN=x|Rename Per List ended at row 1 of list.xlsx: file not found (SSS). No file was renamed. All 
files are where they were; Original_Files is empty. Remove the folder Original_Files, correct row 1 
and start again.|
a=own;b=|Rename Per List ended at row 2 of list.xlsx: bad file name or number (it is 
empty). The row before it was renamed. 3 files are in Original_Files: a, b and own. To undo this, 
remove the renamed copies, move the files in Original_Files back to the folder of the list, remove 
Original_Files, correct row 2 and start again.)";
    ASSERT_TRUE(QDir().mkdir(in(u"dir"_qs)));
    for (const QStringList& row : test::rowsOf(cases, 2)) {
        put({u"a"_qs, u"b"_qs, u"own"_qs});
        const QString n = u"n"_qs;
        renamePerList(QString(row[0]).replace(u"NNN"_qs, n.repeated(304)));
        EXPECT_EQ(onButton(),
                  QString(row[1]).replace(u"SSS"_qs, n.repeated(39) + u'…' + n.repeated(20)));
        EXPECT_EQ(noted(), onButton());
        EXPECT_TRUE(form.cbRenamePerList->toolTip().contains(u"start again"));
        std::filesystem::remove_all(in(u"Original_Files"_qs).toStdString());
    }
    EXPECT_EQ(told() + boxes(), u"");
    forms::frmRenameWiz next;
    new rename::RenameWizard(next,
                             {desk.failure, state, desk.boxes, cmdlg, files, desk.notices, {}});
    EXPECT_EQ(next.cbRenamePerList->accessibleDescription(), onButton());
    put({u"a"_qs});
    renamePerList(u"a=z"_qs);
    EXPECT_EQ(noted() + onButton() + form.cbRenamePerList->toolTip(), u"");
}

TEST_F(Notices, RenamePerListNotesAFileThatCannotBeWritten) {
    put({u"a"_qs});
    test::writeFile(in(u"b"_qs), QByteArray(1 << 16, 'x'));
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{.rlim_cur = 4096, .rlim_max = limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    renamePerList(u"a=x;b=y"_qs);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, before);
    const QString end = noted();
    EXPECT_TRUE(end.endsWith(u"remove Original_Files, remove the cause and start again."));
    EXPECT_EQ(end.section(u" To undo this"_qs, 0, 0),
              u"Rename Per List ended at row 2 of list.xlsx: file too large (y). The row before it "
              u"was renamed. 2 files are in Original_Files: a and b.");
    EXPECT_EQ(onDisk(), u"x=a");
    EXPECT_EQ(boxes(), u"");
}

TEST_F(Notices, RenamePerListNotesWhyItDidNotStart) {
    cmdlg.path.clear();
    form.cbRenamePerList->click();
    EXPECT_EQ(noted(), u"") << "the operator has cancelled it";
    const auto start = [&](const QString& list) {
        renamePerList(list);
        return noted().section(u" No file was moved or renamed."_qs, 0, 0);
    };
    EXPECT_EQ(start(u"a=x;"_qs.repeated(302).chopped(1)),
              u"Rename Per List did not start: list.xlsx has more than 301 rows.");
    put({u"Original_Files"_qs});
    EXPECT_TRUE(start(u"a=x"_qs).startsWith(
        u"Rename Per List did not start: the folder Original_Files could not be made: "));
    workbook = "no workbook";
    form.cbRenamePerList->click();
    EXPECT_TRUE(noted().startsWith(
        u"Rename Per List did not start: list.xlsx could not be read: the file"));
}

TEST_F(Notices, ReDatingMarksAndNotesFilesThatItPassesOver) {
    select({u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs});
    files.refusals = {{in(u"a"_qs), EACCES}, {in(u"c"_qs), EROFS}, {in(u"d"_qs), EROFS}};
    form.txbSearchFor->setText(u"x"_qs);
    form.txbReplaceWith->setText(u"y"_qs);
    form.cbPreview->click();
    form.cbCancel->click();
    form.lbxSelectedFiles->add({u"e"_qs});
    form.txbDateModified->setText(u"1"_qs);
    form.cbReDatePreview->click();
    EXPECT_EQ(marks(),
              u"a: The date of this file cannot be changed: permission denied. "
              u"c: The date of this file cannot be changed: the disk is read-only. "
              u"d: The date of this file cannot be changed: the disk is read-only. e: "_qs +
                  rename::markOfLeftOut());
    form.cbReDateCancel->click();
    EXPECT_EQ(marks() + noted(), u"");
    form.txbDateModified->setText(u"1"_qs);
    form.cbReDatePreview->click();
    form.cbReDate->click();
    EXPECT_TRUE(noted().startsWith(
        u"4 of 5 files kept the old date: a (permission denied); c and d (the disk is "
        u"read-only); e (no more files are re-dated than the last preview of new names had). "
        u"1 file has its new date."));
    EXPECT_EQ(marks() + boxes(), u"");
}

TEST_F(Notices, ReDatingWithoutAPreviewOfNewNamesNotesTheFilesItLeavesOut) {
    select({u"a"_qs, u"b"_qs, u"c"_qs, u"d"_qs});
    const auto reDate = [&] {
        form.txbDateModified->setText(u"1"_qs);
        form.cbReDatePreview->click();
        const QString marked = marks();
        form.cbReDate->click();
        return marked.section(u':', 0, 0) + u'|' + noted();
    };
    EXPECT_EQ(reDate(),
              u"b|3 of 4 files kept the old date: b, c and d (no more files are re-dated than the "
              u"last preview of new names had). 1 file has its new date. Select these files alone, "
              u"press the upper Preview, then Cancel if it shows new names, and re-date again.");
    form.cbPreview->click();
    EXPECT_EQ(boxes(), u"Nothing to preview.") << "even so it counts the files";
    EXPECT_EQ(reDate(), u"|");
    form.txbDateModified->setText(u"1"_qs);
    ASSERT_TRUE(QFile::remove(in(u"d"_qs)));
    form.cbReDatePreview->click();
    EXPECT_EQ(marks(),
              u"d: The date of this file cannot be changed: the file or its folder is not there.");
}

struct Drives : Notices {
    QString volume = in(u"usb"_qs), home = in(u"home"_qs);

    void SetUp() override {
        for (const QString& place : {volume, home})
            ASSERT_TRUE(QDir().mkpath(place));
        put({u"usb/a"_qs, u"home/a"_qs, u"home/b"_qs});
        files.home = home;
        files.mounted = {u"/"_qs, volume};
        wizard->Form_Load();
    }
    void mount(const QStringList& drives) {
        files.mounted = drives;
        files.changed();
    }
    QString drives() const {
        QStringList rows;
        for (int row = 0; row < form.Drivelb->count(); ++row)
            rows << form.Drivelb->itemText(row);
        return rows.join(u' ');
    }
};

TEST_F(Drives, FollowTheVolumesAndKeepTheChoice) {
    EXPECT_EQ(drives(), u"Home / "_qs + volume);
    form.cbAddAll->click();
    mount({u"/"_qs, u"/opt"_qs, volume, u"/zip"_qs});
    EXPECT_EQ(drives(), u"Home / /opt "_qs + volume + u" /zip"_qs);
    mount({u"/"_qs, u"/zip"_qs});
    EXPECT_EQ(drives(), u"Home / /zip");
    EXPECT_EQ(form.Drivelb->currentText() + u' ' + selected() + told(), u"Home a b");
    form.Drivelb->setCurrentIndex(1);
    form.Drivelb->setCurrentIndex(0);
    EXPECT_EQ(available(), u"a b") << "Home shows the home folder again";
}

TEST_F(Drives, AVolumeThatGoesLeavesHomeAndNoPreview) {
    for (const bool chosen : {true, false}) {
        files.mounted = {u"/"_qs, volume};
        files.changed();
        chosen ? form.Drivelb->setCurrentText(volume) : wizard->setFolder(volume);
        form.cbAddAll->click();
        form.txbAddPrefix->setText(u"p"_qs);
        form.cbPreview->click();
        EXPECT_EQ(selected(), u"pa");
        mount({u"/"_qs});
        EXPECT_EQ(form.Drivelb->currentText() + u' ' + available() + selected(), u"Home a b");
        EXPECT_TRUE(form.cbRename->isHidden()) << "it would rename Home's files";
        EXPECT_EQ(told(), u"The drive %1 is no longer there."_qs.arg(volume));
    }
}

}  // namespace
