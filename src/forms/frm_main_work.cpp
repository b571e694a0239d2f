// The upper half of the work area: waveform, zoom, read-outs, transport, edit, counts.
#include "forms/fonts.h"
#include "forms/frm_main.h"
#include "forms/makers.h"

namespace tarnwick::forms {

namespace {

constexpr double kLabelHeight = 240;
constexpr double kReadOutWidth = 1110;
constexpr double kReadOutHeight = 300;
constexpr QLatin1String kNoTime("00:00:00.000");

// A time that only the program writes, announced as it stands with what it is as description.
QLabel* readOut(QWidget* parent, const char* name, const QString& what) {
    QLabel* label = makeLabel(parent, QLatin1String(name), kNoTime,
                              {0, 0, kReadOutWidth, kReadOutHeight}, Qt::AlignCenter);
    label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    announceValue(label, what);
    return label;
}

QLabel* caption(QWidget* parent, const char* name, const char* text) {
    return makeLabel(parent, QLatin1String(name), QLatin1String(text), {0, 0, 0, kLabelHeight});
}

}  // namespace

void frmMain::makeWaveform() {
    Picture1 = new QWidget(frTarnwick);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->hide();

    slWAVFormScale = new QSlider(Qt::Vertical, frTarnwick);
    slWAVFormScale->setObjectName(QStringLiteral("slWAVFormScale"));
    slWAVFormScale->setAccessibleName(QStringLiteral("Waveform scale"));
    slWAVFormScale->setRange(50, 500);
    slWAVFormScale->setPageStep(50);
    // Low values stretch the waveform: they lie above, and the keys go by what is seen.
    slWAVFormScale->setInvertedAppearance(true);
    slWAVFormScale->setInvertedControls(true);
    slWAVFormScale->setValue(450);

    // A pixel too low for the font at the smallest scale: what is cut off is air above the letters.
    lbStatus = makeLabel(frTarnwick, QStringLiteral("lbStatus"), QStringLiteral("Status: Idle"),
                         {8640, 3840, 3015, 195}, Qt::AlignLeft | Qt::AlignBottom);
    pbWAVFormBuilding = makeProgress(frTarnwick, QStringLiteral("pbWAVFormBuilding"), {});
    pbWAVFormBuilding->hide();
}

void frmMain::makeAction() {
    frAction = new QFrame(frTarnwick);
    frAction->setObjectName(QStringLiteral("frAction"));
    frAction->setAccessibleName(QStringLiteral("View"));
    const Place place;
    cbZoomIn = makeButton(frAction, QStringLiteral("cbZoomIn"), QStringLiteral("Zoom In"), place);
    cbZoomOut =
        makeButton(frAction, QStringLiteral("cbZoomOut"), QStringLiteral("Zoom Out"), place);
    cbZoomSelection =
        makeButton(frAction, QStringLiteral("cbZoomSelection"), QStringLiteral("Zoom Selection"),
                   place, QStringLiteral("Zoom to Selection"));
    cbZoomFull = makeButton(frAction, QStringLiteral("cbZoomFull"), QStringLiteral("Zoom Full"),
                            place, QStringLiteral("Show Complete File"));
    cbUndo = makeButton(frAction, QStringLiteral("cbUndo"), QStringLiteral("Undo"), place,
                        QStringLiteral("Undo Last Edit"));
    cbZoomSelection->setEnabled(false);
    cbUndo->setEnabled(false);
}

void frmMain::makeLocations() {
    frLocations = makeFrame(frTarnwick, QStringLiteral("frLocations"), QStringLiteral("Times"), {});
    Label37 = caption(frLocations, "Label37", "Audio ");
    LabelTotalDuration = readOut(frLocations, "LabelTotalDuration", Label37->text());
    Label36 = caption(frLocations, "Label36", "Selection ");
    LabelSelectionDuration = readOut(frLocations, "LabelSelectionDuration", Label36->text());
    Label34 = caption(frLocations, "Label34", "From ");
    LabelSelectionBegin = readOut(frLocations, "LabelSelectionBegin", Label34->text());
    Label18 = caption(frLocations, "Label18", "To ");
    LabelSelectionEnd = readOut(frLocations, "LabelSelectionEnd", Label18->text());
}

void frmMain::makePositions() {
    Frame4 = makeFrame(frTarnwick, QStringLiteral("Frame4"), QStringLiteral("Positions"),
                       {480, 13200, 4800, 1500});
    Frame4->hide();  // a large window would reach down to it
    Label3 = makeLabel(Frame4, QStringLiteral("Label3"), QStringLiteral("Visible range"),
                       {240, 240, 1800, kLabelHeight});
    const std::array<QLabel**, 3> captions{&Label4, &Label5, &Label6};
    const std::array<const char*, 3> texts{"Begin", "End", "Duration"};
    const std::array<QLabel**, 3> values{&LabelRangeBegin, &LabelRangeEnd, &LabelRangeDuration};
    const std::array<const char*, 3> names{"LabelRangeBegin", "LabelRangeEnd",
                                           "LabelRangeDuration"};
    for (int i = 0; i < 3; ++i) {
        const double left = 240 + 1500 * i;
        *captions[i] = makeLabel(Frame4, QStringLiteral("Label%1").arg(4 + i),
                                 QLatin1String(texts[i]), {left, 540, 1300, kLabelHeight});
        *values[i] = readOut(Frame4, names[i], QLatin1String(texts[i]));
        (*values[i])->move(px(left), px(840));
    }
}

void frmMain::makeTransport() {
    frTransport =
        makeFrame(frTarnwick, QStringLiteral("frTransport"), QStringLiteral("Transport"), {});
    const auto button = [this](const char* name, const char* text) {
        QPushButton* made = makeButton(frTransport, QLatin1String(name), QLatin1String(text), {});
        made->setEnabled(false);
        return made;
    };
    CommandPlay = button("CommandPlay", "Play");
    CommandPause = button("CommandPause", "Pause");
    CommandStop = button("CommandStop", "Stop");
    CommandPlaySelection = button("CommandPlaySelection", "Play selection");
    CommandPlaySelection->hide();
}

void frmMain::makeEdit() {
    frEdit = makeFrame(frTarnwick, QStringLiteral("frEdit"), QStringLiteral("Edit"), {});
    cbDeleteSelection =
        makeButton(frEdit, QStringLiteral("cbDeleteSelection"), QStringLiteral("Delete Selection"),
                   {}, QStringLiteral("Delete Selection From File"));
    cbFlattenSelection = makeButton(frEdit, QStringLiteral("cbFlattenSelection"),
                                    QStringLiteral("Flatten Selection"), {},
                                    QStringLiteral("Bring Selection Level to Zero"));
    txbInsertSilence = makeText(frEdit, QStringLiteral("txbInsertSilence"), QString(),
                                {0, 0, 735, 300}, QStringLiteral("Insert Silence"));
    txbInsertSilence->setAlignment(Qt::AlignCenter);
    cbInsertSilence =
        makeButton(frEdit, QStringLiteral("cbInsertSilence"), QStringLiteral("  Insert Silence"),
                   {}, QStringLiteral("Insert Silence At Cursor Location (ms)"));
    for (QPushButton* button : {cbDeleteSelection, cbFlattenSelection, cbInsertSilence}) {
        button->setFont(smallFont());
    }
    cbDeleteSelection->setEnabled(false);
    cbFlattenSelection->setEnabled(false);
}

void frmMain::makeFiles() {
    frFiles = makeFrame(frTarnwick, QStringLiteral("frFiles"), QStringLiteral("Counts"), {});
    const auto counter = [this](const char* name, const QLabel* label) {
        QLineEdit* box =
            makeText(frFiles, QLatin1String(name), QString(), {0, 0, 600, 300}, label->text());
        box->setReadOnly(true);
        box->setAlignment(Qt::AlignCenter);
        return box;
    };
    Label41 = caption(frFiles, "Label41", "Names ");
    txbNberFileNames = counter("txbNberFileNames", Label41);
    Label42 = caption(frFiles, "Label42", "Audio ");
    txbNberAudioFiles = counter("txbNberAudioFiles", Label42);
}

}  // namespace tarnwick::forms
