#include "forms/frm_batch_processor.h"

#include <QEvent>

#include "forms/colours.h"
#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kParkedLeft = 14400, kTraceParkedLeft = 13680;
// What is seen ends here: the title bar and the borders of a child window take the rest.
constexpr double kLeft = 240, kRight = 13395, kBottom = 9600;
constexpr double kStatusLeft = 8640, kStatusTop = 1290, kStatusHeight = 7110;
constexpr double kInner = kRight - kStatusLeft - 2 * 240;  // of frStatus

}  // namespace

QColor frmBatchProcessor::progressColour(const QPalette& palette) {
    return isDark(palette) ? QColor(96, 200, 96) : QColor(0, 128, 0);
}

void frmBatchProcessor::colourProgress() {
    QPalette green = lbConversion->palette();
    const QColor colour = progressColour(palette());
    if (green.color(QPalette::WindowText) == colour) return;
    green.setColor(QPalette::WindowText, colour);
    lbConversion->setPalette(green);
}

void frmBatchProcessor::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) colourProgress();
    QWidget::changeEvent(event);
}

frmBatchProcessor::frmBatchProcessor(QWidget* parent) : QWidget(parent) {
    setUpChildForm(*this, u"frmBatchProcessor"_s, u"Convert and Resample Recorded WAV Files"_s);
    makeDirectories();
    makeSilence();
    makeNormalization();
    makeOutput();
    makeSteps();
    makeProgressGroup();
    makeButtons();
    makeParked();
    Maker(this).timers({NAMED(EDTXTimerSoundLoadingDone), NAMED(TimerEDTXSoundEditDone),
                        NAMED(EDTXTimerSoundExportDone), NAMED(EDTXTimerAppendAutomationDone),
                        NAMED(TimerEDTXSilencePosDetectionDone), NAMED(ASRXTimerSoundExportDone),
                        NAMED(ASRXTimerRecordingFinalizationDone)});
}

void frmBatchProcessor::makeDirectories() {
    Maker(this).untitledFrame(NAMED(frDirectories), u"Project"_s,
                              {kLeft, 120, kRight - kLeft, 1020});
    const Maker in(frDirectories);
    in.label(NAMED(Label4), u"Project Folder"_s, {180, 120, 1500, 360});
    in.readOut(NAMED(txbProjectFolder), Label4->text(), {1740, 120, 9840, 360});
    in.button(NAMED(cbBrowse), u"Browse"_s, {11715, 105, 1260, 390});
    in.label(NAMED(Label10), u"Number of Files"_s, {180, 555, 1500, 360});
    in.readOut(NAMED(txbProjectFiles), Label10->text(), {1740, 555, 900, 360});
    in.label(NAMED(lbConcatenationText),
             u"All the files located in the Project folder will be moved to the Raw_Files folder, "
             u"then processed and saved in the Project folder."_s,
             {2820, 525, 10155, 450})
        ->setWordWrap(true);
}

// The upper part of frStatus, which the trace covers when it is shown.
void frmBatchProcessor::makeSteps() {
    Maker(this).untitledFrame(NAMED(frStatus), u"Progress"_s,
                              {kStatusLeft, kStatusTop, kRight - kStatusLeft, kStatusHeight});
    const Maker in(frStatus);
    in.label(NAMED(Label15), u"Selected Steps:"_s, {240, 240, kInner, 360});
    const auto step = [&](const Named<QLabel*>& named, const QString& caption, double top) {
        in.label(named, caption, {480, top, kInner - 240, 360}).disabled();
    };
    step(NAMED(lbCutEnd), u"Cut Start and/or End of File"_s, 750);
    step(NAMED(lbSetSilences), u"Set Silences"_s, 1245);
    step(NAMED(lbNormalize), u"Normalize"_s, 1740);
    step(NAMED(lbHissFilter), u"Hiss Filter"_s, 2235);
    step(NAMED(lbResample), u"Resample and/or Convert"_s, 2730);
}

void frmBatchProcessor::makeProgressGroup() {
    const auto ruler = [this](double top) {
        auto* line = new QFrame(frStatus);
        line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
        put(line, {240, top, kInner, 30});
    };
    const Maker in(frStatus);
    ruler(3510);
    in.label(NAMED(lbConversion), u"Batch Processing Progress"_s, {240, 3840, kInner, 360});
    setBold(lbConversion, true);
    colourProgress();
    in.progress(NAMED(pbConversion), {240, 4305, kInner, 360});
    in.readOut(NAMED(txbFileToConvert), u"File to Convert"_s, {240, 4920, kInner, 420})
        ->setPlaceholderText(u"File in work"_s);
    in.label(NAMED(Label19), u"Forced delay (msec) between steps "_s, {240, 5430, 3300, 360})
        .hidden();
    in.text(NAMED(txbDelay), Label19->text(), {3600, 5430, 900, 360}, u"0"_s).hidden();
    ruler(5850);
}

// One under the other; cbClose comes up to the group when cbProcess has gone.
void frmBatchProcessor::makeButtons() {
    constexpr double kWidth = 2400, kHeight = 480;
    constexpr double kInGroup = (kRight - kStatusLeft - kWidth) / 2;
    Maker(frStatus).button(NAMED(cbProcess), u"Process"_s, {kInGroup, 6240, kWidth, kHeight},
                           u"Process the Files in the Project Folder"_s);
    Maker(this).button(NAMED(cbClose), u"Close"_s,
                       {kStatusLeft + kInGroup, kBottom - kHeight, kWidth, kHeight},
                       u"Exit Batch Processing"_s);
}

void frmBatchProcessor::makeParked() {
    const Maker in(this);
    in.control(NAMED(txbDebug), u"Trace"_s,
               {kTraceParkedLeft, kTraceShown.top, kTraceShown.width, kTraceShown.height})
        .readOnly()
        .hidden();
    in.label(NAMED(lbTitle), u"Apply Filter(s) to File Currently in the Editor Window"_s,
             {kParkedLeft, 240, 6000, 360});
    in.label(NAMED(Label5), u"Raw Files"_s, {kParkedLeft, 5400, 1200, 360});
    in.text(NAMED(txbRawFiles), Label5->text(), {kParkedLeft + 1260, 5400, 840, 360});
    in.text(NAMED(txbBackupFiles), u"Backup Files"_s, {kParkedLeft, 5880, 840, 360});
    in.text(NAMED(txbFileName), u"File Name"_s, {kParkedLeft, 6360, 3000, 360});
    in.button(NAMED(cbRefresh), u"Refresh"_s, {kParkedLeft, 6840, 1260, 390}).hidden();
    makeLame();
    in.options(NAMED(opBPMode),
               {{u"Batch Process Files"_s, {240, 12120}}, {u"Concatenate Files"_s, {3000, 12120}}},
               0);
    // The Tab key must not lead to where nobody can look.
    for (QWidget* parked : std::initializer_list<QWidget*>{
             txbRawFiles, txbBackupFiles, txbFileName, cbRefresh, cbOK, opBPMode[0], opBPMode[1]})
        parked->setFocusPolicy(Qt::NoFocus);
}

void frmBatchProcessor::makeLame() {
    Maker(this).frame(NAMED(frLame), u"Lame Encoder Not Detected!"_s,
                      {kParkedLeft, 7500, 5400, 1800});
    const Maker in(frLame);
    in.label(NAMED(Label21),
             u"Warning: Lame encoder not detected. See Manual, Section  9.5, "
             u"Resample/Convert Format for additional information. Lame Encoder is "
             u"required to convert to mp3."_s,
             {180, 300, 5040, 840})
        ->setWordWrap(true);
    in.button(NAMED(cbOK), u"Close"_s, {2070, 1260, 1260, 390});
}

}  // namespace tarnwick::forms
