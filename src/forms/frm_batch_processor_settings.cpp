// The settings groups of the Batch Processor's window: silence, normalisation, output format.

#include <QButtonGroup>

#include "forms/colours.h"
#include "forms/frm_batch_processor.h"
#include "forms/makers.h"
#include "forms/option_stop.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kNumberWidth = 690, kLineHeight = 360;
// Of the groups within the output group: where ACM puts its own, the others stand, too.
constexpr double kGroupLeft = 2200, kGroupTop = 680, kGroupHeight = 3480;
constexpr int kGap = 6;  // pixels between the controls of a line

// Sets controls side by side on one line, each as wide as it is, so that no text is cut off
// whatever font the desktop has.
void line(double left, double top, std::initializer_list<QWidget*> controls) {
    int x = px(left);
    for (QWidget* control : controls) {
        control->move(x, px(top) + (px(kLineHeight) - control->height()) / 2);
        x += control->width() + kGap;
    }
}

QLineEdit* number(QWidget* parent, const QString& name, const QString& text,
                  const QString& caption) {
    return makeText(parent, name, text, {0, 0, kNumberWidth, kLineHeight}, caption);
}

QLabel* word(QWidget* parent, const QString& name, const QString& caption) {
    QLabel* label = makeLabel(parent, name, caption, {});
    label->ensurePolished();  // only then does it know its true width
    label->resize(label->sizeHint());
    return label;
}

// An option group in its own parent, one option under the other.
template <std::size_t N>
void column(QWidget* parent, const QString& array, const std::array<const char16_t*, N>& captions,
            std::size_t selected, double left, double top, std::array<QRadioButton*, N>& options) {
    // Without a group of their own, options would also exclude those in frames inside the parent.
    auto* group = new QButtonGroup(parent);
    for (std::size_t i = 0; i < N; ++i) {
        const Place place{left, top + 375.0 * static_cast<double>(i)};
        options[i] = makeOption(parent, elementName(array, static_cast<int>(i)),
                                QString::fromUtf16(captions[i]), place, i == selected);
        group->addButton(options[i]);
    }
    new OptionStop(parent, {options.begin(), options.end()});
}

}  // namespace

void frmBatchProcessor::makeSilence() {
    frSilenceFunction = makeFrame(this, u"frSilenceFunction"_s, u"Silence Specifications"_s,
                                  {240, 1185, 8220, 2340});
    QWidget* group = frSilenceFunction;
    chCutEnd = makeCheck(group, u"chCutEnd"_s, u"Cut the first"_s, {});
    txbCutStart = number(group, u"txbCutStart"_s, u"50"_s, chCutEnd->text());
    Label20 = word(group, u"Label20"_s, u"msec. and the last"_s);
    txbCutEnd = number(group, u"txbCutEnd"_s, u"300"_s, Label20->text());
    Label17 = word(group, u"Label17"_s, u"msec. of recording before applying filters."_s);
    line(180, 330, {chCutEnd, txbCutStart, Label20, txbCutEnd, Label17});

    chSilenceEnds = makeCheck(group, u"chSilenceEnds"_s, u"Set silence at START of file to"_s, {});
    txbSetSilenceStart = number(group, u"txbSetSilenceStart"_s, u"500"_s, chSilenceEnds->text());
    Label8 = word(group, u"Label8"_s, u"msec. and at END of file to "_s);
    txbSetSilenceEnd = number(group, u"txbSetSilenceEnd"_s, u"500"_s, Label8->text());
    Label3 = word(group, u"Label3"_s, u"msec."_s);
    line(180, 810, {chSilenceEnds, txbSetSilenceStart, Label8, txbSetSilenceEnd, Label3});

    Label9 = word(group, u"Label9"_s, u"Threshold:"_s);
    txbSilencedB = number(group, u"txbSilencedB"_s, u"-26"_s, Label9->text());
    Label1 = word(group, u"Label1"_s, u"dB  or"_s);
    txbSilencePerc = number(group, u"txbSilencePerc"_s, u"5.0"_s, u"Threshold %RMS"_s);
    Label2 = word(group, u"Label2"_s, u"%RMS"_s);
    txbSilenceThreshold = number(group, u"txbSilenceThreshold"_s, u"0"_s, u"Silence Threshold"_s);
    setBackground(txbSilenceThreshold, Qt::yellow);
    txbSilenceThreshold->hide();
    line(480, 1290, {Label9, txbSilencedB, Label1, txbSilencePerc, Label2, txbSilenceThreshold});

    Label14 =
        word(group, u"Label14"_s, u"(Note: Anything under the Threshold is considered Silence.)"_s);
    line(480, 1770, {Label14});
}

void frmBatchProcessor::makeNormalization() {
    frNormalizationFunction = makeFrame(this, u"frNormalizationFunction"_s,
                                        u"Normalization and Filtering"_s, {240, 3690, 8220, 1380});
    QWidget* group = frNormalizationFunction;
    chNormalize = makeCheck(group, u"chNormalize"_s, u"Normalize to a Maximum Value of"_s, {});
    txbNormdB = number(group, u"txbNormdB"_s, u"0.0"_s, chNormalize->text());
    Label13 = word(group, u"Label13"_s, u"dB  or "_s);
    txbNormPerc = number(group, u"txbNormPerc"_s, u"100.0"_s, u"Maximum Value %RMS"_s);
    Label12 = word(group, u"Label12"_s, u"%RMS"_s);
    line(180, 330, {chNormalize, txbNormdB, Label13, txbNormPerc, Label12});

    chHissFilter = makeCheck(group, u"chHissFilter"_s, u"Hiss Filter"_s, {});
    chHissFilter->setEnabled(false);
    cbRecordBackgroundNoise = makeButton(group, u"cbRecordBackgroundNoise"_s,
                                         u"Record Background Noise"_s, {0, 0, 2700, 390});
    cbRecordBackgroundNoise->setEnabled(false);
    line(180, 840, {chHissFilter, cbRecordBackgroundNoise});
}

void frmBatchProcessor::makeOutput() {
    frOutputSpecs = makeFrame(this, u"frOutputSpecs"_s, u"Output File Specifications"_s,
                              {240, 5235, 8220, 4365});
    frFormat =
        makeFrame(frOutputSpecs, u"frFormat"_s, u"Format"_s, {180, kGroupTop, 1860, kGroupHeight});
    column<4>(frFormat, u"opFormat"_s, {u"WAV", u"MP3", u"ACM", u"AIFF"}, 0, 180, 360, opFormat);
    makeResampleSettings();
    makeCodecs();
    chConvert = makeCheck(frOutputSpecs, u"chConvert"_s, u"Resample and/or Convert Files"_s,
                          {180, 285}, true);
    chConvert->setEnabled(false);
    chConvert->hide();
}

void frmBatchProcessor::makeResampleSettings() {
    frResampleSettings = makeFrame(frOutputSpecs, u"frResampleSettings"_s, u"Specifications"_s,
                                   {kGroupLeft, kGroupTop, 5840, kGroupHeight});
    column<8>(
        frResampleSettings, u"opFrequency"_s,
        {u"8 kHz", u"11 kHz", u"22 kHz", u"32 kHz", u"44.1 kHz", u"48 kHz", u"96 kHz", u"192 kHz"},
        5, 180, 360, opFrequency);
    frRate = makeFrame(frResampleSettings, u"frRate"_s, {}, {1560, 360, 2460, 2160});
    column<5>(frRate, u"opRate"_s,
              {u"8 bits", u"16 bits", u"24 bits", u"32 bits", u"32 bits floating"}, 2, 180, 180,
              opRate);
    frRate->setAccessibleName(u"Bits"_s);
    // Takes the place of frRate for MP3.
    frKbps = makeFrame(frResampleSettings, u"frKbps"_s, u"Constant Bit Rate (kbps)"_s,
                       {1560, 960, 2460, 900});
    cbxOutputCBR = makeCombo(frKbps, u"cbxOutputCBR"_s, {}, u"cbxOutputCBR"_s,
                             {180, 360, 2100, 375}, frKbps->title());
    frKbps->hide();
    Frame11 = makeFrame(frResampleSettings, u"Frame11"_s, {}, {4200, 360, 1460, 1035});
    column<2>(Frame11, u"opChannel"_s, {u"Mono", u"Stereo"}, 1, 180, 180, opChannel);
    Frame11->setAccessibleName(u"Channels"_s);
}

void frmBatchProcessor::makeCodecs() {
    frACMCodecs = makeFrame(frOutputSpecs, u"frACMCodecs"_s, u"ACM Codecs"_s,
                            {kGroupLeft, kGroupTop, 5840, kGroupHeight});
    Label6 =
        makeLabel(frACMCodecs, u"Label6"_s, u"Audio Encoder  (Codec)"_s, {180, 480, 5480, 300});
    cbxCodecs =
        makeCombo(frACMCodecs, u"cbxCodecs"_s, {}, {}, {180, 810, 5480, 375}, Label6->text());
    Label7 = makeLabel(frACMCodecs, u"Label7"_s, u"Audio Encoder Format"_s, {180, 1560, 5480, 300});
    cbxCodecFormats = makeCombo(frACMCodecs, u"cbxCodecFormats"_s, {}, {}, {180, 1890, 5480, 375},
                                Label7->text());
    cbxCodecs->setEditable(false);
    cbxCodecFormats->setEditable(false);
    frACMCodecs->hide();
}

}  // namespace tarnwick::forms
