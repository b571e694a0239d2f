#include "forms/frm_rename_wiz.h"

#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kLineHeight = 360;
constexpr double kFolderLeft = 240, kFolderWidth = 2460;
// The column of the rules, right of the lists.
constexpr double kLeft = 10560, kRight = 13500, kRuleWidth = kRight - kLeft;
constexpr double kHalf = 1410;  // width of one of two controls side by side

void separator(const Maker& in, const Named<QPushButton*>& named, double top) {
    in.control(named, u"Separator"_s, {kLeft, top, kRuleWidth, 45}).disabled();
}

// A label and, from `boxLeft` to the column's right edge, its text box.
void field(const Maker& in, const Named<QLabel*>& label, const QString& caption,
           const Named<QLineEdit*>& box, double boxLeft, double top, const QString& text = {}) {
    in.label(label, caption, {kLeft, top, boxLeft - kLeft - 60, kLineHeight});
    in.text(box, caption, {boxLeft, top, kRight - boxLeft, kLineHeight}, text);
}

}  // namespace

const frmRenameWiz::Arrangement frmRenameWiz::kSideBySide{{2880, 720, 3135, 7860},
                                                          {7200, 720, 3135, 7860},
                                                          {6100, 1680},
                                                          {6100, 2280},
                                                          {6100, 4440},
                                                          {6100, 5040},
                                                          {6100, 6960}};
const frmRenameWiz::Arrangement frmRenameWiz::kOneAboveTheOther{{2880, 720, 7455, 3570},
                                                                {2880, 5160, 7455, 3570},
                                                                {2880, 4440},
                                                                {3960, 4440},
                                                                {5640, 4440},
                                                                {6700, 4440},
                                                                {9000, 4440}};

frmRenameWiz::frmRenameWiz(QWidget* parent) : QWidget(parent) {
    setUpChildForm(*this, u"frmRenameWiz"_s, u"RenameWiz "_s);
    makeFolder();
    makeLists();
    makeAffixRules();
    makeTextRules();
    makeExtensionRule();
    makeReDating();
    makeWindowButtons();
}

void frmRenameWiz::arrange(const Arrangement& to) {
    const auto move = [](QWidget* control, const Place& place) {
        control->move(px(place.left), px(place.top));
        if (place.width > 0) control->resize(px(place.width), px(place.height));
    };
    move(lbxAvailableFiles, to.lbxAvailableFiles);
    move(lbxSelectedFiles, to.lbxSelectedFiles);
    move(cbAdd, to.cbAdd);
    move(cbAddAll, to.cbAddAll);
    move(cbRemove, to.cbRemove);
    move(cbRemoveAll, to.cbRemoveAll);
    move(cbFlip, to.cbFlip);
}

void frmRenameWiz::makeFolder() {
    const Maker in(this);
    in.combo(NAMED(Drivelb), u"Drive"_s, {kFolderLeft, 720, kFolderWidth, 375})->setEditable(false);
    in.control(NAMED(Directorylb), u"Folder"_s, {kFolderLeft, 1185, kFolderWidth, 4920});
    drawAsFileNames(*Directorylb);
    in.label(NAMED(Label1),
             u"File Extension Filter - Multiple useable separated by semicolon, no "
             u"space: *.txt;*.doc;*.rtf"_s,
             {kFolderLeft, 6195, kFolderWidth, 1005}, Qt::AlignLeft | Qt::AlignBottom)
        ->setWordWrap(true);
    in.text(NAMED(txbFileExtFilter), Label1->text(), {kFolderLeft, 7260, kFolderWidth, kLineHeight},
            u"*.*"_s);
    in.check(NAMED(chRecurse), u"Recurse Files"_s, {kFolderLeft, 7710});
    in.control(NAMED(Filelb), u"Files"_s, {kFolderLeft, 12000, kFolderWidth, 1500})
        ->setFocusPolicy(Qt::NoFocus);
}

void frmRenameWiz::makeLists() {
    const Maker in(this);
    in.label(NAMED(Label2),
             u"Select file(s) in either list using Click, Shift-Click, or "
             u"Control-Click, then Add or Remove."_s,
             {2880, 255, 7455, kLineHeight});
    constexpr Place kButton{0, 0, 1035, 540};
    in.control(NAMED(lbxAvailableFiles), u"Available Files"_s);
    in.button(NAMED(cbAdd), u"     Add       >>>"_s, kButton);
    in.button(NAMED(cbAddAll), u"Add All >>>>>>"_s, kButton);
    in.button(NAMED(cbRemove), u"Remove <<<"_s, kButton);
    in.button(NAMED(cbRemoveAll), u"Remove All <<<<<<"_s, kButton);
    in.button(NAMED(cbFlip), u"  Flip Horizontal"_s, kButton);
    in.control(NAMED(lbxSelectedFiles), u"Selected Files"_s);
    arrange(kSideBySide);
}

void frmRenameWiz::makeAffixRules() {
    constexpr double kBox = kLeft + 1050;
    const Maker in(this);
    field(in, NAMED(Label3), u"Add Prefix"_s, NAMED(txbAddPrefix), kBox, 240);
    in.check(NAMED(chIncrNumberPrefix), u"Incr. Number (1_)"_s, {kLeft, 645});
    in.check(NAMED(chIncrLetterPrefix), u"Incr. Letter (A_)"_s, {kLeft, 990});
    separator(in, NAMED(Command1), 1365);
    field(in, NAMED(Label4), u"Add Suffix"_s, NAMED(txbAddSuffix), kBox, 1500);
    in.check(NAMED(chIncrNumberSuffix), u"Incr. Number (_1)"_s, {kLeft, 1905});
    in.check(NAMED(chIncrLetterSuffix), u"Incr. Letter (_A)"_s, {kLeft, 2250});
    separator(in, NAMED(Command2), 2625);
}

void frmRenameWiz::makeTextRules() {
    constexpr double kBox = kLeft + 1290, kNarrowBox = kRight - 840;
    const Maker in(this);
    field(in, NAMED(Label5), u"Search For"_s, NAMED(txbSearchFor), kBox, 2760);
    field(in, NAMED(Label6), u"Replace With"_s, NAMED(txbReplaceWith), kBox, 3180);
    in.check(NAMED(chCaseSensitive), u"Case Sensitive"_s, {kLeft, 3600});
    separator(in, NAMED(Command3), 3975);

    in.label(NAMED(Label7), u"Add/Remove"_s, {kLeft, 4065, kRuleWidth, 300});
    setBold(Label7, true);
    field(in, NAMED(Label8), u"Insert String"_s, NAMED(txbInsert), kBox, 4395);
    field(in, NAMED(Label9), u"Remove # Characters"_s, NAMED(txbRemove), kNarrowBox, 4815);
    field(in, NAMED(Label10), u"Starting at Character #"_s, NAMED(txbStartingAt), kNarrowBox, 5235,
          u"1"_s);
    separator(in, NAMED(Command4), 5700);
}

void frmRenameWiz::makeExtensionRule() {
    const Maker in(this);
    in.label(NAMED(Label11), u"Change Extension"_s, {kLeft, 5835, kRuleWidth, 300});
    in.text(NAMED(txbSourceExt), Label11->text(), {kLeft, 6165, 1200, kLineHeight});
    in.label(NAMED(Label12), u"To"_s, {kLeft + 1260, 6165, 420, kLineHeight}, Qt::AlignCenter);
    in.text(NAMED(txbTargetExt), u"Change Extension To"_s,
            {kRight - 1200, 6165, 1200, kLineHeight});
    // At rest cbPreview fills the line; the other two share it during a preview.
    in.button(NAMED(cbPreview), u"Preview"_s, {kLeft, 6675, kRuleWidth, 420});
    in.button(NAMED(cbRename), u"Rename"_s, {kLeft, 6675, kHalf, 420}).hidden();
    in.button(NAMED(cbCancel), u"Cancel"_s, {kRight - kHalf, 6675, kHalf, 420}).hidden();
    separator(in, NAMED(Command5), 7215);
}

void frmRenameWiz::makeReDating() {
    const Maker in(this);
    const QString unit = u"hrs. to 'Date Modified'"_s;
    in.text(NAMED(txbDateModified), unit, {kLeft, 7350, 840, kLineHeight});
    in.label(NAMED(Label13), unit, {kLeft + 900, 7350, kRuleWidth - 900, kLineHeight});
    in.text(NAMED(txbNewDate), u"New Date"_s, {kLeft, 7770, kRuleWidth, kLineHeight});
    in.button(NAMED(cbReDatePreview), u"Preview"_s, {kLeft, 8220, kRuleWidth, 420});
    in.button(NAMED(cbReDate), u"Re-Date"_s, {kLeft, 8220, kHalf, 420}).hidden();
    in.button(NAMED(cbReDateCancel), u"Cancel"_s, {kRight - kHalf, 8220, kHalf, 420}).hidden();
    separator(in, NAMED(Command6), 8760);
}

void frmRenameWiz::makeWindowButtons() {
    const Maker in(this);
    in.button(NAMED(cbRenamePerList), u"  Rename  Per List"_s,
              {kFolderLeft, 8910, kFolderWidth, 420});
    in.button(NAMED(cbClear), u"Clear All Fields"_s, {kLeft, 8910, kHalf, 420});
    in.button(NAMED(cbClose), u"Close"_s, {kRight - kHalf, 8910, kHalf, 420});
}

}  // namespace tarnwick::forms
