#include "forms/form_checks.h"
#include "forms/frm_about.h"
#include "forms/frm_batch_processor.h"
#include "forms/frm_rename_wiz.h"
#include "forms/frm_select_import_sheet.h"

namespace tarnwick::forms {
namespace {

TEST(BatchForm, ControlsAreAsGiven) {
    const frmBatchProcessor form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Convert and Resample Recorded WAV Files"));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form, R"(
txbFileToConvert=|cbProcess|-txbDelay=0|-Label19=Forced delay (msec) between steps |lbConversion|
Label15=Selected Steps:|~lbHissFilter|~lbResample|chCutEnd|txbCutStart=50|txbCutEnd=300|
txbSetSilenceStart=500|Label8=msec. and at END of file to |txbSilencedB=-26|Label1=dB  or|
txbSilencePerc=5.0|-txbSilenceThreshold=0|
Label14=(Note: Anything under the Threshold is considered Silence.)|txbNormdB=0.0|Label13=dB  or |
txbNormPerc=100.0|~chHissFilter|~cbRecordBackgroundNoise|frOutputSpecs|-~*chConvert|
frResampleSettings|*opFormat(0)|opFormat(3)|*opFrequency(5)|*opRate(2)|*opChannel(1)|
-frKbps=Constant Bit Rate (kbps)|cbxOutputCBR=cbxOutputCBR|-frACMCodecs|
Label6=Audio Encoder  (Codec)|-cbRefresh|
lbTitle=Apply Filter(s) to File Currently in the Editor Window|frLame=Lame Encoder Not Detected!|
*opBPMode(0)|opBPMode(1))");
    EXPECT_TRUE(form.lbConversion->font().bold());
    EXPECT_TRUE(form.cbxOutputCBR->isEditable());
    EXPECT_FALSE(form.cbxCodecs->isEditable());
    const auto timers = form.findChildren<QTimer*>();
    EXPECT_EQ(timers.size(), 7);
    for (const QTimer* timer : timers)
        EXPECT_TRUE(timer->interval() == 100 && !timer->isActive() &&
                    !timer->objectName().isEmpty());
}

TEST(BatchForm, NothingIsClippedInAnyOfItsArrangements) {
    frmBatchProcessor form;
    expectTidy(form);
    form.frRate->hide();
    form.frKbps->show();
    form.cbClose->move(form.cbClose->x(), px(frmBatchProcessor::kCloseTopAfterRun));
    expectTidy(form);
    form.frResampleSettings->hide();
    form.frACMCodecs->show();
    expectTidy(form);
    EXPECT_TRUE(form.rect().contains(rectOf(frmBatchProcessor::kTraceShown)));
    for (const QWidget* parked : std::initializer_list<QWidget*>{
             form.lbTitle, form.frLame, form.cbRefresh, form.Label5, form.txbRawFiles,
             form.txbBackupFiles, form.txbFileName, form.opBPMode[0], form.opBPMode[1]})
        EXPECT_FALSE(form.rect().intersects(parked->geometry()))
            << parked->objectName().toStdString();
}

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

TEST(SmallForms, AboutAndSheetChoiceAreWindowsOfTheirOwn) {
    QWidget owner;
    const frmAbout about(&owner);
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Tarnwick"));
    EXPECT_EQ(about.geometry(), QRect(133, 133, 488, 259));
    expectControls(about, R"(
Label1|lbVersion=>>>Change in Sub_Main|Label2=support@tarnwick.example)");

    const frmSelectImportSheet choice(&owner);
    EXPECT_EQ(choice.windowTitle(), QStringLiteral("Select Worksheet to Import"));
    expectControls(choice, R"(
cbxSheetNames=|cbSelectSheet)");
    EXPECT_TRUE(choice.cbxSheetNames->isEditable());
    for (const QWidget* form : std::initializer_list<const QWidget*>{&about, &choice}) {
        expectTidy(*form);
        EXPECT_TRUE(form->isWindow());
        EXPECT_FALSE(form->isModal());
    }
}

}  // namespace
}  // namespace tarnwick::forms
