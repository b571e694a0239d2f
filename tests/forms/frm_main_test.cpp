#include "forms/frm_main.h"

#include <QAccessible>

#include "forms/form_checks.h"
#include "forms/frm_frame.h"
#include "forms/scaling.h"
#include "forms/texts.h"

namespace tarnwick::forms {
namespace {

TEST(MainForm, WorkAreaIsAsGiven) {
    const frmMain form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Tarnwick"));
    expectControls(form, R"(
frTarnwick|-Picture1|-pbWAVFormBuilding|lbStatus=Status: Idle|frAction|~cbZoomSelection|cbZoomIn|
cbZoomOut|cbZoomFull|~cbUndo|LabelSelectionBegin=00:00:00.000|LabelSelectionEnd=00:00:00.000|
LabelSelectionDuration=00:00:00.000|LabelTotalDuration=00:00:00.000|Label34=From |Label18=To |
Label36=Selection |Label37=Audio |-Frame4|Label3|Label4|Label5|Label6|LabelRangeBegin=00:00:00.000|
LabelRangeEnd=00:00:00.000|LabelRangeDuration=00:00:00.000|~CommandPlay|~CommandPause|~CommandStop|
-~CommandPlaySelection|~cbDeleteSelection|~cbFlattenSelection|cbInsertSilence=  Insert Silence|
txbInsertSilence=|Label41=Names |txbNberFileNames=|Label42=Audio |txbNberAudioFiles=|
Label32=Duration  |~txbSilence=1500|Label33= msec.|Label10=Threshold  |~txbThreshold=-35|
Label13= dB|Label38=Words/min  |~txbSpeed=150|Label16=Variance  |~txbVariance=50|-txbSilencePerc=|
-txbSilenceThreshold=|~cbProcess|-txbCalculating=Calculating...|-txbContent=|~cbContent|
-frLoadFiles=Loading Script File...|lbImporting=Importing Script File...|Label28|txbAudio=|Label29|
txbScript=|-frExportFiles=Exporting Individual Files...|lbExporting=Exporting Individual Files...|
slWAVFormScale|frLocations|frTransport|frEdit|frFiles|frSpecs|lvAudioDetails|pbLoadingScript|
pbExporting)");
    const std::pair<const QWidget*, const char*> toolTips[] = {
        {form.cbZoomSelection, "Zoom to Selection"},
        {form.cbZoomFull, "Show Complete File"},
        {form.cbUndo, "Undo Last Edit"},
        {form.cbDeleteSelection, "Delete Selection From File"},
        {form.cbFlattenSelection, "Bring Selection Level to Zero"},
        {form.cbInsertSilence, "Insert Silence At Cursor Location (ms)"}};
    for (const auto& [control, text] : toolTips)
        EXPECT_EQ(control->toolTip(), QLatin1String(text));
    EXPECT_EQ(form.slWAVFormScale->minimum(), 50);
    EXPECT_EQ(form.slWAVFormScale->maximum(), 500);
    EXPECT_EQ(form.pbLoadingScript->maximum(), 100);
}

TEST(MainForm, PreferencesAreAsGiven) {
    const frmMain form;
    expectControls(form, R"(
-frPreferences|OpScriptFormat(0)|*OpScriptFormat(1)|*opRowEach(0)|-opRowEach(1)|frExcelSpecific|
*chIgnoreFirstRow=Ignore First Row (Header)|chPromptSheet= Prompt for Sheet to Import|
chImportSpecifiedRows= Only Import Rows|txbImportStartRow=101|Label43|txbImportEndRow=195|Frame10|
opSourceFileFormat(0)=.wav|*opSourceFileFormat(1)=.mp3|opSourceFileFormat(2)=.aiff|
opSourceFileFormat(3)|lbSpecs|cbxFrequency=32000|cbxBits=8|cbxChannels=1|lbBitRate|cbxBitRate=96|
*chBUSource= Backup Source File Automatically When Edited|Frame8|opPlayfromlistview(0)|
*opPlayfromlistview(1)=Play only when mouse down|
Text2=Use CTRL-M to alternate without opening the Preferences window.|frNaming|
*opAutoNaming(0)=Use File Names in first column of Script file|
opAutoNaming(1)=Let Tarnwick create File Names based on scheme below:|~frAutoNumber|
~lbPrefix=Prefix (If Any)|~txbPrefix=ACME_|~lbStart|~txbStarting=1000|~lbIncr|~txbIncrement=5|
~lbSuffix=Suffix (If Any)|~txbSuffix=|
~lbPreview=Preview of the first 3 file names which will be created:|~txbPreview(0)=|
~txbPreview(2)=|-~txbFormat=|Frame7|*chAddPading|txbPading=50 |
Label35=msec. to Head and Tail of Exported Files|frScaling|txbScaling=153%|
frRecalcTimer=Process Timer (Reserved for Support. Do not modify.)|~*chRecalcTimer|
~txbRecalcTimer=1000|lbRecalcTimer=msec. to Process Timer|cbPreferencesSave|cbPreferencesIgnore|
cbPreferencesLoad)");
    EXPECT_EQ(form.slScaling->minimum(), 100);
    EXPECT_EQ(form.slScaling->maximum(), 200);
    EXPECT_EQ(form.cbxFrequency->count(), 8);
    EXPECT_EQ(form.cbxBitRate->itemText(7), QStringLiteral("320"));
    form.cbxBits->setEditText(QStringLiteral("20"));  // a stored value that is not in the list
    EXPECT_EQ(form.cbxBits->currentText(), QStringLiteral("20"));
    EXPECT_EQ(form.cbxBits->count(), 4);
}

TEST(MainForm, MenusAndTimersAreAsGiven) {
    const frmMain form;
    const char* items = R"(
mnuFile/mnuLoadFiles/Load Working Files.../Ctrl+L|
~mnuFile/mnuBackupSourceFile/Backup Source File/Ctrl+S|
~mnuFile/mnuExport/Export Individual Audio Files/Ctrl+E|mnuFile/mnuQuit/Quit/|
mnuWindows/mnuBatchProcessor/Batch Processor/Ctrl+B|
mnuWindows/mnuRenameWizard/Rename Wizard/Ctrl+R|
~mnuWindows/mnuProjectFolder/Open Project Folder/Ctrl+P|
mnuWindows/mnuPreferences/Preferences/Ctrl+F2|
mnuTools/mnuPlayfromListView/Play Continuously on Mouse Click/Ctrl+M|mnuTools/mnuZoomIn/Zoom In/F1|
mnuTools/mnuZoomOut/Zoom Out/F2|mnuTools/mnuUndo/Undo/Ctrl+Z|mnuHelp/mnuHelpAbout/About.../|
mnuHelp/mnuManual/Manual/|mnuHelp/mnuHistory/Change History/|
mnuTutorials/mnuTutorialPresentation/Tarnwick Presentation/|
mnuTutorials/mnuTutorialBP/Batch Processing/|
mnuTutorials/mnuTutorialBasicScriptFormatting/Script Formatting/)";
    for (QString item : QString::fromUtf8(items).remove(u'\n').split(u'|')) {
        const bool enabled = !item.startsWith(u'~');
        const QStringList parts = item.remove(u'~').split(u'/');  // menu, name, caption, shortcut
        const auto* menu = form.findChild<QMenu*>(parts[0]);
        ASSERT_TRUE(menu) << item.toStdString();
        auto* action = menu->findChild<QAction*>(parts[1], Qt::FindDirectChildrenOnly);
        ASSERT_TRUE(action && menu->actions().contains(action)) << item.toStdString();
        EXPECT_EQ(action->text(), parts[2]);
        EXPECT_EQ(action->shortcut().toString(), parts[3]);
        EXPECT_EQ(action->isEnabled(), enabled) << item.toStdString();
    }
    for (const char* name :
         {"TimerMenuEnabler", "TimerReload", "TimerDisplayWaveform", "TimerPlaybackPos",
          "EDTTimerSilencePosDetectionDone", "EDTTimerSoundExportDone"}) {
        const auto* timer = form.findChild<QTimer*>(QLatin1String(name));
        ASSERT_TRUE(timer) << name;
        EXPECT_TRUE(timer->interval() == 100 && !timer->isActive()) << name;
    }
}

TEST(MainForm, EveryControlHasAnAccessibleName) {
    const frmMain form;
    const auto nameOf = [](QWidget* control) {
        return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
    };
    QStringList seen;
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const QString object = control->objectName();
        if (object.isEmpty() || object.startsWith(QLatin1String("qt_")) || control->isWindow() ||
            control == form.Picture1 || control == form.frTarnwick || !isControl(control))
            continue;
        EXPECT_FALSE(seen.contains(object) || nameOf(control).isEmpty()) << object.toStdString();
        seen << object;
        if (control->inherits("QAbstractButton") || control->inherits("QLabel")) {
            EXPECT_EQ(nameOf(control), announced(control->property("text").toString()));
        }
    }
    EXPECT_EQ(nameOf(form.txbSilence), QStringLiteral("Duration"));
    EXPECT_EQ(nameOf(form.lvAudioDetails), QStringLiteral("Prompts"));
    setCaption(form.CommandPause, QStringLiteral("Resume"));
    EXPECT_EQ(nameOf(form.CommandPause), QStringLiteral("Resume"));
}

}  // namespace
}  // namespace tarnwick::forms
