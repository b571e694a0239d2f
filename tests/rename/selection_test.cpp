#include <QDir>

#include "desk.h"

using namespace tarnwick;

namespace {

struct Selection : test::RenameDesk {
    QStringList folders() const {
        QStringList rows;
        for (int row = 0; row < form.Directorylb->count(); ++row)
            rows << form.Directorylb->item(row)->text();
        return rows;
    }
    // How far below the drive a folder is shown.
    int levelOf(const QString& name) const {
        const auto rows = form.Directorylb->findItems(name, Qt::MatchExactly);
        return rows.value(0)->data(forms::kLevelRole).toInt();
    }
    void open(const QString& name) {
        const auto rows = form.Directorylb->findItems(name, Qt::MatchExactly);
        Q_EMIT form.Directorylb->activated(form.Directorylb->indexFromItem(rows.value(0)));
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

}  // namespace
