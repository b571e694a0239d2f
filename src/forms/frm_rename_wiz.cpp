#include "forms/frm_rename_wiz.h"

#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr double kWidth = 13750, kHeight = 10250;
constexpr double kLineHeight = 360;
constexpr double kFolderLeft = 240, kFolderWidth = 2460;
// The column of the rules, right of the lists.
constexpr double kLeft = 10560, kRight = 13500, kRuleWidth = kRight - kLeft;
constexpr double kHalf = 1410;  // width of one of two controls side by side

QPushButton* rule(QWidget* parent, const QString& name, double top) {
    auto* line = new QPushButton(parent);
    line->setObjectName(name);
    line->setAccessibleName(u"Separator"_s);
    line->setEnabled(false);
    put(line, {kLeft, top, kRuleWidth, 45});
    return line;
}

QPushButton* hiddenButton(QWidget* parent, const QString& name, const QString& caption,
                          const Place& place) {
    QPushButton* button = makeButton(parent, name, caption, place);
    button->hide();
    return button;
}

// A label and, from `boxLeft` to the column's right edge, its text box.
QLineEdit* field(QWidget* parent, QLabel*& label, const QString& labelName, const QString& caption,
                 const QString& name, double boxLeft, double top, const QString& text = {}) {
    label = makeLabel(parent, labelName, caption, {kLeft, top, boxLeft - kLeft - 60, kLineHeight});
    return makeText(parent, name, text, {boxLeft, top, kRight - boxLeft, kLineHeight}, caption);
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
    setObjectName(u"frmRenameWiz"_s);
    setWindowTitle(u"RenameWiz "_s);
    setAccessibleName(u"RenameWiz"_s);
    setFont(uiFont());
    resize(px(kWidth), px(kHeight));
    setMaximumSize(size());  // what is parked beyond the edges stays out of sight
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
    Drivelb =
        makeCombo(this, u"Drivelb"_s, {}, {}, {kFolderLeft, 720, kFolderWidth, 375}, u"Drive"_s);
    Drivelb->setEditable(false);
    Directorylb =
        makeList(this, u"Directorylb"_s, {kFolderLeft, 1185, kFolderWidth, 4920}, u"Folder"_s);
    drawAsFileNames(*Directorylb);
    Label1 = makeLabel(this, u"Label1"_s,
                       u"File Extension Filter - Multiple useable separated by semicolon, no "
                       u"space: *.txt;*.doc;*.rtf"_s,
                       {kFolderLeft, 6195, kFolderWidth, 1005}, Qt::AlignLeft | Qt::AlignBottom);
    Label1->setWordWrap(true);
    txbFileExtFilter = makeText(this, u"txbFileExtFilter"_s, u"*.*"_s,
                                {kFolderLeft, 7260, kFolderWidth, kLineHeight}, Label1->text());
    chRecurse = makeCheck(this, u"chRecurse"_s, u"Recurse Files"_s, {kFolderLeft, 7710});
    Filelb = makeNameList(this, u"Filelb"_s, {kFolderLeft, 12000, kFolderWidth, 1500}, u"Files"_s);
    Filelb->setFocusPolicy(Qt::NoFocus);
}

void frmRenameWiz::makeLists() {
    Label2 = makeLabel(this, u"Label2"_s,
                       u"Select file(s) in either list using Click, Shift-Click, or "
                       u"Control-Click, then Add or Remove."_s,
                       {2880, 255, 7455, kLineHeight});
    lbxAvailableFiles = makeNameList(this, u"lbxAvailableFiles"_s, kSideBySide.lbxAvailableFiles,
                                     u"Available Files"_s);
    const auto between = [this](const QString& name, const QString& caption) {
        return makeButton(this, name, caption, {0, 0, 1035, 540});
    };
    cbAdd = between(u"cbAdd"_s, u"     Add       >>>"_s);
    cbAddAll = between(u"cbAddAll"_s, u"Add All >>>>>>"_s);
    cbRemove = between(u"cbRemove"_s, u"Remove <<<"_s);
    cbRemoveAll = between(u"cbRemoveAll"_s, u"Remove All <<<<<<"_s);
    cbFlip = between(u"cbFlip"_s, u"  Flip Horizontal"_s);
    lbxSelectedFiles = makeNameList(this, u"lbxSelectedFiles"_s, kSideBySide.lbxSelectedFiles,
                                    u"Selected Files"_s);
    arrange(kSideBySide);
}

void frmRenameWiz::makeAffixRules() {
    constexpr double kBox = kLeft + 1050;
    txbAddPrefix = field(this, Label3, u"Label3"_s, u"Add Prefix"_s, u"txbAddPrefix"_s, kBox, 240);
    chIncrNumberPrefix =
        makeCheck(this, u"chIncrNumberPrefix"_s, u"Incr. Number (1_)"_s, {kLeft, 645});
    chIncrLetterPrefix =
        makeCheck(this, u"chIncrLetterPrefix"_s, u"Incr. Letter (A_)"_s, {kLeft, 990});
    Command1 = rule(this, u"Command1"_s, 1365);
    txbAddSuffix = field(this, Label4, u"Label4"_s, u"Add Suffix"_s, u"txbAddSuffix"_s, kBox, 1500);
    chIncrNumberSuffix =
        makeCheck(this, u"chIncrNumberSuffix"_s, u"Incr. Number (_1)"_s, {kLeft, 1905});
    chIncrLetterSuffix =
        makeCheck(this, u"chIncrLetterSuffix"_s, u"Incr. Letter (_A)"_s, {kLeft, 2250});
    Command2 = rule(this, u"Command2"_s, 2625);
}

void frmRenameWiz::makeTextRules() {
    constexpr double kBox = kLeft + 1290, kNarrowBox = kRight - 840;
    txbSearchFor = field(this, Label5, u"Label5"_s, u"Search For"_s, u"txbSearchFor"_s, kBox, 2760);
    txbReplaceWith =
        field(this, Label6, u"Label6"_s, u"Replace With"_s, u"txbReplaceWith"_s, kBox, 3180);
    chCaseSensitive = makeCheck(this, u"chCaseSensitive"_s, u"Case Sensitive"_s, {kLeft, 3600});
    Command3 = rule(this, u"Command3"_s, 3975);

    Label7 = makeLabel(this, u"Label7"_s, u"Add/Remove"_s, {kLeft, 4065, kRuleWidth, 300});
    setBold(Label7, true);
    txbInsert = field(this, Label8, u"Label8"_s, u"Insert String"_s, u"txbInsert"_s, kBox, 4395);
    txbRemove = field(this, Label9, u"Label9"_s, u"Remove # Characters"_s, u"txbRemove"_s,
                      kNarrowBox, 4815);
    txbStartingAt = field(this, Label10, u"Label10"_s, u"Starting at Character #"_s,
                          u"txbStartingAt"_s, kNarrowBox, 5235, u"1"_s);
    Command4 = rule(this, u"Command4"_s, 5700);
}

void frmRenameWiz::makeExtensionRule() {
    constexpr double kTop = 5835;
    Label11 = makeLabel(this, u"Label11"_s, u"Change Extension"_s, {kLeft, kTop, kRuleWidth, 300});
    txbSourceExt = makeText(this, u"txbSourceExt"_s, {}, {kLeft, kTop + 330, 1200, kLineHeight},
                            Label11->text());
    Label12 = makeLabel(this, u"Label12"_s, u"To"_s, {kLeft + 1260, kTop + 330, 420, kLineHeight},
                        Qt::AlignCenter);
    txbTargetExt =
        makeText(this, u"txbTargetExt"_s, {}, {kRight - 1200, kTop + 330, 1200, kLineHeight},
                 u"Change Extension To"_s);
    // At rest cbPreview fills the line; the other two share it during a preview.
    const double top = kTop + 840;
    cbPreview = makeButton(this, u"cbPreview"_s, u"Preview"_s, {kLeft, top, kRuleWidth, 420});
    cbRename = hiddenButton(this, u"cbRename"_s, u"Rename"_s, {kLeft, top, kHalf, 420});
    cbCancel = hiddenButton(this, u"cbCancel"_s, u"Cancel"_s, {kRight - kHalf, top, kHalf, 420});
    Command5 = rule(this, u"Command5"_s, 7215);
}

void frmRenameWiz::makeReDating() {
    txbDateModified = makeText(this, u"txbDateModified"_s, {}, {kLeft, 7350, 840, kLineHeight},
                               u"hrs. to 'Date Modified'"_s);
    Label13 = makeLabel(this, u"Label13"_s, u"hrs. to 'Date Modified'"_s,
                        {kLeft + 900, 7350, kRuleWidth - 900, kLineHeight});
    txbNewDate =
        makeText(this, u"txbNewDate"_s, {}, {kLeft, 7770, kRuleWidth, kLineHeight}, u"New Date"_s);
    cbReDatePreview =
        makeButton(this, u"cbReDatePreview"_s, u"Preview"_s, {kLeft, 8220, kRuleWidth, 420});
    cbReDate = hiddenButton(this, u"cbReDate"_s, u"Re-Date"_s, {kLeft, 8220, kHalf, 420});
    cbReDateCancel =
        hiddenButton(this, u"cbReDateCancel"_s, u"Cancel"_s, {kRight - kHalf, 8220, kHalf, 420});
    Command6 = rule(this, u"Command6"_s, 8760);
}

void frmRenameWiz::makeWindowButtons() {
    cbRenamePerList = makeButton(this, u"cbRenamePerList"_s, u"  Rename  Per List"_s,
                                 {kFolderLeft, 8910, kFolderWidth, 420});
    cbClear = makeButton(this, u"cbClear"_s, u"Clear All Fields"_s, {kLeft, 8910, kHalf, 420});
    cbClose = makeButton(this, u"cbClose"_s, u"Close"_s, {kRight - kHalf, 8910, kHalf, 420});
}

}  // namespace tarnwick::forms
