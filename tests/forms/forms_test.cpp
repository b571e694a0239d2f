#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

#include "forms/colours.h"
#include "forms/form_checks.h"
#include "forms/frm_about.h"
#include "forms/frm_batch_processor.h"
#include "forms/frm_frame.h"
#include "forms/frm_main.h"
#include "forms/frm_rename_wiz.h"
#include "forms/frm_select_import_sheet.h"
#include "forms/name_list.h"
#include "forms/scaling.h"
#include "forms/texts.h"
#include "forms/units.h"
#include "runtime/product.h"
#include "support/text_table.h"

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
    const char* const toolTips = R"(
cbZoomSelection|Zoom to Selection|cbZoomFull|Show Complete File|cbUndo|Undo Last Edit|
cbDeleteSelection|Delete Selection From File|cbFlattenSelection|Bring Selection Level to Zero|
cbInsertSilence|Insert Silence At Cursor Location (ms))";
    for (const QStringList& row : test::rowsOf(toolTips, 2))
        EXPECT_EQ(form.findChild<QWidget*>(row[0])->toolTip(), row[1]);
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

TEST(BatchForm, ControlsAreAsGiven) {
    const frmBatchProcessor form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("Convert and Resample Recorded WAV Files"));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form, R"(
txbFileToConvert=|cbProcess|-txbDelay=0|-Label19=Forced delay (msec) between steps |lbConversion|
Label15=Selected Steps:|~lbHissFilter|~lbResample|chCutEnd|txbCutStart=50|txbCutEnd=300|
txbSetSilenceStart=500|Label8=msec. and at END of file to |txbSilencedB=-26|Label1=dB  or|
txbSilencePerc=5.0|-txbSilenceThreshold=0|
Label14=(Note: Anything under the Threshold is considered Silence.)|txbNormdB=0.0|Label13=dB  or |
txbNormPerc=100.0|~chHissFilter|~cbRecordBackgroundNoise|frOutputSpecs|-~*chConvert|
frResampleSettings|*opFormat(0)|opFormat(3)|*opFrequency(5)|*opRate(2)|*opChannel(1)|
-frKbps=Constant Bit Rate (kbps)|cbxOutputCBR=cbxOutputCBR|-frACMCodecs|
Label6=Audio Encoder  (Codec)|-cbRefresh|
lbTitle=Apply Filter(s) to File Currently in the Editor Window|frLame=Lame Encoder Not Detected!|
*opBPMode(0)|opBPMode(1))");
    EXPECT_TRUE(form.lbConversion->font().bold());
    EXPECT_TRUE(form.cbxOutputCBR->isEditable());
    EXPECT_FALSE(form.cbxCodecs->isEditable());
    const auto timers = form.findChildren<QTimer*>();
    EXPECT_EQ(timers.size(), 7);
    for (const QTimer* timer : timers)
        EXPECT_TRUE(timer->interval() == 100 && !timer->isActive() &&
                    !timer->objectName().isEmpty());
}

TEST(BatchForm, EachOptionArrayIsASeparateGroup) {
    const frmBatchProcessor form;
    const auto on = [](const auto& options) {
        QList<std::ptrdiff_t> indices;
        for (auto option = options.begin(); option != options.end(); ++option)
            if ((*option)->isChecked()) indices << option - options.begin();
        return indices;
    };
    for (const std::size_t index : {5, 5, 0, 3}) {
        form.opFrequency[index]->click();
        EXPECT_EQ(on(form.opFrequency), QList<std::ptrdiff_t>{std::ptrdiff_t(index)});
        EXPECT_EQ(on(form.opRate), QList<std::ptrdiff_t>{2});
        EXPECT_EQ(on(form.opChannel), QList<std::ptrdiff_t>{1});
    }
}

TEST(BatchForm, NothingIsClippedInAnyOfItsArrangements) {
    frmBatchProcessor form;
    expectTidy(form);
    form.frRate->hide();
    form.frKbps->show();
    form.cbClose->move(form.cbClose->x(), px(frmBatchProcessor::kCloseTopAfterRun));
    expectTidy(form);
    form.frResampleSettings->hide();
    form.frACMCodecs->show();
    expectTidy(form);
    EXPECT_TRUE(form.rect().contains(rectOf(frmBatchProcessor::kTraceShown)));
    for (const QWidget* parked : std::initializer_list<QWidget*>{
             form.lbTitle, form.frLame, form.cbRefresh, form.Label5, form.txbRawFiles,
             form.txbBackupFiles, form.txbFileName, form.opBPMode[0], form.opBPMode[1]})
        EXPECT_FALSE(form.rect().intersects(parked->geometry()))
            << parked->objectName().toStdString();
}

// The controls that the Tab key reaches, in order.
QStringList tabStops(const QWidget& form) {
    QStringList names;
    for (const QWidget* next = form.nextInFocusChain(); next != &form;
         next = next->nextInFocusChain())
        if (next->isVisibleTo(&form) && next->isEnabledTo(&form) && isControl(next) &&
            (next->focusPolicy() & Qt::TabFocus) && !next->objectName().startsWith(u"qt_"))
            names << next->objectName();
    return names;
}

TEST(BatchForm, TheTabKeyFollowsTheWorkAndStopsOnceInEachOptionGroup) {
    frmBatchProcessor form;
    form.opRate[4]->setChecked(true);
    EXPECT_EQ(tabStops(form).join(u' ').toStdString(),
              "txbProjectFolder cbBrowse txbProjectFiles chCutEnd txbCutStart txbCutEnd "
              "chSilenceEnds txbSetSilenceStart txbSetSilenceEnd txbSilencedB txbSilencePerc "
              "chNormalize txbNormdB txbNormPerc opFormat(0) opFrequency(5) opRate(4) "
              "opChannel(1) txbFileToConvert cbProcess cbClose");
    form.opFrequency[7]->setChecked(true);
    EXPECT_TRUE(tabStops(form).contains(u"opFrequency(7)"));
    form.opFrequency[7]->hide();
    EXPECT_TRUE(tabStops(form).contains(u"opFrequency(0)")) << "the selected one is hidden";
    form.opFrequency[7]->show();
    EXPECT_FALSE(tabStops(form).contains(u"opFrequency(0)"));
}

TEST(BatchForm, ColoursFollowTheWindowAndLongNamesCanBeRead) {
    frmBatchProcessor form;
    const auto green = [&] { return form.lbConversion->palette().color(QPalette::WindowText); };
    QPalette dark;
    dark.setColor(QPalette::Window, Qt::black);
    dark.setColor(QPalette::WindowText, Qt::white);
    form.setPalette(dark);
    EXPECT_EQ(green(), frmBatchProcessor::progressColour(dark));
    form.setPalette(QPalette(Qt::lightGray));
    EXPECT_EQ(green(), QColor(0, 128, 0));
    for (QLineEdit* box : {form.txbProjectFolder, form.txbFileToConvert}) {
        box->setText(QStringLiteral("take ").repeated(50) + QStringLiteral("<b>7.wav"));
        EXPECT_TRUE(box->toolTip().endsWith(QStringLiteral("7.wav")))
            << box->objectName().toStdString();
        EXPECT_FALSE(box->toolTip().contains(u"<b>"));
        EXPECT_EQ(box->cursorPosition(), box->text().size());
    }
}

TEST(RenameForm, ControlsAreAsGiven) {
    const frmRenameWiz form;
    EXPECT_EQ(form.windowTitle(), QStringLiteral("RenameWiz "));
    EXPECT_EQ(form.size(), QSize(917, 683));
    expectControls(form, R"(
txbFileExtFilter=*.*|cbAdd=     Add       >>>|cbAddAll=Add All >>>>>>|cbRemove|cbRemoveAll|
cbFlip=  Flip Horizontal|cbClear|cbRenamePerList=  Rename  Per List|
chIncrNumberPrefix=Incr. Number (1_)|chIncrNumberSuffix=Incr. Number (_1)|
chIncrLetterSuffix=Incr. Letter (_A)|txbStartingAt=1|-cbCancel|-cbRename|txbDateModified=|
-cbReDateCancel|-cbReDate|~Command1|~Command6)");
    EXPECT_FALSE(form.rect().intersects(form.Filelb->geometry()));
}

TEST(RenameForm, NothingIsClippedInEitherArrangementNorDuringAPreview) {
    frmRenameWiz form;
    expectTidy(form);
    EXPECT_EQ(form.lbxSelectedFiles->geometry(), QRect(480, 48, 209, 524));
    form.arrange(frmRenameWiz::kOneAboveTheOther);
    EXPECT_EQ(form.lbxSelectedFiles->geometry(), QRect(192, 344, 497, 238));
    form.cbPreview->hide();
    form.cbReDatePreview->hide();
    for (QPushButton* button : {form.cbCancel, form.cbRename, form.cbReDateCancel, form.cbReDate})
        button->show();
    expectTidy(form);
}

TEST(SmallForms, AboutAndSheetChoiceAreSeparateWindows) {
    QWidget owner;
    const frmAbout about(&owner);
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Tarnwick"));
    EXPECT_EQ(about.geometry(), QRect(133, 133, 488, 259));
    expectControls(about, R"(
Label1|lbVersion=>>>Change in Sub_Main|Label2)");
    EXPECT_EQ(about.Label2->text(), QString::fromUtf16(runtime::product::kSupportAddress));

    const frmSelectImportSheet choice(&owner);
    EXPECT_EQ(choice.windowTitle(), QStringLiteral("Select Worksheet to Import"));
    expectControls(choice, R"(
cbxSheetNames=|cbSelectSheet)");
    EXPECT_TRUE(choice.cbxSheetNames->isEditable());
    for (const QWidget* form : std::initializer_list<const QWidget*>{&about, &choice}) {
        expectTidy(*form);
        EXPECT_TRUE(form->isWindow());
        EXPECT_FALSE(form->isModal());
    }
}

struct Names : ::testing::Test {
    NameList list{nullptr};

    void highlight(const QList<int>& rows) {
        for (const int row : rows)
            list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    }
};

TEST_F(Names, StaySortedAndKeepTheHighlight) {
    list.setNames({u"b.wav"_qs, u"C.wav"_qs, u"A.wav"_qs, u"c.wav"_qs, u"b.wav"_qs});
    EXPECT_EQ(list.names().join(u' '), u"A.wav b.wav b.wav C.wav c.wav");
    highlight({0, 2, 4});
    list.add({u"aa.wav"_qs, u"B.wav"_qs, u"d.wav"_qs});
    EXPECT_EQ(list.names().join(u' '), u"A.wav aa.wav B.wav b.wav b.wav C.wav c.wav d.wav");
    EXPECT_EQ(list.takeHighlighted().join(u' '), u"A.wav b.wav c.wav");
    EXPECT_EQ(list.names().join(u' '), u"aa.wav B.wav b.wav C.wav d.wav");
    EXPECT_TRUE(list.takeHighlighted().isEmpty());
    EXPECT_EQ(list.takeAll().size(), 5);
    EXPECT_EQ(list.count(), 0);
    list.setNames({u"A.wav"_qs, u"b.wav"_qs});
    const QPoint at = list.visualRect(list.model()->index(1, 0)).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, list.viewport()->mapToGlobal(at), Qt::LeftButton,
                          Qt::LeftButton, Qt::ControlModifier);
        QApplication::sendEvent(list.viewport(), &event);
    }
    EXPECT_TRUE(list.takeHighlighted().isEmpty()) << "selected, then deselected";
}

TEST_F(Names, MarksFollowTheirNamesAndAreReadableInLightAndDark) {
    list.setNames({u"a.wav"_qs, u"b.wav"_qs});
    list.resize(200, 100);
    const auto marked = [&] {
        QStringList marks;
        for (int row = 0; row < list.count(); ++row)
            for (const int role : {Qt::ToolTipRole, Qt::AccessibleDescriptionRole})
                marks << list.model()->index(row, 0).data(role).toString();
        return marks.join(u'|');
    };
    const auto picture = [&] { return list.grab().toImage(); };
    list.mark({{u"b.wav"_qs, u"taken"_qs}});
    EXPECT_EQ(marked(), u"||taken|taken");
    list.add({u"aa.wav"_qs});
    EXPECT_EQ(marked(), u"||||taken|taken");
    for (const QColor& ground : {QColor(Qt::white), QColor(30, 30, 30)}) {
        QPalette palette;
        palette.setColor(QPalette::Base, ground);
        list.setPalette(palette);
        const QColor text = readableOn(ground, Qt::red);
        EXPECT_EQ(text == QColor(Qt::red), ground == Qt::white);
        const QRect row = list.visualRect(list.model()->index(2, 0));
        const QImage image = picture();
        int red = 0;
        for (int x = row.left() + row.height() + 6; x < row.right(); ++x)
            for (int y = row.top(); y <= row.bottom(); ++y)
                red += image.pixelColor(x, y) == text;
        EXPECT_GT(red, 0) << "right of the sign";
        highlight({2});
        const QImage selected = picture();
        list.mark({});
        EXPECT_NE(picture(), selected) << "the sign stays on a selected entry";
        list.mark({{u"b.wav"_qs, u"taken"_qs}});
        list.clearSelection();
    }
    list.setNames({u"b.wav"_qs});
    EXPECT_EQ(marked(), u"|");
}

TEST_F(Names, DoNotScrollWhenOthersAreAddedOrTaken) {
    QStringList names;
    for (int i = 0; i < 500; ++i)
        names << u"take%1.wav"_qs.arg(i, 3, 10, QChar(u'0'));
    list.resize(200, 300);
    list.show();
    list.setNames(names);
    const auto scrolled = [&] {
        QApplication::processEvents();
        return list.verticalScrollBar()->value();
    };
    EXPECT_EQ(scrolled(), 0);
    list.verticalScrollBar()->setValue(200);
    list.add({u"b.wav"_qs});
    EXPECT_EQ(scrolled(), 200);
    highlight({200});
    list.takeHighlighted();
    EXPECT_EQ(scrolled(), 200);
    list.setNames(names);
    EXPECT_EQ(scrolled(), 0);
}

}  // namespace
}  // namespace tarnwick::forms
