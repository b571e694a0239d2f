#include "forms/frm_main.h"

#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

// The order of making is the tab order.
frmMain::frmMain(QWidget* parent) : QWidget(parent) {
    setObjectName(u"frmMain"_s);
    setWindowTitle(u"Tarnwick"_s);
    setFont(uiFont());
    makeMenus();
    const Maker in(this);
    in.timers({NAMED(TimerMenuEnabler), NAMED(TimerReload), NAMED(TimerDisplayWaveform),
               NAMED(TimerPlaybackPos), NAMED(EDTTimerSilencePosDetectionDone),
               NAMED(EDTTimerSoundExportDone)});
    in.control(NAMED(frTarnwick));
    makeWaveform();
    makeAction();
    makeEdit();
    makeTransport();
    makeLocations();
    makePositions();
    makeFiles();
    makeSpecs();
    makeList();
    makeLoadFiles();
    makeExportFiles();
    makePreferences();
}

void frmMain::makeLoadFiles() {
    Maker(frTarnwick)
        .overlayFrame(NAMED(frLoadFiles), u"Loading Script File..."_s, {3600, 280, 6300, 2640});
    const Maker in(frLoadFiles);
    in.label(NAMED(lbImporting), u"Importing Script File..."_s, {300, 540, 5700, 240});
    in.progress(NAMED(pbLoadingScript), {300, 870, 5700, 255});
    in.label(NAMED(Label29), u"File Names"_s, {300, 1380, 1200, 300});
    in.text(NAMED(txbScript), Label29->text(), {1560, 1380, 4440, 330}).readOnly();
    in.label(NAMED(Label28), u"Audio"_s, {300, 1890, 1200, 300});
    in.text(NAMED(txbAudio), Label28->text(), {1560, 1890, 4440, 330}).readOnly();
}

void frmMain::makeExportFiles() {
    Maker(frTarnwick)
        .overlayFrame(NAMED(frExportFiles), u"Exporting Individual Files..."_s,
                      {3600, 280, 6300, 1500});
    const Maker in(frExportFiles);
    in.label(NAMED(lbExporting), u"Exporting Individual Files..."_s, {300, 540, 5700, 240});
    in.progress(NAMED(pbExporting), {300, 900, 5700, 255});
}

}  // namespace tarnwick::forms
