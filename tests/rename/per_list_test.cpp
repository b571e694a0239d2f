#include <QDir>

#include "desk.h"

using namespace tarnwick;

namespace {

struct PerList : test::RenameDesk {
    void run(const Rows& list) {
        workbook = zipOf(workbookParts(cellsOf(list)));
        cmdlg.path = in(u"list.xlsx"_qs);
        form.cbRenamePerList->click();
    }
    bool originalsAreThere() const { return files.FolderExists(in(u"Original_Files"_qs)); }
    // For another run.
    void clear() {
        for (const QString& name : files.list(in(u"Original_Files"_qs), u"*"_qs))
            QFile::remove(in(u"Original_Files/"_qs + name));
        QDir(folder.path()).rmdir(u"Original_Files"_qs);
        for (const QString& name : files.list(folder.path(), u"*"_qs))
            QFile::remove(in(name));
    }
};

TEST_F(PerList, OriginalsAreKeptAndCopiesTakeTheNewNames) {
    put({u"a.wav"_qs, u"b.wav"_qs, u"c.wav"_qs, u"other.wav"_qs});
    wizard->setFolder(folder.path());
    form.cbAddAll->click();
    run({{u"a.wav"_qs, u"b.wav"_qs},
         {u"b.wav"_qs, u"a.wav"_qs},
         {u"c.wav"_qs, u"ü & 'c'.x"_qs},
         {u""_qs, u"z"_qs},
         {u"other.wav"_qs, u"z"_qs}});
    EXPECT_EQ(boxes(), u"Renaming completed.");
    EXPECT_EQ(cmdlg.filter, u"Excel Files (*.xls; *.xlsx)|*.xls; *.xlsx|");
    EXPECT_EQ(onDisk(), u"a.wav=b.wav b.wav=a.wav other.wav=other.wav ü & 'c'.x=c.wav");
    EXPECT_EQ(onDisk(u"Original_Files"_qs), u"a.wav=a.wav b.wav=b.wav c.wav=c.wav");
    EXPECT_EQ(selected(), u"a.wav b.wav ü & 'c'.x");
    EXPECT_EQ(available(), u"a.wav b.wav c.wav other.wav");
    EXPECT_EQ(state.vsProjectFolder, folder.path());

    run({{u"a.wav"_qs, u"d.wav"_qs}});
    EXPECT_EQ(boxes(),
              u"The Project folder cannot contain an 'Original_Files' folder. Rename or move "
              u"outside of the Project folder before proceeding.");
    EXPECT_TRUE(files.FileExists(in(u"a.wav"_qs)));
    EXPECT_EQ(selected(), u"");
}

TEST_F(PerList, AnEmptySheetMakesTheFolderAlone) {
    put({u"a.wav"_qs});
    run({{u""_qs, u"x"_qs}, {u"a.wav"_qs, u"b.wav"_qs}});
    EXPECT_EQ(boxes(), u"Renaming completed.");
    EXPECT_TRUE(originalsAreThere());
    EXPECT_EQ(onDisk(), u"a.wav=a.wav");
}

TEST_F(PerList, FailuresEndItInSilenceAndLoseNothing) {
    const struct {
        Rows list;
        QString left, originals;
    } cases[] = {
        {{{u"a"_qs, u"x"_qs}, {u"gone"_qs, u"y"_qs}, {u"b"_qs, u"z"_qs}}, u"b=b"_qs, u"a=a"_qs},
        {{{u"a"_qs, u"x"_qs}, {u"a"_qs, u"y"_qs}}, u"b=b"_qs, u"a=a"_qs},
        {{{u"a"_qs, u"x"_qs}, {u"b"_qs, u""_qs}}, u"x=a"_qs, u"a=a b=b"_qs},
        {{{u"a"_qs, u"../x"_qs}, {u"b"_qs, u"y"_qs}}, u""_qs, u"a=a b=b"_qs},
        {{{u"./a"_qs, u"x"_qs}}, u"a=a b=b"_qs, u""_qs},
        {{{u"a"_qs, u"nodir/x"_qs}}, u"b=b"_qs, u"a=a"_qs}};
    for (const auto& [list, left, originals] : cases) {
        put({u"a"_qs, u"b"_qs});
        run(list);
        EXPECT_EQ(boxes() + onDisk() + u'|' + onDisk(u"Original_Files"_qs),
                  left + u'|' + originals);
        clear();
    }
    put({u"a"_qs, u"b"_qs});
    run(Rows(302, {u"a"_qs, u"x"_qs}));
    EXPECT_FALSE(originalsAreThere());
    put({u"Original_Files"_qs});
    run({{u"a"_qs, u"x"_qs}});
    EXPECT_EQ(onDisk() + boxes(), u"a=a b=b Original_Files=Original_Files");
    workbook = "no workbook";
    form.cbRenamePerList->click();
    cmdlg.path.clear();
    form.cbRenamePerList->click();
    EXPECT_EQ(boxes(), u"");
}

// The two ways of renaming share their table.
TEST_F(PerList, NamesOfAListThatAreRefusedAreRefusedByThePreviewsRenameToo) {
    select({u"a"_qs});
    form.txbAddPrefix->setText(u"p"_qs);
    form.cbPreview->click();
    run({{u"./a"_qs, u"x"_qs}});
    EXPECT_EQ(endOf(form.cbRename),
              u"Tarnwick|\"./a\" could not be renamed to \"x\": Bad file name or number.\n"
              u"Files renamed before it: 0.");
}

TEST_F(PerList, AFileThatIsNotOnTheListIsNotOverwritten) {
    put({u"a"_qs, u"b"_qs, u"own"_qs});
    run({{u"a"_qs, u"own"_qs}, {u"b"_qs, u"own"_qs}});
    EXPECT_EQ(boxes(), u"Renaming completed.");
    EXPECT_EQ(onDisk() + u'|' + onDisk(u"Original_Files"_qs), u"own=b|a=a b=b own=own");
    clear();
    put({u"a"_qs});
    QFile::link(u"nowhere"_qs, in(u"link"_qs));
    run({{u"a"_qs, u"link"_qs}});
    EXPECT_EQ(onDisk(), u"link=a");
    EXPECT_TRUE(QFileInfo(in(u"Original_Files/link"_qs)).isSymLink());
}

}  // namespace
