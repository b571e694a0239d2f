#include "forms/form_checks.h"
#include "forms/frm_about.h"
#include "forms/frm_batch_processor.h"
#include "forms/frm_rename_wiz.h"
#include "forms/frm_select_import_sheet.h"
#include "forms/units.h"

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

TEST(BatchForm, EachOptionArrayIsASeparateGroup) {
    const frmBatchProcessor form;
    const auto on = [](const auto& options) {
        QList<std::ptrdiff_t> indices;
        for (auto option = options.begin(); option != options.end(); ++option)
            if ((*option)->isChecked()) indices << option - options.begin();
        return indices;
    };
    for (const std::size_t index : {5, 5, 0, 3}) {
        form.opFrequency[index]->click();
        EXPECT_EQ(on(form.opFrequency), QList<std::ptrdiff_t>{std::ptrdiff_t(index)});
        EXPECT_EQ(on(form.opRate), QList<std::ptrdiff_t>{2});
        EXPECT_EQ(on(form.opChannel), QList<std::ptrdiff_t>{1});
    }
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

// The controls that the Tab key reaches, in order.
QStringList tabStops(const QWidget& form) {
    QStringList names;
    for (const QWidget* next = form.nextInFocusChain(); next != &form;
         next = next->nextInFocusChain())
        if (next->isVisibleTo(&form) && next->isEnabledTo(&form) && isControl(next) &&
            (next->focusPolicy() & Qt::TabFocus) && !next->objectName().startsWith(u"qt_"))
            names << next->objectName();
    return names;
}

TEST(BatchForm, TheTabKeyFollowsTheWorkAndStopsOnceInEachOptionGroup) {
    frmBatchProcessor form;
    form.opRate[4]->setChecked(true);
    EXPECT_EQ(tabStops(form).join(u' ').toStdString(),
              "txbProjectFolder cbBrowse txbProjectFiles chCutEnd txbCutStart txbCutEnd "
              "chSilenceEnds txbSetSilenceStart txbSetSilenceEnd txbSilencedB txbSilencePerc "
              "chNormalize txbNormdB txbNormPerc opFormat(0) opFrequency(5) opRate(4) "
              "opChannel(1) txbFileToConvert cbProcess cbClose");
    form.opFrequency[7]->setChecked(true);
    EXPECT_TRUE(tabStops(form).contains(u"opFrequency(7)"));
    form.opFrequency[7]->hide();
    EXPECT_TRUE(tabStops(form).contains(u"opFrequency(0)")) << "the selected one is hidden";
    form.opFrequency[7]->show();
    EXPECT_FALSE(tabStops(form).contains(u"opFrequency(0)"));
}

TEST(BatchForm, ColoursFollowTheWindowAndLongNamesCanBeRead) {
    frmBatchProcessor form;
    const auto green = [&] { return form.lbConversion->palette().color(QPalette::WindowText); };
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    form.setPalette(dark);
    EXPECT_EQ(green(), frmBatchProcessor::progressColour(dark));
    form.setPalette(QPalette(Qt::lightGray));
    EXPECT_EQ(green(), QColor(0, 128, 0));
    for (QLineEdit* box : {form.txbProjectFolder, form.txbFileToConvert}) {
        box->setText(QStringLiteral("take ").repeated(50) + QStringLiteral("<b>7.wav"));
        EXPECT_TRUE(box->toolTip().endsWith(QStringLiteral("7.wav")))
            << box->objectName().toStdString();
        EXPECT_FALSE(box->toolTip().contains(u"<b>"));
        EXPECT_EQ(box->cursorPosition(), box->text().size());
    }
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

TEST(SmallForms, AboutAndSheetChoiceAreSeparateWindows) {
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
