#include "forms/form_checks.h"
#include "forms/frm_rename_wiz.h"

namespace tarnwick::forms {
namespace {

TEST(RenameForm, ControlsAreAsGiven) {
    const frmRenameWiz form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("RenameWiz "));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form, {{"txbFileExtFilter", "*.*"},
                          {"cbAdd", "     Add       >>>"},
                          {"cbAddAll", "Add All >>>>>>"},
                          {"cbRemove", "Remove <<<"},
                          {"cbRemoveAll", "Remove All <<<<<<"},
                          {"cbFlip", "  Flip Horizontal"},
                          {"cbClear", "Clear All Fields"},
                          {"cbRenamePerList", "  Rename  Per List"},
                          {"chIncrNumberPrefix", "Incr. Number (1_)"},
                          {"chIncrNumberSuffix", "Incr. Number (_1)"},
                          {"chIncrLetterSuffix", "Incr. Letter (_A)"},
                          {"txbStartingAt", "1"},
                          {"cbCancel", "Cancel", kHidden},
                          {"cbRename", "Rename", kHidden},
                          {"txbDateModified", ""},
                          {"cbReDateCancel", "Cancel", kHidden},
                          {"cbReDate", "Re-Date", kHidden},
                          {"Command1", "", kDisabled},
                          {"Command6", "", kDisabled}});
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
