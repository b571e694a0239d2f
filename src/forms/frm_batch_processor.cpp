#include "forms/frm_batch_processor.h"

#include <QEvent>

#include "forms/colours.h"
#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kWidth = 13750, kHeight = 10250;
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
    setObjectName(QStringLiteral("frmBatchProcessor"));
    setWindowTitle(QStringLiteral("Convert and Resample Recorded WAV Files"));
    setAccessibleName(windowTitle());
    setFont(uiFont());
    resize(px(kWidth), px(kHeight));
    setMaximumSize(size());  // what is parked beyond the edges stays out of sight
    makeDirectories();
    makeSilence();
    makeNormalization();
    makeOutput();
    makeSteps();
    makeProgressGroup();
    makeButtons();
    makeParked();
    makeTimers();
}

void frmBatchProcessor::makeDirectories() {
    frDirectories = makeFrame(this, u"frDirectories"_s, {}, {kLeft, 120, kRight - kLeft, 1020});
    frDirectories->setAccessibleName(u"Project"_s);
    Label4 = makeLabel(frDirectories, u"Label4"_s, u"Project Folder"_s, {180, 120, 1500, 360});
    txbProjectFolder =
        makeReadOut(frDirectories, u"txbProjectFolder"_s, {1740, 120, 9840, 360}, Label4->text());
    cbBrowse = makeButton(frDirectories, u"cbBrowse"_s, u"Browse"_s, {11715, 105, 1260, 390});
    Label10 = makeLabel(frDirectories, u"Label10"_s, u"Number of Files"_s, {180, 555, 1500, 360});
    txbProjectFiles =
        makeReadOut(frDirectories, u"txbProjectFiles"_s, {1740, 555, 900, 360}, Label10->text());
    lbConcatenationText = makeLabel(
        frDirectories, u"lbConcatenationText"_s,
        u"All the files located in the Project folder will be moved to the Raw_Files folder, then "
        u"processed and saved in the Project folder."_s,
        {2820, 525, 10155, 450});
    lbConcatenationText->setWordWrap(true);
}

// The upper part of frStatus, which the trace covers when it is shown.
void frmBatchProcessor::makeSteps() {
    frStatus = makeFrame(this, u"frStatus"_s, {},
                         {kStatusLeft, kStatusTop, kRight - kStatusLeft, kStatusHeight});
    frStatus->setAccessibleName(u"Progress"_s);
    Label15 = makeLabel(frStatus, u"Label15"_s, u"Selected Steps:"_s, {240, 240, kInner, 360});
    const auto step = [this](const QString& name, const QString& caption, double top) {
        QLabel* label = makeLabel(frStatus, name, caption, {480, top, kInner - 240, 360});
        label->setEnabled(false);
        return label;
    };
    lbCutEnd = step(u"lbCutEnd"_s, u"Cut Start and/or End of File"_s, 750);
    lbSetSilences = step(u"lbSetSilences"_s, u"Set Silences"_s, 1245);
    lbNormalize = step(u"lbNormalize"_s, u"Normalize"_s, 1740);
    lbHissFilter = step(u"lbHissFilter"_s, u"Hiss Filter"_s, 2235);
    lbResample = step(u"lbResample"_s, u"Resample and/or Convert"_s, 2730);
}

void frmBatchProcessor::makeProgressGroup() {
    const auto ruler = [this](double top) {
        auto* line = new QFrame(frStatus);
        line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
        put(line, {240, top, kInner, 30});
    };
    ruler(3510);
    lbConversion = makeLabel(frStatus, u"lbConversion"_s, u"Batch Processing Progress"_s,
                             {240, 3840, kInner, 360});
    setBold(lbConversion, true);
    colourProgress();
    pbConversion = makeProgress(frStatus, u"pbConversion"_s, {240, 4305, kInner, 360});
    txbFileToConvert = makeReadOut(frStatus, u"txbFileToConvert"_s, {240, 4920, kInner, 420},
                                   u"File to Convert"_s);
    txbFileToConvert->setPlaceholderText(u"File in work"_s);
    Label19 = makeLabel(frStatus, u"Label19"_s, u"Forced delay (msec) between steps "_s,
                        {240, 5430, 3300, 360});
    Label19->hide();
    txbDelay = makeText(frStatus, u"txbDelay"_s, u"0"_s, {3600, 5430, 900, 360}, Label19->text());
    txbDelay->hide();
    ruler(5850);
}

// One under the other; cbClose comes up to the group when cbProcess has gone.
void frmBatchProcessor::makeButtons() {
    constexpr double kWidth = 2400, kHeight = 480;
    constexpr double kInGroup = (kRight - kStatusLeft - kWidth) / 2;
    cbProcess =
        makeButton(frStatus, u"cbProcess"_s, u"Process"_s, {kInGroup, 6240, kWidth, kHeight},
                   u"Process the Files in the Project Folder"_s);
    cbClose = makeButton(this, u"cbClose"_s, u"Close"_s,
                         {kStatusLeft + kInGroup, kBottom - kHeight, kWidth, kHeight},
                         u"Exit Batch Processing"_s);
}

void frmBatchProcessor::makeParked() {
    txbDebug = new QPlainTextEdit(this);
    txbDebug->setObjectName(u"txbDebug"_s);
    txbDebug->setAccessibleName(u"Trace"_s);
    txbDebug->setReadOnly(true);
    put(txbDebug, {kTraceParkedLeft, kTraceShown.top, kTraceShown.width, kTraceShown.height});
    txbDebug->hide();

    lbTitle =
        makeLabel(this, u"lbTitle"_s, u"Apply Filter(s) to File Currently in the Editor Window"_s,
                  {kParkedLeft, 240, 6000, 360});
    Label5 = makeLabel(this, u"Label5"_s, u"Raw Files"_s, {kParkedLeft, 5400, 1200, 360});
    txbRawFiles =
        makeText(this, u"txbRawFiles"_s, {}, {kParkedLeft + 1260, 5400, 840, 360}, u"Raw Files"_s);
    txbBackupFiles =
        makeText(this, u"txbBackupFiles"_s, {}, {kParkedLeft, 5880, 840, 360}, u"Backup Files"_s);
    txbFileName =
        makeText(this, u"txbFileName"_s, {}, {kParkedLeft, 6360, 3000, 360}, u"File Name"_s);
    cbRefresh = makeButton(this, u"cbRefresh"_s, u"Refresh"_s, {kParkedLeft, 6840, 1260, 390});
    cbRefresh->hide();

    frLame = makeFrame(this, u"frLame"_s, u"Lame Encoder Not Detected!"_s,
                       {kParkedLeft, 7500, 5400, 1800});
    Label21 = makeLabel(frLame, u"Label21"_s,
                        u"Warning: Lame encoder not detected. See Manual, Section  9.5, "
                        u"Resample/Convert Format for additional information. Lame Encoder is "
                        u"required to convert to mp3."_s,
                        {180, 300, 5040, 840});
    Label21->setWordWrap(true);
    cbOK = makeButton(frLame, u"cbOK"_s, u"Close"_s, {2070, 1260, 1260, 390});

    opBPMode = {
        makeOption(this, elementName(u"opBPMode"_s, 0), u"Batch Process Files"_s, {240, 12120},
                   true),
        makeOption(this, elementName(u"opBPMode"_s, 1), u"Concatenate Files"_s, {3000, 12120})};
    // The Tab key must not lead to where nobody can look.
    for (QWidget* parked : std::initializer_list<QWidget*>{
             txbRawFiles, txbBackupFiles, txbFileName, cbRefresh, cbOK, opBPMode[0], opBPMode[1]})
        parked->setFocusPolicy(Qt::NoFocus);
}

void frmBatchProcessor::makeTimers() {
    const auto timer = [this](const QString& name) {
        auto* made = new QTimer(this);
        made->setObjectName(name);
        made->setInterval(100);
        return made;
    };
    EDTXTimerSoundLoadingDone = timer(u"EDTXTimerSoundLoadingDone"_s);
    TimerEDTXSoundEditDone = timer(u"TimerEDTXSoundEditDone"_s);
    EDTXTimerSoundExportDone = timer(u"EDTXTimerSoundExportDone"_s);
    EDTXTimerAppendAutomationDone = timer(u"EDTXTimerAppendAutomationDone"_s);
    TimerEDTXSilencePosDetectionDone = timer(u"TimerEDTXSilencePosDetectionDone"_s);
    ASRXTimerSoundExportDone = timer(u"ASRXTimerSoundExportDone"_s);
    ASRXTimerRecordingFinalizationDone = timer(u"ASRXTimerRecordingFinalizationDone"_s);
}

}  // namespace tarnwick::forms
