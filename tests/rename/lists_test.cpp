#include <QDir>

#include "desk.h"
#include "support/text_table.h"

using namespace tarnwick;

namespace {

struct Selection : test::RenameDesk {
    QStringList folders() const {
        QStringList rows;
        for (const QListWidgetItem* item : form.Directorylb->findItems({}, Qt::MatchContains))
            rows << item->text();
        return rows;
    }
    QListWidgetItem* folderOf(const QString& name) const {
        return form.Directorylb->findItems(name, Qt::MatchExactly).value(0);
    }
    // How far below the drive a folder is shown.
    int levelOf(const QString& name) const {
        return folderOf(name)->data(forms::kLevelRole).toInt();
    }
    void open(const QString& name) {
        Q_EMIT form.Directorylb->activated(form.Directorylb->indexFromItem(folderOf(name)));
    }
};

TEST_F(Selection, OpensOnTheRootWithEmptyFields) {
    QList<QLineEdit*> fields{form.txbAddSuffix, form.txbSearchFor,    form.txbReplaceWith,
                             form.txbInsert,    form.txbRemove,       form.txbSourceExt,
                             form.txbTargetExt, form.txbDateModified, form.txbNewDate,
                             form.txbStartingAt};
    for (QLineEdit* field : fields)
        field->setText(u"left over"_qs);
    form.chIncrLetterPrefix->setChecked(true);
    form.chCaseSensitive->setChecked(true);
    wizard->Form_Load();
    for (const QLineEdit* field : fields)
        EXPECT_EQ(field->text(), field == form.txbStartingAt ? u"1"_qs : u""_qs)
            << field->objectName().toStdString();
    EXPECT_FALSE(form.chIncrLetterPrefix->isChecked());
    EXPECT_EQ(form.Drivelb->itemText(0), u"/");
    EXPECT_EQ(folders().value(0), u"/");
    EXPECT_TRUE(folders().contains(u"tmp"_qs) || folders().contains(u"usr"_qs));
    EXPECT_TRUE(form.chCaseSensitive->isChecked());
    EXPECT_EQ(form.lbxAvailableFiles->names(), files.list(u"/"_qs, u"*"_qs));
}

TEST_F(Selection, FilesMoveBetweenTheListsAndAFilterEmptiesThem) {
    put({u"b.txt"_qs, u"A.txt"_qs, u"c.doc"_qs, u"plain"_qs});
    wizard->setFolder(folder.path());
    EXPECT_EQ(available(), u"A.txt b.txt c.doc plain");
    form.cbAdd->click();
    EXPECT_EQ(selected(), u"");
    form.lbxAvailableFiles->setCurrentIndex(form.lbxAvailableFiles->model()->index(1, 0));
    form.cbAdd->click();
    EXPECT_EQ(selected() + u'|' + available(), u"b.txt|A.txt c.doc plain");
    form.cbAddAll->click();
    EXPECT_EQ(selected(), u"A.txt b.txt c.doc plain");
    form.lbxSelectedFiles->setCurrentIndex(form.lbxSelectedFiles->model()->index(2, 0));
    form.cbRemove->click();
    EXPECT_EQ(selected() + u'|' + available(), u"A.txt b.txt plain|c.doc");
    form.txbFileExtFilter->setText(u"*.txt;*.doc"_qs);
    EXPECT_EQ(selected() + u'|' + available(), u"|A.txt b.txt c.doc");
    form.chRecurse->click();
    EXPECT_EQ(available(), u"A.txt b.txt c.doc");
    form.cbAddAll->click();
    form.cbRemoveAll->click();
    EXPECT_EQ(selected() + u'|' + available(), u"|A.txt b.txt c.doc");
    form.txbFileExtFilter->setText(u"*.xyz"_qs);
    EXPECT_EQ(available(), u"");
    form.txbFileExtFilter->clear();
    EXPECT_EQ(available(), u"A.txt b.txt c.doc plain");
}

TEST_F(Selection, FoldersAreEnteredAndLeftUnlessTheyAreGone) {
    QDir(folder.path()).mkpath(u"deep/er"_qs);
    put({u"top.txt"_qs, u"deep/in.txt"_qs});
    wizard->Form_Load();
    wizard->setFolder(folder.path());
    EXPECT_EQ(folders().last(), u"deep");
    form.cbAddAll->click();
    open(u"deep"_qs);
    EXPECT_EQ(selected() + u'|' + available(), u"|in.txt");
    EXPECT_EQ(folders().mid(folders().size() - 2).join(u' '), u"deep er");
    EXPECT_EQ(form.Directorylb->currentItem()->text(), u"deep");
    EXPECT_EQ(levelOf(u"/"_qs), 0);
    EXPECT_EQ(levelOf(u"deep"_qs), folder.path().count(u'/') + 1);
    EXPECT_EQ(levelOf(u"er"_qs), folder.path().count(u'/') + 2);
    form.cbAddAll->click();
    open(u"deep"_qs);
    EXPECT_EQ(selected(), u"in.txt") << "the open folder is no change";
    QDir(folder.path()).rmdir(u"deep/er"_qs);
    open(u"er"_qs);
    EXPECT_EQ(folders().last(), u"deep");
    EXPECT_EQ(selected(), u"in.txt");
    open(folder.path().section(u'/', -1));
    EXPECT_EQ(available(), u"top.txt");
    form.Drivelb->addItem(u"/no/such/volume"_qs);
    EXPECT_THROW(form.Drivelb->setCurrentIndex(form.Drivelb->count() - 1), test::ProcessEnded);
    EXPECT_EQ(boxes(), u"Tarnwick|Device unavailable");
}

TEST_F(Selection, FlipAlternates) {
    const auto arrangement = [&] {
        return std::pair(form.cbFlip->text(), form.lbxSelectedFiles->geometry());
    };
    const auto beside = arrangement();
    form.cbFlip->click();
    EXPECT_EQ(arrangement(), std::pair(u"  Flip Vertical"_qs, QRect(192, 344, 497, 238)));
    form.cbFlip->click();
    EXPECT_EQ(arrangement(), beside);
}

struct PerList : test::RenameDesk {
    // The rows of the list, "old=new" each.
    void run(const QString& list) {
        Rows rows;
        for (const QString& row : list.split(u';'))
            rows << std::pair(row.section(u'=', 0, 0), row.section(u'=', 1));
        workbook = zipOf(workbookParts(cellsOf(rows)));
        cmdlg.path = in(u"list.xlsx"_qs);
        form.cbRenamePerList->click();
    }
    QString both() const { return onDisk() + u'|' + onDisk(u"Original_Files"_qs); }
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
    run(u"a.wav=b.wav;b.wav=a.wav;c.wav=ü & 'c'.x;=z;other.wav=z"_qs);
    EXPECT_EQ(boxes(), u"Renaming completed.");
    EXPECT_EQ(cmdlg.filter, u"Excel Files (*.xls; *.xlsx)|*.xls; *.xlsx|");
    EXPECT_EQ(onDisk(), u"a.wav=b.wav b.wav=a.wav other.wav=other.wav ü & 'c'.x=c.wav");
    EXPECT_EQ(onDisk(u"Original_Files"_qs), u"a.wav=a.wav b.wav=b.wav c.wav=c.wav");
    EXPECT_EQ(selected(), u"a.wav b.wav ü & 'c'.x");
    EXPECT_EQ(available(), u"a.wav b.wav c.wav other.wav");
    EXPECT_EQ(state.vsProjectFolder, folder.path());

    run(u"a.wav=d.wav"_qs);
    EXPECT_EQ(boxes(),
              u"The Project folder cannot contain an 'Original_Files' folder. Rename or move "
              u"outside of the Project folder before proceeding.");
    EXPECT_TRUE(files.FileExists(in(u"a.wav"_qs)));
    EXPECT_EQ(selected(), u"");
}

TEST_F(PerList, FailuresEndItInSilenceAndLoseNothing) {
    // What is on the list, what it leaves, and the originals.
    const char* const cases = R"(
a=x;gone=y;b=z|b=b|a=a|a=x;a=y|b=b|a=a|a=x;b=|x=a|a=a b=b|a=../x;b=y||a=a b=b|
./a=x|a=a b=b||a=nodir/x|b=b|a=a)";
    for (const QStringList& row : test::rowsOf(cases, 3)) {
        put({u"a"_qs, u"b"_qs});
        run(row[0]);
        EXPECT_EQ(boxes() + both(), row[1] + u'|' + row[2]) << qPrintable(row[0]);
        clear();
    }
    put({u"a"_qs, u"b"_qs});
    run(u"a=x;"_qs.repeated(302).chopped(1));
    EXPECT_FALSE(originalsAreThere());
    put({u"Original_Files"_qs});
    run(u"a=x"_qs);
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
    run(u"./a=x"_qs);
    EXPECT_EQ(endOf(form.cbRename),
              u"Tarnwick|\"./a\" could not be renamed to \"x\": Bad file name or number.\n"
              u"Files renamed before it: 0.");
}

TEST_F(PerList, AnEmptySheetMakesTheFolderAloneAndAFileThatIsNotOnTheListIsNotOverwritten) {
    put({u"a.wav"_qs});
    run(u"=x;a.wav=b.wav"_qs);
    EXPECT_TRUE(originalsAreThere());
    EXPECT_EQ(boxes() + both(), u"Renaming completed.a.wav=a.wav|");
    clear();
    put({u"a"_qs, u"b"_qs, u"own"_qs});
    run(u"a=own;b=own"_qs);
    EXPECT_EQ(boxes(), u"Renaming completed.");
    EXPECT_EQ(both(), u"own=b|a=a b=b own=own");
    clear();
    put({u"a"_qs});
    QFile::link(u"nowhere"_qs, in(u"link"_qs));
    run(u"a=link"_qs);
    EXPECT_EQ(onDisk(), u"link=a");
    EXPECT_TRUE(QFileInfo(in(u"Original_Files/link"_qs)).isSymLink());
}

}  // namespace
