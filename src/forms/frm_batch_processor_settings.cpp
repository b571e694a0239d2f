// The settings groups of the Batch Processor's window: silence, normalisation, output format.

#include "forms/colours.h"
#include "forms/frm_batch_processor.h"
#include "forms/makers.h"
#include "forms/option_stop.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

// Of the groups within the output group: where ACM puts its own, the others stand, too.
constexpr double kGroupLeft = 2200, kGroupTop = 680, kGroupHeight = 3480;

// Makes controls side by side on one line, each as wide as it is, so that no text is cut off
// whatever font the desktop has.
class Line {
  public:
    Line(QWidget* parent, double left, double top) : in_(parent), x_(px(left)), top_(px(top)) {}

    Made<QCheckBox> check(const Named<QCheckBox*>& named, const QString& caption) {
        return append(in_.check(named, caption));
    }
    Made<QLineEdit> number(const Named<QLineEdit*>& named, const QString& caption,
                           const QString& value) {
        return append(in_.text(named, caption, {0, 0, 690, kHeight}, value));
    }
    void word(const Named<QLabel*>& named, const QString& caption) {
        const Made<QLabel> label = in_.label(named, caption);
        label->ensurePolished();  // only then does it know its true width
        label->resize(label->sizeHint());
        append(label);
    }
    Made<QPushButton> button(const Named<QPushButton*>& named, const QString& caption) {
        return append(in_.button(named, caption, {0, 0, 2700, 390}));
    }

  private:
    template <class Control>
    Made<Control> append(Made<Control> control) {
        control->move(x_, top_ + (px(kHeight) - control->height()) / 2);
        x_ += control->width() + kGap;
        return control;
    }

    static constexpr double kHeight = 360;  // twips
    static constexpr int kGap = 6;          // pixels between the controls

    const Maker in_;
    int x_;
    const int top_;
};

// A group of options in its own parent, one under the other.
template <std::size_t N>
void column(QWidget* parent, const Named<std::array<QRadioButton*, N>>& named,
            const std::array<const char16_t*, N>& captions, std::size_t on, double top) {
    for (std::size_t i = 0; i < N; ++i) {
        const Place place{180, top + 375.0 * static_cast<double>(i)};
        Maker(parent).option(element(named, i), QString::fromUtf16(captions[i]), place, i == on);
    }
    groupOptions(parent, named.member);
}

}  // namespace

void frmBatchProcessor::makeSilence() {
    Maker(this).frame(NAMED(frSilenceFunction), u"Silence Specifications"_s,
                      {240, 1185, 8220, 2340});
    Line cut(frSilenceFunction, 180, 330);
    cut.check(NAMED(chCutEnd), u"Cut the first"_s);
    cut.number(NAMED(txbCutStart), chCutEnd->text(), u"50"_s);
    cut.word(NAMED(Label20), u"msec. and the last"_s);
    cut.number(NAMED(txbCutEnd), Label20->text(), u"300"_s);
    cut.word(NAMED(Label17), u"msec. of recording before applying filters."_s);

    Line ends(frSilenceFunction, 180, 810);
    ends.check(NAMED(chSilenceEnds), u"Set silence at START of file to"_s);
    ends.number(NAMED(txbSetSilenceStart), chSilenceEnds->text(), u"500"_s);
    ends.word(NAMED(Label8), u"msec. and at END of file to "_s);
    ends.number(NAMED(txbSetSilenceEnd), Label8->text(), u"500"_s);
    ends.word(NAMED(Label3), u"msec."_s);

    Line threshold(frSilenceFunction, 480, 1290);
    threshold.word(NAMED(Label9), u"Threshold:"_s);
    threshold.number(NAMED(txbSilencedB), Label9->text(), u"-26"_s);
    threshold.word(NAMED(Label1), u"dB  or"_s);
    threshold.number(NAMED(txbSilencePerc), u"Threshold %RMS"_s, u"5.0"_s);
    threshold.word(NAMED(Label2), u"%RMS"_s);
    threshold.number(NAMED(txbSilenceThreshold), u"Silence Threshold"_s, u"0"_s).hidden();
    setBackground(txbSilenceThreshold, Qt::yellow);

    Line note(frSilenceFunction, 480, 1770);
    note.word(NAMED(Label14), u"(Note: Anything under the Threshold is considered Silence.)"_s);
}

void frmBatchProcessor::makeNormalization() {
    Maker(this).frame(NAMED(frNormalizationFunction), u"Normalization and Filtering"_s,
                      {240, 3690, 8220, 1380});
    Line maximum(frNormalizationFunction, 180, 330);
    maximum.check(NAMED(chNormalize), u"Normalize to a Maximum Value of"_s);
    maximum.number(NAMED(txbNormdB), chNormalize->text(), u"0.0"_s);
    maximum.word(NAMED(Label13), u"dB  or "_s);
    maximum.number(NAMED(txbNormPerc), u"Maximum Value %RMS"_s, u"100.0"_s);
    maximum.word(NAMED(Label12), u"%RMS"_s);

    Line filter(frNormalizationFunction, 180, 840);
    filter.check(NAMED(chHissFilter), u"Hiss Filter"_s).disabled();
    filter.button(NAMED(cbRecordBackgroundNoise), u"Record Background Noise"_s).disabled();
}

void frmBatchProcessor::makeOutput() {
    Maker(this).frame(NAMED(frOutputSpecs), u"Output File Specifications"_s,
                      {240, 5235, 8220, 4365});
    const Maker in(frOutputSpecs);
    in.frame(NAMED(frFormat), u"Format"_s, {180, kGroupTop, 1860, kGroupHeight});
    column(frFormat, NAMED(opFormat), {u"WAV", u"MP3", u"ACM", u"AIFF"}, 0, 360);
    makeResampleSettings();
    makeCodecs();
    in.check(NAMED(chConvert), u"Resample and/or Convert Files"_s, {180, 285}, true)
        .disabled()
        .hidden();
}

void frmBatchProcessor::makeResampleSettings() {
    Maker(frOutputSpecs)
        .frame(NAMED(frResampleSettings), u"Specifications"_s,
               {kGroupLeft, kGroupTop, 5840, kGroupHeight});
    const Maker in(frResampleSettings);
    column(
        frResampleSettings, NAMED(opFrequency),
        {u"8 kHz", u"11 kHz", u"22 kHz", u"32 kHz", u"44.1 kHz", u"48 kHz", u"96 kHz", u"192 kHz"},
        5, 360);
    in.untitledFrame(NAMED(frRate), u"Bits"_s, {1560, 360, 2460, 2160});
    column(frRate, NAMED(opRate),
           {u"8 bits", u"16 bits", u"24 bits", u"32 bits", u"32 bits floating"}, 2, 180);
    // Takes the place of frRate for MP3.
    in.frame(NAMED(frKbps), u"Constant Bit Rate (kbps)"_s, {1560, 960, 2460, 900}).hidden();
    Maker(frKbps).combo(NAMED(cbxOutputCBR), frKbps->title(), {180, 360, 2100, 375},
                        u"cbxOutputCBR"_s);
    in.untitledFrame(NAMED(Frame11), u"Channels"_s, {4200, 360, 1460, 1035});
    column(Frame11, NAMED(opChannel), {u"Mono", u"Stereo"}, 1, 180);
}

void frmBatchProcessor::makeCodecs() {
    Maker(frOutputSpecs)
        .frame(NAMED(frACMCodecs), u"ACM Codecs"_s, {kGroupLeft, kGroupTop, 5840, kGroupHeight})
        .hidden();
    const Maker in(frACMCodecs);
    in.label(NAMED(Label6), u"Audio Encoder  (Codec)"_s, {180, 480, 5480, 300});
    in.combo(NAMED(cbxCodecs), Label6->text(), {180, 810, 5480, 375})->setEditable(false);
    in.label(NAMED(Label7), u"Audio Encoder Format"_s, {180, 1560, 5480, 300});
    in.combo(NAMED(cbxCodecFormats), Label7->text(), {180, 1890, 5480, 375})->setEditable(false);
}

}  // namespace tarnwick::forms
