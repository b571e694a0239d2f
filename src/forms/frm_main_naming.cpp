// The preferences page: file naming, exported files, window scale, service timer, page buttons.
#include "forms/frm_main.h"
#include "forms/makers.h"
#include "forms/option_stop.h"

namespace tarnwick::forms {

namespace {

constexpr double kRow = 300;
constexpr double kRightColumn = 6480;
constexpr double kColumnWidth = 6000;

}  // namespace

void frmMain::makeNamingGroup() {
    frNaming = makeFrame(frPreferences, QStringLiteral("frNaming"), QStringLiteral("File Naming"),
                         {kRightColumn, 180, kColumnWidth, 4380});
    constexpr std::array<const char*, 2> kCaptions{
        "Use File Names in first column of Script file",
        "Let Tarnwick create File Names based on scheme below:"};
    for (int i = 0; i < 2; ++i) {
        opAutoNaming[i] =
            makeOption(frNaming, elementName(QStringLiteral("opAutoNaming"), i),
                       QLatin1String(kCaptions[i]), {240, 300.0 + 360 * i, 5600, kRow}, i == 0);
    }
    opAutoNamingGroup = new QButtonGroup(this);
    opAutoNamingGroup->addButton(opAutoNaming[0], 0);
    opAutoNamingGroup->addButton(opAutoNaming[1], 1);
    new OptionStop(opAutoNamingGroup, opAutoNamingGroup->buttons());
    frAutoNumber =
        makeFrame(frNaming, QStringLiteral("frAutoNumber"), QString(), {120, 1110, 5760, 3120});
    frAutoNumber->setAccessibleName(QStringLiteral("Naming scheme"));
    makeAutoNumberGroup();
    frAutoNumber->setEnabled(false);
}

void frmMain::makeAutoNumberGroup() {
    const auto label = [this](const char* name, const char* caption, double left, double top) {
        return makeLabel(frAutoNumber, QLatin1String(name), QLatin1String(caption),
                         {left, top, 1320, kRow});
    };
    const auto box = [this](const char* name, const char* text, const QLabel* beside) {
        QLineEdit* made = makeText(frAutoNumber, QLatin1String(name), QLatin1String(text),
                                   {0, 0, 1260, kRow}, beside->text());
        made->move(beside->x() + beside->width(), beside->y());
        return made;
    };
    lbPrefix = label("lbPrefix", "Prefix (If Any)", 180, 240);
    txbPrefix = box("txbPrefix", "ACME_", lbPrefix);
    lbStart = label("lbStart", "Start at", 3060, 240);
    txbStarting = box("txbStarting", "1000", lbStart);
    lbSuffix = label("lbSuffix", "Suffix (If Any)", 180, 690);
    txbSuffix = box("txbSuffix", "", lbSuffix);
    lbIncr = label("lbIncr", "Increment", 3060, 690);
    txbIncrement = box("txbIncrement", "5", lbIncr);
    lbPreview =
        makeLabel(frAutoNumber, QStringLiteral("lbPreview"),
                  QStringLiteral("Preview of the first 3 file names which will be created:"),
                  {180, 1230, 5400, kRow});
    for (int i = 0; i < 3; ++i) {
        txbPreview[i] =
            makeText(frAutoNumber, elementName(QStringLiteral("txbPreview"), i), QString(),
                     {180, 1620.0 + 450 * i, 5400, kRow}, QStringLiteral("Preview %1").arg(i + 1));
        txbPreview[i]->setReadOnly(true);
    }
    txbFormat = makeText(frAutoNumber, QStringLiteral("txbFormat"), QString(),
                         {4680, 1230, 900, kRow}, QStringLiteral("Format"));
    txbFormat->setEnabled(false);
    txbFormat->hide();
}

void frmMain::makeExportedGroup() {
    Frame7 = makeFrame(frPreferences, QStringLiteral("Frame7"), QStringLiteral("Exported Files"),
                       {kRightColumn, 4680, kColumnWidth, 780});
    chAddPading = makeCheck(Frame7, QStringLiteral("chAddPading"), QStringLiteral("Add"),
                            {240, 330, 780, kRow}, true);
    txbPading =
        makeText(Frame7, QStringLiteral("txbPading"), QStringLiteral("50 "), {1080, 330, 720, kRow},
                 QStringLiteral("msec. to Head and Tail of Exported Files"));
    Label35 = makeLabel(Frame7, QStringLiteral("Label35"),
                        QStringLiteral("msec. to Head and Tail of Exported Files"),
                        {1890, 330, 3900, kRow});
}

void frmMain::makeScalingGroup() {
    frScaling =
        makeFrame(frPreferences, QStringLiteral("frScaling"), QStringLiteral("Window Scaling"),
                  {kRightColumn, 5580, kColumnWidth, 810});
    slScaling = new QSlider(Qt::Horizontal, frScaling);
    slScaling->setObjectName(QStringLiteral("slScaling"));
    slScaling->setAccessibleName(QStringLiteral("Window Scaling"));
    slScaling->setRange(100, 200);
    slScaling->setPageStep(10);
    slScaling->setValue(153);
    put(slScaling, {240, 330, 4500, 330});
    txbScaling = makeText(frScaling, QStringLiteral("txbScaling"), QStringLiteral("153%"),
                          {4920, 345, 840, kRow}, QStringLiteral("Window Scaling"));
    txbScaling->setReadOnly(true);
    txbScaling->setAlignment(Qt::AlignCenter);
}

void frmMain::makeTimerGroup() {
    frRecalcTimer =
        makeFrame(frPreferences, QStringLiteral("frRecalcTimer"),
                  QStringLiteral("Process Timer (Reserved for Support. Do not modify.)"),
                  {kRightColumn, 6510, kColumnWidth, 780});
    chRecalcTimer = makeCheck(frRecalcTimer, QStringLiteral("chRecalcTimer"), QStringLiteral("Add"),
                              {240, 330, 780, kRow}, true);
    txbRecalcTimer =
        makeText(frRecalcTimer, QStringLiteral("txbRecalcTimer"), QStringLiteral("1000"),
                 {1080, 330, 720, kRow}, QStringLiteral("msec. to Process Timer"));
    lbRecalcTimer = makeLabel(frRecalcTimer, QStringLiteral("lbRecalcTimer"),
                              QStringLiteral("msec. to Process Timer"), {1890, 330, 3900, kRow});
    chRecalcTimer->setEnabled(false);
    txbRecalcTimer->setEnabled(false);
}

void frmMain::makePageButtons() {
    const auto button = [this](const char* name, const char* caption, double left) {
        return makeButton(frPreferences, QLatin1String(name), QLatin1String(caption),
                          {left, 7920, 1380, 405});
    };
    cbPreferencesSave = button("cbPreferencesSave", "Save", 8040);
    cbPreferencesIgnore = button("cbPreferencesIgnore", "Ignore", 9570);
    cbPreferencesLoad = button("cbPreferencesLoad", "Load", 11100);
}

}  // namespace tarnwick::forms
