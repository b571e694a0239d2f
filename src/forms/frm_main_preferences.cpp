// The preferences page: what steers the import, the source, the list and the window.
#include "forms/frm_main.h"
#include "forms/makers.h"
#include "forms/option_stop.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kRow = 300;  // height of a control on the page
constexpr double kLeftColumn = 240;
constexpr double kColumnWidth = 6000;

}  // namespace

void frmMain::makePreferences() {
    Maker(this)
        .control(NAMED(frPreferences), u"Preferences"_s, {0, 0, 12720, 8580})
        .hidden()
        ->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    makeScriptGroup();
    makeSourceGroup();
    makePlayGroup();
    makeNamingGroup();
    makeExportedGroup();
    makeScalingGroup();
    makeTimerGroup();
    makePageButtons();
}

void frmMain::makeScriptGroup() {
    Maker(frPreferences)
        .frame(NAMED(frScript), u"Script"_s, {kLeftColumn, 180, kColumnWidth, 2820});
    const Maker in(frScript);
    in.options(NAMED(OpScriptFormat),
               {{u"Script in Word"_s, {240, 300, 2600, kRow}},
                {u"Script in Excel"_s, {3000, 300, 2600, kRow}}},
               1);
    OpScriptFormatGroup = groupOptions(this, OpScriptFormat);
    in.options(NAMED(opRowEach),
               {{u"One Prompt per Row"_s, {240, 660, 2600, kRow}},
                {u"Prompt Over Several Rows"_s, {3000, 660, 2800, kRow}}},
               0);
    opRowEach[1]->hide();
    opRowEachGroup = groupOptions(this, opRowEach);
    in.untitledFrame(NAMED(frExcelSpecific), u"Excel"_s, {120, 1080, 5760, 1560});
    makeExcelGroup();
}

void frmMain::makeExcelGroup() {
    const Maker in(frExcelSpecific);
    in.check(NAMED(chIgnoreFirstRow), u"Ignore First Row (Header)"_s, {120, 150, 4800, kRow}, true);
    in.check(NAMED(chPromptSheet), u" Prompt for Sheet to Import"_s, {120, 600, 4800, kRow});
    in.check(NAMED(chImportSpecifiedRows), u" Only Import Rows"_s, {120, 1050, 2100, kRow});
    in.text(NAMED(txbImportStartRow), u"Only Import Rows"_s, {2280, 1050, 900, kRow}, u"101"_s);
    in.label(NAMED(Label43), u"to"_s, {3240, 1050, 300, kRow}, Qt::AlignCenter);
    in.text(NAMED(txbImportEndRow), Label43->text(), {3600, 1050, 900, kRow}, u"195"_s);
}

void frmMain::makeSourceGroup() {
    Maker(frPreferences)
        .frame(NAMED(Frame10), u"Source File Format"_s, {kLeftColumn, 3120, kColumnWidth, 2700});
    const Maker in(Frame10);
    in.options(NAMED(opSourceFileFormat),
               {{u".wav"_s, {240, 300, 1300, kRow}},
                {u".mp3"_s, {1620, 300, 1300, kRow}},
                {u".aiff"_s, {3000, 300, 1300, kRow}},
                {u"Any"_s, {4380, 300, 1300, kRow}}},
               1);
    opSourceFileFormatGroup = groupOptions(this, opSourceFileFormat);
    // Its place grows with the window while the page does not, so it lies outside of its group; the
    // box below shows the same words.
    in.label(NAMED(lbSpecs), u"File specs"_s, {0, 0, 0, 240});
    in.frame(NAMED(frFileSpecs), u"File specs"_s, {120, 720, 5760, 1380});
    makeSourceCombos();
    in.check(NAMED(chBUSource), u" Backup Source File Automatically When Edited"_s,
             {240, 2250, 5400, kRow}, true);
}

void frmMain::makeSourceCombos() {
    const Maker in(frFileSpecs);
    const auto combo = [&](const Named<QLabel*>& label, const QString& caption, const Place& at,
                           const Named<QComboBox*>& box, const QString& value,
                           const QString& items) {
        in.label(label, caption, {at.left, at.top, 960, kRow});
        in.combo(box, caption, {at.left + 960, at.top - 15, 1380, 330}, value, items.split(u' '));
    };
    combo(NAMED(lbFrequency), u"Frequency"_s, {240, 330}, NAMED(cbxFrequency), u"32000"_s,
          u"8000 11000 22000 32000 44100 48000 96000 192000"_s);
    combo(NAMED(lbBits), u"Bits"_s, {3120, 330}, NAMED(cbxBits), u"8"_s, u"8 16 24 32"_s);
    combo(NAMED(lbChannels), u"Channels"_s, {240, 870}, NAMED(cbxChannels), u"1"_s, u"1 2"_s);
    combo(NAMED(lbBitRate), u"Bit Rate"_s, {3120, 870}, NAMED(cbxBitRate), u"96"_s,
          u"96 112 128 160 192 224 256 320"_s);
}

void frmMain::makePlayGroup() {
    Maker(frPreferences)
        .frame(NAMED(Frame8), u"Play Individual Files"_s, {kLeftColumn, 5940, kColumnWidth, 1590});
    const Maker in(Frame8);
    in.options(NAMED(opPlayfromlistview),
               {{u"Play continuously once clicked"_s, {240, 300, 5400, kRow}},
                {u"Play only when mouse down"_s, {240, 660, 5400, kRow}}},
               1);
    opPlayfromlistviewGroup = groupOptions(this, opPlayfromlistview);
    in.text(NAMED(Text2), u"Note"_s, {180, 1080, 5700, kRow},
            u"Use CTRL-M to alternate without opening the Preferences window."_s)
        .readOnly();
    Text2->setFrame(false);
    Text2->setFocusPolicy(Qt::NoFocus);
    QPalette ground = Text2->palette();
    ground.setColor(QPalette::Base, Qt::transparent);
    Text2->setPalette(ground);
}

}  // namespace tarnwick::forms
