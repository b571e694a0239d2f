#include "forms/form_checks.h"
#include "forms/frm_rename_wiz.h"

namespace tarnwick::forms {
namespace {

TEST(RenameForm, ControlsAreAsGiven) {
    const frmRenameWiz form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("RenameWiz "));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form, R"(
txbFileExtFilter=*.*|cbAdd=     Add       >>>|cbAddAll=Add All >>>>>>|cbRemove|cbRemoveAll|
cbFlip=  Flip Horizontal|cbClear|cbRenamePerList=  Rename  Per List|
chIncrNumberPrefix=Incr. Number (1_)|chIncrNumberSuffix=Incr. Number (_1)|
chIncrLetterSuffix=Incr. Letter (_A)|txbStartingAt=1|-cbCancel|-cbRename|txbDateModified=|
-cbReDateCancel|-cbReDate|~Command1|~Command6)");
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
