#include "forms/form_checks.h"
#include "forms/frm_batch_processor.h"

namespace tarnwick::forms {
namespace {

TEST(BatchForm, ControlsAreAsGiven) {
    const frmBatchProcessor form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Convert and Resample Recorded WAV Files"));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form,
                   {{"txbFileToConvert", ""},
                    {"cbProcess", "Process"},
                    {"txbDelay", "0", kHidden},
                    {"Label19", "Forced delay (msec) between steps ", kHidden},
                    {"lbConversion", "Batch Processing Progress"},
                    {"Label15", "Selected Steps:"},
                    {"lbHissFilter", "Hiss Filter", kDisabled},
                    {"lbResample", "Resample and/or Convert", kDisabled},
                    {"chCutEnd", "Cut the first"},
                    {"txbCutStart", "50"},
                    {"txbCutEnd", "300"},
                    {"txbSetSilenceStart", "500"},
                    {"Label8", "msec. and at END of file to "},
                    {"txbSilencedB", "-26"},
                    {"Label1", "dB  or"},
                    {"txbSilencePerc", "5.0"},
                    {"txbSilenceThreshold", "0", kHidden},
                    {"Label14", "(Note: Anything under the Threshold is considered Silence.)"},
                    {"txbNormdB", "0.0"},
                    {"Label13", "dB  or "},
                    {"txbNormPerc", "100.0"},
                    {"chHissFilter", "Hiss Filter", kDisabled},
                    {"cbRecordBackgroundNoise", "Record Background Noise", kDisabled},
                    {"frOutputSpecs", "Output File Specifications"},
                    {"chConvert", "Resample and/or Convert Files", kHiddenAndDisabled, true},
                    {"frResampleSettings", "Specifications"},
                    {"opFormat(0)", "WAV", kShown, true},
                    {"opFormat(3)", "AIFF"},
                    {"opFrequency(5)", "48 kHz", kShown, true},
                    {"opRate(2)", "24 bits", kShown, true},
                    {"opChannel(1)", "Stereo", kShown, true},
                    {"frKbps", "Constant Bit Rate (kbps)", kHidden},
                    {"cbxOutputCBR", "cbxOutputCBR"},
                    {"frACMCodecs", "ACM Codecs", kHidden},
                    {"Label6", "Audio Encoder  (Codec)"},
                    {"cbRefresh", "Refresh", kHidden},
                    {"lbTitle", "Apply Filter(s) to File Currently in the Editor Window"},
                    {"frLame", "Lame Encoder Not Detected!"},
                    {"opBPMode(0)", "Batch Process Files", kShown, true},
                    {"opBPMode(1)", "Concatenate Files"}});
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

}  // namespace
}  // namespace tarnwick::forms
