// The lower half of the work area: detection settings, prompt list, content pane.
#include "forms/colours.h"
#include "forms/fonts.h"
#include "forms/frm_main.h"
#include "forms/makers.h"
#include "forms/prompt_list.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kBoxWidth = 675, kBoxHeight = 300;
constexpr Place kLabel{0, 0, 0, 240};

}  // namespace

void frmMain::makeSpecs() {
    Maker(frTarnwick).frame(NAMED(frSpecs), u"Detection"_s);
    const Maker in(frSpecs);
    const auto field = [&](const Named<QLabel*>& label, const QString& caption,
                           const Named<QLineEdit*>& box, const QString& value) {
        in.label(label, caption, kLabel);
        in.text(box, caption, {0, 0, kBoxWidth, kBoxHeight}, value).disabled();
    };
    field(NAMED(Label32), u"Duration  "_s, NAMED(txbSilence), u"1500"_s);
    in.label(NAMED(Label33), u" msec."_s, kLabel);
    field(NAMED(Label10), u"Threshold  "_s, NAMED(txbThreshold), u"-35"_s);
    in.label(NAMED(Label13), u" dB"_s, kLabel);
    field(NAMED(Label38), u"Words/min  "_s, NAMED(txbSpeed), u"150"_s);
    field(NAMED(Label16), u"Variance  "_s, NAMED(txbVariance), u"50"_s);
    const auto working = [&](const Named<QLineEdit*>& box, const QString& what, double left) {
        in.text(box, what, {left, 240, kBoxWidth, kBoxHeight}).hidden();
        setBackground(box.member, Qt::yellow);
    };
    working(NAMED(txbSilencePerc), u"Threshold in percent"_s, 4860);
    working(NAMED(txbSilenceThreshold), u"Threshold of amplitude"_s, 5610);
    in.button(NAMED(cbProcess), u"Process"_s).disabled();
}

void frmMain::makeList() {
    const Maker in(frTarnwick);
    in.button(NAMED(cbContent), u"Expand Content"_s).disabled()->setFont(smallFont());
    in.add(NAMED(lvAudioDetails), makePromptList(frTarnwick), u"Prompts"_s);
    in.control(NAMED(txbContent), u"Content"_s).readOnly().hidden()->setAcceptRichText(false);
    in.text(NAMED(txbCalculating), u"Progress"_s, {0, 0, 3600, 480}, u"Calculating..."_s)
        .readOnly()
        .hidden();
    txbCalculating->setFocusPolicy(Qt::NoFocus);
    txbCalculating->setStyleSheet(
        u"border-radius: 3px; background: palette(highlight); color: palette(highlighted-text);"_s);
    txbCalculating->setAlignment(Qt::AlignCenter);
}

}  // namespace tarnwick::forms
