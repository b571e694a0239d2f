// The preferences page: what steers the import, the source, the list and the window.
#include "forms/frm_main.h"
#include "forms/makers.h"
#include "forms/option_stop.h"

namespace tarnwick::forms {

namespace {

constexpr double kRow = 300;  // height of a control on the page
constexpr double kLeftColumn = 240;
constexpr double kColumnWidth = 6000;

// One array of options: at most one is on. The group lets a behaviour turn all of them off.
template <std::size_t count>
QButtonGroup* groupOf(QWidget* owner, const std::array<QRadioButton*, count>& options) {
    auto* group = new QButtonGroup(owner);
    for (std::size_t i = 0; i < count; ++i) {
        group->addButton(options[i], static_cast<int>(i));
    }
    new OptionStop(group, group->buttons());
    return group;
}

QRadioButton* option(QWidget* parent, const char* array, int index, const char* caption,
                     const Place& place, bool on = false) {
    return makeOption(parent, elementName(QLatin1String(array), index), QLatin1String(caption),
                      place, on);
}

}  // namespace

void frmMain::makePreferences() {
    frPreferences = new QFrame(this);
    frPreferences->setObjectName(QStringLiteral("frPreferences"));
    frPreferences->setAccessibleName(QStringLiteral("Preferences"));
    frPreferences->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    put(frPreferences, {0, 0, 12720, 8580});
    frPreferences->hide();
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
    QGroupBox* box = makeFrame(frPreferences, QStringLiteral("frScript"), QStringLiteral("Script"),
                               {kLeftColumn, 180, kColumnWidth, 2820});
    OpScriptFormat[0] = option(box, "OpScriptFormat", 0, "Script in Word", {240, 300, 2600, kRow});
    OpScriptFormat[1] =
        option(box, "OpScriptFormat", 1, "Script in Excel", {3000, 300, 2600, kRow}, true);
    OpScriptFormatGroup = groupOf(this, OpScriptFormat);
    opRowEach[0] = option(box, "opRowEach", 0, "One Prompt per Row", {240, 660, 2600, kRow}, true);
    opRowEach[1] = option(box, "opRowEach", 1, "Prompt Over Several Rows", {3000, 660, 2800, kRow});
    opRowEach[1]->hide();
    opRowEachGroup = groupOf(this, opRowEach);
    frExcelSpecific =
        makeFrame(box, QStringLiteral("frExcelSpecific"), QString(), {120, 1080, 5760, 1560});
    frExcelSpecific->setAccessibleName(QStringLiteral("Excel"));
    makeExcelGroup();
}

void frmMain::makeExcelGroup() {
    chIgnoreFirstRow =
        makeCheck(frExcelSpecific, QStringLiteral("chIgnoreFirstRow"),
                  QStringLiteral("Ignore First Row (Header)"), {120, 150, 4800, kRow}, true);
    chPromptSheet =
        makeCheck(frExcelSpecific, QStringLiteral("chPromptSheet"),
                  QStringLiteral(" Prompt for Sheet to Import"), {120, 600, 4800, kRow});
    chImportSpecifiedRows = makeCheck(frExcelSpecific, QStringLiteral("chImportSpecifiedRows"),
                                      QStringLiteral(" Only Import Rows"), {120, 1050, 2100, kRow});
    txbImportStartRow =
        makeText(frExcelSpecific, QStringLiteral("txbImportStartRow"), QStringLiteral("101"),
                 {2280, 1050, 900, kRow}, QStringLiteral("Only Import Rows"));
    Label43 = makeLabel(frExcelSpecific, QStringLiteral("Label43"), QStringLiteral("to"),
                        {3240, 1050, 300, kRow}, Qt::AlignCenter);
    txbImportEndRow = makeText(frExcelSpecific, QStringLiteral("txbImportEndRow"),
                               QStringLiteral("195"), {3600, 1050, 900, kRow}, Label43->text());
}

void frmMain::makeSourceGroup() {
    Frame10 =
        makeFrame(frPreferences, QStringLiteral("Frame10"), QStringLiteral("Source File Format"),
                  {kLeftColumn, 3120, kColumnWidth, 2700});
    constexpr std::array<const char*, 4> kFormats{".wav", ".mp3", ".aiff", "Any"};
    for (int i = 0; i < 4; ++i) {
        opSourceFileFormat[i] = option(Frame10, "opSourceFileFormat", i, kFormats[i],
                                       {240.0 + 1380 * i, 300, 1300, kRow}, i == 1);
    }
    opSourceFileFormatGroup = groupOf(this, opSourceFileFormat);
    // Its place grows with the window while the page does not, so it lies outside of its group; the
    // box below shows the same words.
    lbSpecs = makeLabel(Frame10, QStringLiteral("lbSpecs"), QStringLiteral("File specs"),
                        {840, 3720, 7540, 240});
    QGroupBox* specs = makeFrame(Frame10, QStringLiteral("frFileSpecs"),
                                 QStringLiteral("File specs"), {120, 720, 5760, 1380});
    makeSourceCombos(specs);
    chBUSource = makeCheck(Frame10, QStringLiteral("chBUSource"),
                           QStringLiteral(" Backup Source File Automatically When Edited"),
                           {240, 2250, 5400, kRow}, true);
}

void frmMain::makeSourceCombos(QWidget* box) {
    const auto label = [box](const char* name, const char* caption, double left, double top) {
        return makeLabel(box, QLatin1String(name), QLatin1String(caption), {left, top, 960, kRow});
    };
    const auto combo = [box](const char* name, const QString& items, const char* text,
                             const QLabel* beside) {
        QComboBox* made = makeCombo(box, QLatin1String(name), items.split(u' '),
                                    QLatin1String(text), {0, 0, 1380, 330}, beside->text());
        made->move(beside->x() + beside->width(), beside->y() - 1);
        return made;
    };
    lbFrequency = label("lbFrequency", "Frequency", 240, 330);
    cbxFrequency =
        combo("cbxFrequency", QStringLiteral("8000 11000 22000 32000 44100 48000 96000 192000"),
              "32000", lbFrequency);
    lbBits = label("lbBits", "Bits", 3120, 330);
    cbxBits = combo("cbxBits", QStringLiteral("8 16 24 32"), "8", lbBits);
    lbChannels = label("lbChannels", "Channels", 240, 870);
    cbxChannels = combo("cbxChannels", QStringLiteral("1 2"), "1", lbChannels);
    lbBitRate = label("lbBitRate", "Bit Rate", 3120, 870);
    cbxBitRate =
        combo("cbxBitRate", QStringLiteral("96 112 128 160 192 224 256 320"), "96", lbBitRate);
}

void frmMain::makePlayGroup() {
    Frame8 =
        makeFrame(frPreferences, QStringLiteral("Frame8"), QStringLiteral("Play Individual Files"),
                  {kLeftColumn, 5940, kColumnWidth, 1590});
    opPlayfromlistview[0] = option(Frame8, "opPlayfromlistview", 0,
                                   "Play continuously once clicked", {240, 300, 5400, kRow});
    opPlayfromlistview[1] = option(Frame8, "opPlayfromlistview", 1, "Play only when mouse down",
                                   {240, 660, 5400, kRow}, true);
    opPlayfromlistviewGroup = groupOf(this, opPlayfromlistview);
    Text2 =
        makeText(Frame8, QStringLiteral("Text2"),
                 QStringLiteral("Use CTRL-M to alternate without opening the Preferences window."),
                 {180, 1080, 5700, kRow}, QStringLiteral("Note"));
    Text2->setReadOnly(true);
    Text2->setFrame(false);
    Text2->setFocusPolicy(Qt::NoFocus);
    QPalette ground = Text2->palette();
    ground.setColor(QPalette::Base, Qt::transparent);
    Text2->setPalette(ground);
}

}  // namespace tarnwick::forms
