#include "forms/form_checks.h"
#include "forms/frm_rename_wiz.h"

namespace tarnwick::forms {
namespace {

TEST(RenameForm, ControlsAreAsGiven) {
    const frmRenameWiz form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("RenameWiz "));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form, {{"txbFileExtFilter", "*.*"},
                          {"chRecurse", "Recurse Files"},
                          {"cbAdd", "     Add       >>>"},
                          {"cbAddAll", "Add All >>>>>>"},
                          {"cbRemove", "Remove <<<"},
                          {"cbRemoveAll", "Remove All <<<<<<"},
                          {"cbFlip", "  Flip Horizontal"},
                          {"cbClear", "Clear All Fields"},
                          {"cbClose", "Close"},
                          {"cbRenamePerList", "  Rename  Per List"},
                          {"txbAddPrefix", ""},
                          {"chIncrNumberPrefix", "Incr. Number (1_)"},
                          {"chIncrLetterPrefix", "Incr. Letter (A_)"},
                          {"txbAddSuffix", ""},
                          {"chIncrNumberSuffix", "Incr. Number (_1)"},
                          {"chIncrLetterSuffix", "Incr. Letter (_A)"},
                          {"txbSearchFor", ""},
                          {"txbReplaceWith", ""},
                          {"chCaseSensitive", "Case Sensitive"},
                          {"txbInsert", ""},
                          {"txbRemove", ""},
                          {"txbStartingAt", "1"},
                          {"txbSourceExt", ""},
                          {"txbTargetExt", ""},
                          {"cbPreview", "Preview"},
                          {"cbCancel", "Cancel", kHidden},
                          {"cbRename", "Rename", kHidden},
                          {"txbDateModified", ""},
                          {"txbNewDate", ""},
                          {"cbReDatePreview", "Preview"},
                          {"cbReDateCancel", "Cancel", kHidden},
                          {"cbReDate", "Re-Date", kHidden},
                          {"Command1", "", kDisabled},
                          {"Command6", "", kDisabled}});
    for (const QListWidget* list : {form.lbxAvailableFiles, form.lbxSelectedFiles}) {
        EXPECT_TRUE(list->isSortingEnabled());
        EXPECT_EQ(list->selectionMode(), QAbstractItemView::ExtendedSelection);
    }
    EXPECT_FALSE(form.rect().intersects(form.Filelb->geometry()));
}

TEST(RenameForm, NothingIsClippedInEitherArrangementNorDuringAPreview) {
    frmRenameWiz form;
    expectTidy(form);
    EXPECT_EQ(form.lbxSelectedFiles->geometry(), QRect(480, 48, 209, 524));
    form.arrange(frmRenameWiz::kOneAboveTheOther);
    EXPECT_EQ(form.lbxSelectedFiles->geometry(), QRect(192, 344, 497, 238));
    form.cbPreview->hide();
    form.cbReDatePreview->hide();
    for (QPushButton* button : {form.cbCancel, form.cbRename, form.cbReDateCancel, form.cbReDate})
        button->show();
    expectTidy(form);
}

}  // namespace
}  // namespace tarnwick::forms
