#include "forms/frm_main.h"

#include "forms/controls.h"
#include "forms/fonts.h"
#include "forms/makers.h"
#include "forms/scaling.h"

namespace tarnwick::forms {

namespace {

constexpr int kTimerMs = 100;

}  // namespace

// The order of making is the tab order.
frmMain::frmMain(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("Tarnwick"));
    setFont(uiFont());
    makeMenus();
    makeTimers();
    frTarnwick = new QFrame(this);
    frTarnwick->setObjectName(QStringLiteral("frTarnwick"));
    frTarnwick->setFrameShape(QFrame::NoFrame);
    makeWaveform();
    makeAction();
    makeEdit();
    makeTransport();
    makeLocations();
    makePositions();
    makeFiles();
    makeSpecs();
    makeList();
    makeProgressFrames();
    makePreferences();
}

void frmMain::makeTimers() {
    const auto timer = [this](const char* name) {
        auto* made = new QTimer(this);
        made->setObjectName(QLatin1String(name));
        made->setInterval(kTimerMs);
        return made;
    };
    TimerMenuEnabler = timer("TimerMenuEnabler");
    TimerReload = timer("TimerReload");
    TimerDisplayWaveform = timer("TimerDisplayWaveform");
    TimerPlaybackPos = timer("TimerPlaybackPos");
    EDTTimerSilencePosDetectionDone = timer("EDTTimerSilencePosDetectionDone");
    EDTTimerSoundExportDone = timer("EDTTimerSoundExportDone");
}

void frmMain::makeProgressFrames() {
    const auto frame = [this](const QString& name, const QString& title, const Place& place) {
        auto* made = new OverlayFrame(title, frTarnwick);
        made->setObjectName(name);
        made->setAccessibleName(announced(title));
        put(made, place);
        made->hide();
        return made;
    };
    frLoadFiles = frame(QStringLiteral("frLoadFiles"), QStringLiteral("Loading Script File..."),
                        {3600, 280, 6300, 2640});
    lbImporting = makeLabel(frLoadFiles, QStringLiteral("lbImporting"),
                            QStringLiteral("Importing Script File..."), {300, 540, 5700, 240});
    pbLoadingScript =
        makeProgress(frLoadFiles, QStringLiteral("pbLoadingScript"), {300, 870, 5700, 255});
    Label29 = makeLabel(frLoadFiles, QStringLiteral("Label29"), QStringLiteral("File Names"),
                        {300, 1380, 1200, 300});
    txbScript = makeText(frLoadFiles, QStringLiteral("txbScript"), QString(),
                         {1560, 1380, 4440, 330}, Label29->text());
    Label28 = makeLabel(frLoadFiles, QStringLiteral("Label28"), QStringLiteral("Audio"),
                        {300, 1890, 1200, 300});
    txbAudio = makeText(frLoadFiles, QStringLiteral("txbAudio"), QString(), {1560, 1890, 4440, 330},
                        Label28->text());
    txbScript->setReadOnly(true);
    txbAudio->setReadOnly(true);

    frExportFiles = frame(QStringLiteral("frExportFiles"),
                          QStringLiteral("Exporting Individual Files..."), {3600, 280, 6300, 1500});
    lbExporting = makeLabel(frExportFiles, QStringLiteral("lbExporting"),
                            QStringLiteral("Exporting Individual Files..."), {300, 540, 5700, 240});
    pbExporting = makeProgress(frExportFiles, QStringLiteral("pbExporting"), {300, 900, 5700, 255});
}

}  // namespace tarnwick::forms
