// The preferences page: file naming, exported files, window scale, service timer, page buttons.
#include "forms/frm_main.h"
#include "forms/makers.h"
#include "forms/option_stop.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kRow = 300;
constexpr double kRightColumn = 6480;
constexpr double kColumnWidth = 6000;

}  // namespace

void frmMain::makeNamingGroup() {
    Maker(frPreferences)
        .frame(NAMED(frNaming), u"File Naming"_s, {kRightColumn, 180, kColumnWidth, 4380});
    const Maker in(frNaming);
    in.options(
        NAMED(opAutoNaming),
        {{u"Use File Names in first column of Script file"_s, {240, 300, 5600, kRow}},
         {u"Let Tarnwick create File Names based on scheme below:"_s, {240, 660, 5600, kRow}}},
        0);
    opAutoNamingGroup = groupOptions(this, opAutoNaming);
    in.untitledFrame(NAMED(frAutoNumber), u"Naming scheme"_s, {120, 1110, 5760, 3120}).disabled();
    makeAutoNumberGroup();
}

void frmMain::makeAutoNumberGroup() {
    const Maker in(frAutoNumber);
    const auto field = [&](const Named<QLabel*>& label, const QString& caption,
                           const Named<QLineEdit*>& box, const Place& at, const QString& value) {
        in.label(label, caption, {at.left, at.top, 1320, kRow});
        in.text(box, caption, {at.left + 1320, at.top, 1260, kRow}, value);
    };
    field(NAMED(lbPrefix), u"Prefix (If Any)"_s, NAMED(txbPrefix), {180, 240}, u"ACME_"_s);
    field(NAMED(lbStart), u"Start at"_s, NAMED(txbStarting), {3060, 240}, u"1000"_s);
    field(NAMED(lbSuffix), u"Suffix (If Any)"_s, NAMED(txbSuffix), {180, 690}, {});
    field(NAMED(lbIncr), u"Increment"_s, NAMED(txbIncrement), {3060, 690}, u"5"_s);
    in.label(NAMED(lbPreview), u"Preview of the first 3 file names which will be created:"_s,
             {180, 1230, 5400, kRow});
    for (std::size_t i = 0; i < txbPreview.size(); ++i)
        in.text(element(NAMED(txbPreview), i), u"Preview %1"_s.arg(i + 1),
                {180, 1620 + 450.0 * static_cast<double>(i), 5400, kRow})
            .readOnly();
    in.text(NAMED(txbFormat), u"Format"_s, {4680, 1230, 900, kRow}).disabled().hidden();
}

void frmMain::makeExportedGroup() {
    Maker(frPreferences)
        .frame(NAMED(Frame7), u"Exported Files"_s, {kRightColumn, 4680, kColumnWidth, 780});
    const Maker in(Frame7);
    const QString unit = u"msec. to Head and Tail of Exported Files"_s;
    in.check(NAMED(chAddPading), u"Add"_s, {240, 330, 780, kRow}, true);
    in.text(NAMED(txbPading), unit, {1080, 330, 720, kRow}, u"50 "_s);
    in.label(NAMED(Label35), unit, {1890, 330, 3900, kRow});
}

void frmMain::makeScalingGroup() {
    Maker(frPreferences)
        .frame(NAMED(frScaling), u"Window Scaling"_s, {kRightColumn, 5580, kColumnWidth, 810});
    const Maker in(frScaling);
    in.control(NAMED(slScaling), u"Window Scaling"_s, {240, 330, 4500, 330})
        ->setOrientation(Qt::Horizontal);
    slScaling->setRange(100, 200);
    slScaling->setPageStep(10);
    slScaling->setValue(153);
    in.text(NAMED(txbScaling), u"Window Scaling"_s, {4920, 345, 840, kRow}, u"153%"_s)
        .readOnly()
        ->setAlignment(Qt::AlignCenter);
}

void frmMain::makeTimerGroup() {
    Maker(frPreferences)
        .frame(NAMED(frRecalcTimer), u"Process Timer (Reserved for Support. Do not modify.)"_s,
               {kRightColumn, 6510, kColumnWidth, 780});
    const Maker in(frRecalcTimer);
    const QString unit = u"msec. to Process Timer"_s;
    in.check(NAMED(chRecalcTimer), u"Add"_s, {240, 330, 780, kRow}, true).disabled();
    in.text(NAMED(txbRecalcTimer), unit, {1080, 330, 720, kRow}, u"1000"_s).disabled();
    in.label(NAMED(lbRecalcTimer), unit, {1890, 330, 3900, kRow});
}

void frmMain::makePageButtons() {
    const Maker in(frPreferences);
    in.button(NAMED(cbPreferencesSave), u"Save"_s, {8040, 7920, 1380, 405});
    in.button(NAMED(cbPreferencesIgnore), u"Ignore"_s, {9570, 7920, 1380, 405});
    in.button(NAMED(cbPreferencesLoad), u"Load"_s, {11100, 7920, 1380, 405});
}

}  // namespace tarnwick::forms
