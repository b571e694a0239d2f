#include "forms/frm_main.h"

#include <QAccessible>

#include "forms/form_checks.h"
#include "forms/frm_frame.h"
#include "forms/scaling.h"

namespace tarnwick::forms {
namespace {

TEST(MainForm, WorkAreaIsAsGiven) {
    const frmMain form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Tarnwick"));
    const char* kZero = "00:00:00.000";
    expectControls(form, {{"frTarnwick", ""},
                          {"Picture1", "", kHidden},
                          {"pbWAVFormBuilding", "0%", kHidden},
                          {"lbStatus", "Status: Idle"},
                          {"frAction", ""},
                          {"cbZoomSelection", "Zoom Selection", kDisabled},
                          {"cbZoomIn", "Zoom In"},
                          {"cbZoomOut", "Zoom Out"},
                          {"cbZoomFull", "Zoom Full"},
                          {"cbUndo", "Undo", kDisabled},
                          {"LabelSelectionBegin", kZero},
                          {"LabelSelectionEnd", kZero},
                          {"LabelSelectionDuration", kZero},
                          {"LabelTotalDuration", kZero},
                          {"Label34", "From "},
                          {"Label18", "To "},
                          {"Label36", "Selection "},
                          {"Label37", "Audio "},
                          {"Frame4", "Positions", kHidden},
                          {"Label3", "Visible range"},
                          {"Label4", "Begin"},
                          {"Label5", "End"},
                          {"Label6", "Duration"},
                          {"LabelRangeBegin", kZero},
                          {"LabelRangeEnd", kZero},
                          {"LabelRangeDuration", kZero},
                          {"CommandPlay", "Play", kDisabled},
                          {"CommandPause", "Pause", kDisabled},
                          {"CommandStop", "Stop", kDisabled},
                          {"CommandPlaySelection", "Play selection", kHiddenAndDisabled},
                          {"cbDeleteSelection", "Delete Selection", kDisabled},
                          {"cbFlattenSelection", "Flatten Selection", kDisabled},
                          {"cbInsertSilence", "  Insert Silence"},
                          {"txbInsertSilence", ""},
                          {"Label41", "Names "},
                          {"txbNberFileNames", ""},
                          {"Label42", "Audio "},
                          {"txbNberAudioFiles", ""},
                          {"Label32", "Duration  "},
                          {"txbSilence", "1500", kDisabled},
                          {"Label33", " msec."},
                          {"Label10", "Threshold  "},
                          {"txbThreshold", "-35", kDisabled},
                          {"Label13", " dB"},
                          {"Label38", "Words/min  "},
                          {"txbSpeed", "150", kDisabled},
                          {"Label16", "Variance  "},
                          {"txbVariance", "50", kDisabled},
                          {"txbSilencePerc", "", kHidden},
                          {"txbSilenceThreshold", "", kHidden},
                          {"cbProcess", "Process", kDisabled},
                          {"txbCalculating", "Calculating...", kHidden},
                          {"txbContent", "", kHidden},
                          {"cbContent", "Expand Content", kDisabled},
                          {"frLoadFiles", "Loading Script File...", kHidden},
                          {"lbImporting", "Importing Script File..."},
                          {"Label28", "Audio"},
                          {"txbAudio", ""},
                          {"Label29", "File Names"},
                          {"txbScript", ""},
                          {"frExportFiles", "Exporting Individual Files...", kHidden},
                          {"lbExporting", "Exporting Individual Files..."}});
    for (const char* name : {"slWAVFormScale", "frLocations", "frTransport", "frEdit", "frFiles",
                             "frSpecs", "lvAudioDetails", "pbLoadingScript", "pbExporting"}) {
        EXPECT_TRUE(form.findChild<QWidget*>(QLatin1String(name))) << name;
    }
    EXPECT_EQ(form.cbZoomSelection->toolTip(), QStringLiteral("Zoom to Selection"));
    EXPECT_EQ(form.cbZoomFull->toolTip(), QStringLiteral("Show Complete File"));
    EXPECT_EQ(form.cbUndo->toolTip(), QStringLiteral("Undo Last Edit"));
    EXPECT_EQ(form.cbDeleteSelection->toolTip(), QStringLiteral("Delete Selection From File"));
    EXPECT_EQ(form.cbFlattenSelection->toolTip(), QStringLiteral("Bring Selection Level to Zero"));
    EXPECT_EQ(form.cbInsertSilence->toolTip(),
              QStringLiteral("Insert Silence At Cursor Location (ms)"));
    EXPECT_EQ(form.slWAVFormScale->minimum(), 50);
    EXPECT_EQ(form.slWAVFormScale->maximum(), 500);
    EXPECT_EQ(form.pbLoadingScript->maximum(), 100);
}

TEST(MainForm, PreferencesAreAsGiven) {
    const frmMain form;
    expectControls(
        form, {{"frPreferences", "", kHidden},
               {"OpScriptFormat(0)", "Script in Word"},
               {"OpScriptFormat(1)", "Script in Excel", kShown, true},
               {"opRowEach(0)", "One Prompt per Row", kShown, true},
               {"opRowEach(1)", "Prompt Over Several Rows", kHidden},
               {"frExcelSpecific", ""},
               {"chIgnoreFirstRow", "Ignore First Row (Header)", kShown, true},
               {"chPromptSheet", " Prompt for Sheet to Import"},
               {"chImportSpecifiedRows", " Only Import Rows"},
               {"txbImportStartRow", "101"},
               {"Label43", "to"},
               {"txbImportEndRow", "195"},
               {"Frame10", "Source File Format"},
               {"opSourceFileFormat(0)", ".wav"},
               {"opSourceFileFormat(1)", ".mp3", kShown, true},
               {"opSourceFileFormat(2)", ".aiff"},
               {"opSourceFileFormat(3)", "Any"},
               {"lbSpecs", "File specs"},
               {"cbxFrequency", "32000"},
               {"cbxBits", "8"},
               {"cbxChannels", "1"},
               {"lbBitRate", "Bit Rate"},
               {"cbxBitRate", "96"},
               {"chBUSource", " Backup Source File Automatically When Edited", kShown, true},
               {"Frame8", "Play Individual Files"},
               {"opPlayfromlistview(0)", "Play continuously once clicked"},
               {"opPlayfromlistview(1)", "Play only when mouse down", kShown, true},
               {"Text2", "Use CTRL-M to alternate without opening the Preferences window."},
               {"frNaming", "File Naming"},
               {"opAutoNaming(0)", "Use File Names in first column of Script file", kShown, true},
               {"opAutoNaming(1)", "Let Tarnwick create File Names based on scheme below:"},
               {"frAutoNumber", "", kDisabled},
               {"lbPrefix", "Prefix (If Any)", kDisabled},
               {"txbPrefix", "ACME_", kDisabled},
               {"lbStart", "Start at", kDisabled},
               {"txbStarting", "1000", kDisabled},
               {"lbIncr", "Increment", kDisabled},
               {"txbIncrement", "5", kDisabled},
               {"lbSuffix", "Suffix (If Any)", kDisabled},
               {"txbSuffix", "", kDisabled},
               {"lbPreview", "Preview of the first 3 file names which will be created:", kDisabled},
               {"txbPreview(0)", "", kDisabled},
               {"txbPreview(2)", "", kDisabled},
               {"txbFormat", "", kHiddenAndDisabled},
               {"Frame7", "Exported Files"},
               {"chAddPading", "Add", kShown, true},
               {"txbPading", "50 "},
               {"Label35", "msec. to Head and Tail of Exported Files"},
               {"frScaling", "Window Scaling"},
               {"txbScaling", "153%"},
               {"frRecalcTimer", "Process Timer (Reserved for Support. Do not modify.)"},
               {"chRecalcTimer", "Add", kDisabled, true},
               {"txbRecalcTimer", "1000", kDisabled},
               {"lbRecalcTimer", "msec. to Process Timer"},
               {"cbPreferencesSave", "Save"},
               {"cbPreferencesIgnore", "Ignore"},
               {"cbPreferencesLoad", "Load"}});
    EXPECT_EQ(form.slScaling->minimum(), 100);
    EXPECT_EQ(form.slScaling->maximum(), 200);
    EXPECT_EQ(form.cbxFrequency->count(), 8);
    EXPECT_EQ(form.cbxBitRate->itemText(7), QStringLiteral("320"));
    form.cbxBits->setEditText(QStringLiteral("20"));  // stored, though not in the list
    EXPECT_EQ(form.cbxBits->currentText(), QStringLiteral("20"));
    EXPECT_EQ(form.cbxBits->count(), 4);
}

TEST(MainForm, OptionsExcludeEachOtherWithinTheirArrayOnly) {
    const frmMain form;
    form.OpScriptFormat[0]->setChecked(true);
    EXPECT_FALSE(form.OpScriptFormat[1]->isChecked());
    EXPECT_TRUE(form.opRowEach[0]->isChecked());
    EXPECT_EQ(form.opSourceFileFormatGroup->checkedId(), 1);
}

TEST(MainForm, MenusAndTimersAreAsGiven) {
    const frmMain form;
    struct Item {
        const char *menu, *name, *caption, *shortcut;
        bool enabled = true;
    };
    for (const Item& item : std::initializer_list<Item>{
             {"mnuFile", "mnuLoadFiles", "Load Working Files...", "Ctrl+L"},
             {"mnuFile", "mnuBackupSourceFile", "Backup Source File", "Ctrl+S", false},
             {"mnuFile", "mnuExport", "Export Individual Audio Files", "Ctrl+E", false},
             {"mnuFile", "mnuQuit", "Quit", ""},
             {"mnuWindows", "mnuBatchProcessor", "Batch Processor", "Ctrl+B"},
             {"mnuWindows", "mnuRenameWizard", "Rename Wizard", "Ctrl+R"},
             {"mnuWindows", "mnuProjectFolder", "Open Project Folder", "Ctrl+P", false},
             {"mnuWindows", "mnuPreferences", "Preferences", "Ctrl+F2"},
             {"mnuTools", "mnuPlayfromListView", "Play Continuously on Mouse Click", "Ctrl+M"},
             {"mnuTools", "mnuZoomIn", "Zoom In", "F1"},
             {"mnuTools", "mnuZoomOut", "Zoom Out", "F2"},
             {"mnuTools", "mnuUndo", "Undo", "Ctrl+Z"},
             {"mnuHelp", "mnuHelpAbout", "About...", ""},
             {"mnuHelp", "mnuManual", "Manual", ""},
             {"mnuHelp", "mnuHistory", "Change History", ""},
             {"mnuTutorials", "mnuTutorialPresentation", "Tarnwick Presentation", ""},
             {"mnuTutorials", "mnuTutorialBP", "Batch Processing", ""},
             {"mnuTutorials", "mnuTutorialBasicScriptFormatting", "Script Formatting", ""}}) {
        const auto* menu = form.findChild<QMenu*>(QLatin1String(item.menu));
        ASSERT_TRUE(menu) << item.menu;
        auto* action =
            menu->findChild<QAction*>(QLatin1String(item.name), Qt::FindDirectChildrenOnly);
        ASSERT_TRUE(action) << item.name;
        EXPECT_TRUE(menu->actions().contains(action)) << item.name;
        EXPECT_EQ(action->text(), QLatin1String(item.caption));
        EXPECT_EQ(action->shortcut().toString(), QLatin1String(item.shortcut));
        EXPECT_EQ(action->isEnabled(), item.enabled) << item.name;
    }
    for (const char* name :
         {"TimerMenuEnabler", "TimerReload", "TimerDisplayWaveform", "TimerPlaybackPos",
          "EDTTimerSilencePosDetectionDone", "EDTTimerSoundExportDone"}) {
        const auto* timer = form.findChild<QTimer*>(QLatin1String(name));
        ASSERT_TRUE(timer) << name;
        EXPECT_EQ(timer->interval(), 100);
        EXPECT_FALSE(timer->isActive());
    }
}

TEST(MainForm, EveryControlAnnouncesItself) {
    const frmMain form;
    const auto nameOf = [](QWidget* control) {
        return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
    };
    QStringList seen;
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const QString object = control->objectName();
        if (object.isEmpty() || object.startsWith(QLatin1String("qt_")) || control->isWindow() ||
            control == form.Picture1 || control == form.frTarnwick || !isControl(control)) {
            continue;
        }
        EXPECT_FALSE(seen.contains(object)) << object.toStdString();
        seen << object;
        EXPECT_FALSE(nameOf(control).isEmpty()) << object.toStdString();
        if (qobject_cast<QAbstractButton*>(control) || qobject_cast<QLabel*>(control)) {
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
