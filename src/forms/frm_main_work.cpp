// The upper half of the work area: waveform, zoom, read-outs, transport, edit, counts.
#include "forms/fonts.h"
#include "forms/frm_main.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kLabelHeight = 240;
constexpr Place kLabel{0, 0, 0, kLabelHeight};

// A time that only the program writes, announced as it stands with what it is as description.
void timeLabel(const Maker& in, const Named<QLabel*>& named, const QString& what, double left = 0,
               double top = 0) {
    const auto made = in.label(named, u"00:00:00.000"_s, {left, top, 1110, 300}, Qt::AlignCenter);
    made->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    announceValue(named.member, what);
}

}  // namespace

void frmMain::makeWaveform() {
    const Maker in(frTarnwick);
    in.control(NAMED(Picture1)).hidden();

    in.control(NAMED(slWAVFormScale), u"Waveform scale"_s);
    slWAVFormScale->setRange(50, 500);
    slWAVFormScale->setPageStep(50);
    // Low values stretch the waveform: they lie above, and the keys go by what is seen.
    slWAVFormScale->setInvertedAppearance(true);
    slWAVFormScale->setInvertedControls(true);
    slWAVFormScale->setValue(450);

    // A pixel too low for the font at the smallest scale: what is cut off is air above the letters.
    in.label(NAMED(lbStatus), u"Status: Idle"_s, {}, Qt::AlignLeft | Qt::AlignBottom);
    in.progress(NAMED(pbWAVFormBuilding)).hidden();
}

void frmMain::makeAction() {
    Maker(frTarnwick).control(NAMED(frAction), u"View"_s);
    const Maker in(frAction);
    in.button(NAMED(cbZoomIn), u"Zoom In"_s);
    in.button(NAMED(cbZoomOut), u"Zoom Out"_s);
    in.button(NAMED(cbZoomSelection), u"Zoom Selection"_s, {}, u"Zoom to Selection"_s).disabled();
    in.button(NAMED(cbZoomFull), u"Zoom Full"_s, {}, u"Show Complete File"_s);
    in.button(NAMED(cbUndo), u"Undo"_s, {}, u"Undo Last Edit"_s).disabled();
}

void frmMain::makeLocations() {
    Maker(frTarnwick).frame(NAMED(frLocations), u"Times"_s);
    const Maker in(frLocations);
    const auto location = [&](const Named<QLabel*>& label, const QString& caption,
                              const Named<QLabel*>& value) {
        in.label(label, caption, kLabel);
        timeLabel(in, value, caption);
    };
    location(NAMED(Label37), u"Audio "_s, NAMED(LabelTotalDuration));
    location(NAMED(Label36), u"Selection "_s, NAMED(LabelSelectionDuration));
    location(NAMED(Label34), u"From "_s, NAMED(LabelSelectionBegin));
    location(NAMED(Label18), u"To "_s, NAMED(LabelSelectionEnd));
}

void frmMain::makePositions() {
    // Hidden, as a large window would reach down to it.
    Maker(frTarnwick).frame(NAMED(Frame4), u"Positions"_s, {480, 13200, 4800, 1500}).hidden();
    const Maker in(Frame4);
    const auto position = [&](const Named<QLabel*>& label, const QString& caption,
                              const Named<QLabel*>& value, double left) {
        in.label(label, caption, {left, 540, 1300, kLabelHeight});
        timeLabel(in, value, caption, left, 840);
    };
    in.label(NAMED(Label3), u"Visible range"_s, {240, 240, 1800, kLabelHeight});
    position(NAMED(Label4), u"Begin"_s, NAMED(LabelRangeBegin), 240);
    position(NAMED(Label5), u"End"_s, NAMED(LabelRangeEnd), 1740);
    position(NAMED(Label6), u"Duration"_s, NAMED(LabelRangeDuration), 3240);
}

void frmMain::makeTransport() {
    Maker(frTarnwick).frame(NAMED(frTransport), u"Transport"_s);
    const Maker in(frTransport);
    in.button(NAMED(CommandPlay), u"Play"_s).disabled();
    in.button(NAMED(CommandPause), u"Pause"_s).disabled();
    in.button(NAMED(CommandStop), u"Stop"_s).disabled();
    in.button(NAMED(CommandPlaySelection), u"Play selection"_s).disabled().hidden();
}

void frmMain::makeEdit() {
    Maker(frTarnwick).frame(NAMED(frEdit), u"Edit"_s);
    const Maker in(frEdit);
    in.button(NAMED(cbDeleteSelection), u"Delete Selection"_s, {}, u"Delete Selection From File"_s)
        .disabled();
    in.button(NAMED(cbFlattenSelection), u"Flatten Selection"_s, {},
              u"Bring Selection Level to Zero"_s)
        .disabled();
    in.text(NAMED(txbInsertSilence), u"Insert Silence"_s, {0, 0, 0, 300})
        ->setAlignment(Qt::AlignCenter);
    in.button(NAMED(cbInsertSilence), u"  Insert Silence"_s, {},
              u"Insert Silence At Cursor Location (ms)"_s);
    for (QPushButton* button : {cbDeleteSelection, cbFlattenSelection, cbInsertSilence})
        button->setFont(smallFont());
}

void frmMain::makeFiles() {
    Maker(frTarnwick).frame(NAMED(frFiles), u"Counts"_s);
    const Maker in(frFiles);
    const auto counter = [&](const Named<QLabel*>& label, const QString& caption,
                             const Named<QLineEdit*>& box) {
        in.label(label, caption, kLabel);
        in.text(box, caption, {0, 0, 600, 300}).readOnly()->setAlignment(Qt::AlignCenter);
    };
    counter(NAMED(Label41), u"Names "_s, NAMED(txbNberFileNames));
    counter(NAMED(Label42), u"Audio "_s, NAMED(txbNberAudioFiles));
}

}  // namespace tarnwick::forms
