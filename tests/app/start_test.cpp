#include <gtest/gtest.h>

#include <QShortcut>

#include "app/appearance.h"
#include "journey.h"
#include "runtime/product.h"
#include "support/text_table.h"
#include "widgets/waveform_colours.h"

using namespace tarnwick::app;
using namespace tarnwick;

namespace {

TEST(DarkPalette, EveryTextIsReadableOnItsBackground) {
    using enum QPalette::ColorRole;
    const QPalette palette = darkPalette();
    const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
        {WindowText, Window},    {Text, Base},          {Text, AlternateBase},
        {PlaceholderText, Base}, {ButtonText, Button},  {HighlightedText, Highlight},
        {Link, Window},          {LinkVisited, Window}, {ToolTipText, ToolTipBase}};
    for (const auto& [text, ground] : pairs) {
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            EXPECT_GE(widgets::contrast(palette.color(group, text), palette.color(group, ground)),
                      group == QPalette::Disabled ? 3.0 : 4.5)
                << text << " in group " << group;
    }
}

using Start = test::Journey;

TEST_F(Start, ShowsTheMainWindowAtItsScaleWithItsSettings) {
    application.Sub_Main();
    EXPECT_EQ(desk.log(), "09:05 07-Mar-2020\r\n09:05 Program launched\r\n");
    EXPECT_EQ(application.frame().windowTitle(), u"Tarnwick – Build 682");
    EXPECT_DOUBLE_EQ(state.vvScale, 1.53);
    EXPECT_EQ(state.viScaleAtLoad, 153);
    EXPECT_NEAR(form().Picture1->width(), 16638.75 / 15, 1);
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(form().txbThreshold->text(), u"-35");
    EXPECT_EQ(form().cbxChannels->currentText(), u"1");
    EXPECT_TRUE(form().opSourceFileFormat[1]->isChecked());
    EXPECT_TRUE(form().chBUSource->isChecked());
    EXPECT_FALSE(form().chRecalcTimer->isChecked());
    test::pass(250);
    EXPECT_FALSE(form().cbUndo->isEnabled() || form().cbZoomSelection->isEnabled());
    EXPECT_FALSE(database.isOpen());
    EXPECT_THROW(form().mnuQuit->trigger(), test::ProcessEnded);
}

TEST_F(Start, UnusualSettingsAreShownAsDefined) {
    execute(u"UPDATE Admin SET F7 = 2, F8 = 5, F11 = 1, F12 = 0 WHERE F1 = 18"_qs);
    execute(u"UPDATE Admin SET F2 = 0, F3 = NULL, F6 = '_x', F7 = 3 WHERE F1 = 19"_qs);
    application.Sub_Main();
    EXPECT_FALSE(form().chPromptSheet->isChecked() || form().chIgnoreFirstRow->isChecked());
    EXPECT_TRUE(form().OpScriptFormat[0]->isChecked());
    EXPECT_FALSE(form().txbImportStartRow->isEnabled());
    EXPECT_FALSE(form().opRowEach[0]->isChecked() || form().opRowEach[1]->isChecked());
    EXPECT_TRUE(form().frAutoNumber->isEnabled());
    EXPECT_EQ(form().txbPrefix->text(), u"");
    EXPECT_EQ(form().txbSuffix->text(), u"_x");
    EXPECT_TRUE(form().opSourceFileFormat[3]->isChecked());
    EXPECT_TRUE(form().cbxBitRate->isHidden());
}

TEST_F(Start, AMissingDatabaseEndsTheProgram) {
    QFile::remove(desk.databaseFile());
    EXPECT_THROW(application.Sub_Main(), test::ProcessEnded);
    EXPECT_EQ(desk.log().count("\r\n"), 4);
    EXPECT_TRUE(desk.log().endsWith("Program execution terminated - No database!\r\n"));
}

std::unique_ptr<engine::SoundEditor> noEditor() { throw runtime::Fault(u"no thread"_qs); }

TEST_F(Start, ASoundEngineThatCannotStartEndsTheProgramOrTheBatchProcessor) {
    services.createEDTX = noEditor;
    application.Sub_Main();
    EXPECT_THROW(form().mnuBatchProcessor->trigger(), test::ProcessEnded);
    EXPECT_TRUE(desk.log().contains(" frmBatchProcessor.Form_Load: no thread, Line 10\r\n"));
    QFile::remove(desk.folder.filePath(u"Error.log"_qs));
    services.createEDT = noEditor;
    app::Application fresh(services);
    EXPECT_THROW(desk.failure.unguarded([&] { fresh.Sub_Main(); }), test::ProcessEnded);
    EXPECT_EQ(boxes().last(), u"Tarnwick|no thread");
    EXPECT_EQ(desk.log(), "09:05 07-Mar-2020\r\n09:05 Program launched\r\n");
}

TEST_F(Start, AnUnusableDatabaseEndsInALogRecord) {
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[this] { execute(u"UPDATE Admin SET  F7 = 4 WHERE F1 = 19"_qs); },
         "frmMain.PreferencesLoad: Subscript out of range, Line 70"},
        {[this] { execute(u"UPDATE Admin SET  F9 = NULL WHERE F1 = 17"_qs); },
         "frmMain.PreferencesLoad: Invalid use of Null, Line 20"},
        {[this] { execute(u"DELETE FROM Admin WHERE F1 = 17"_qs); }, "frmMain.PreferencesLoad: "},
        {[this] { execute(u"DELETE FROM Admin WHERE F1 = 18"_qs); }, "frmFrame.MDIForm_Load: "},
        {[this] { test::writeFile(desk.databaseFile(), QByteArray(4096, 'x')); },
         "frmFrame.MDIForm_Load: "}};
    for (const auto& [spoil, label] : cases) {
        spoil();
        app::Application fresh(services);
        EXPECT_THROW(fresh.Sub_Main(), test::ProcessEnded);
        EXPECT_TRUE(desk.boxes.shown.last().startsWith(
            u"An error has occured in the program execution!|Error: "_qs + QLatin1String(label)));
        EXPECT_TRUE(desk.log().contains(label));
        EXPECT_TRUE(desk.log().endsWith(
            "09:05 Build 682\r\n09:05 Program terminated with error\r\n09:05 07-Mar-2020\r\n\r\n"));
    }
}

struct Page : test::Launched {
    QString stored(int row, int columns) {
        const settings::Access access(database, state.vsConnection);
        const auto record = database.Read(u"SELECT * FROM Admin WHERE F1 = %1"_qs.arg(row));
        QStringList texts;
        for (int i = 2; i < 2 + columns; ++i)
            texts << record.text(u"F%1"_qs.arg(i));
        return texts.join(u',');
    }
    bool open() { return form().frPreferences->isVisible() && form().frTarnwick->isHidden(); }
    void setEverything() {
        form().txbSilence->setText(u"700 ms"_qs);
        form().txbThreshold->setText(u"-40.5"_qs);
        form().txbSpeed->setText(u"abc"_qs);
        form().cbxFrequency->setEditText(u"12345"_qs);
        form().cbxBitRate->setEditText(u"320"_qs);
        form().txbImportStartRow->clear();
        for (QCheckBox* box : {form().chImportSpecifiedRows, form().chBUSource,
                               form().chPromptSheet, form().chIgnoreFirstRow})
            box->toggle();
        form().opPlayfromlistview[0]->setChecked(true);
        form().OpScriptFormat[0]->setChecked(true);
        form().slScaling->setValue(120);
        form().opAutoNaming[1]->setChecked(true);
        form().txbPrefix->setText(u" é\"_"_qs);
        form().txbIncrement->setText(u"-7"_qs);
        form().txbSuffix->setText(u"_s "_qs);
        form().opSourceFileFormat[2]->setChecked(true);
    }
};

TEST_F(Page, SettingsSurviveARestart) {
    application.frame().resize(1366, 690);
    form().mnuPreferences->trigger();
    EXPECT_TRUE(open());
    EXPECT_EQ(form().frPreferences->visibleRegion().boundingRect(), form().frPreferences->rect());
    setEverything();
    EXPECT_EQ(form().txbScaling->text(), u"120%");
    form().cbPreferencesSave->click();
    EXPECT_FALSE(open());
    EXPECT_EQ(stored(17, 8), u"700,-40.5,0,50,12345,8,1,320");
    EXPECT_EQ(stored(18, 12), u"1,0,195,0,1,1,0,0,1000,1,1,120");
    EXPECT_EQ(stored(19, 6), u"0, é\"_,1000,-7,_s ,2");
    form().cbPreferencesSave->click();
    EXPECT_EQ(boxes(), QStringList(u"The new scale will be effective next time Tarnwick is "
                                   u"launched."_qs))
        << "announced only once";
    EXPECT_DOUBLE_EQ(state.vvScale, 1.53);
    form().cbPreferencesIgnore->click();
    EXPECT_DOUBLE_EQ(state.vvScale, 1.20) << "new drawing uses the new scale";

    app::Application second(services);
    second.Sub_Main();
    forms::frmMain& again = second.mainForm();
    EXPECT_EQ(again.width(), 13750 * 1.2 / 15);
    EXPECT_EQ(again.txbSpeed->text(), u"0");
    EXPECT_EQ(again.cbxFrequency->currentText(), u"12345");
    EXPECT_TRUE(again.chImportSpecifiedRows->isChecked());
    EXPECT_FALSE(again.chImportSpecifiedRows->isEnabled());
    EXPECT_EQ(again.txbPreview[2]->text(), u" é\"_986_s .mp3");
}

TEST_F(Page, IgnoreAndLoadRestoreTheStoredSettings) {
    EXPECT_EQ(form().txbPreview[1]->text(), u"ACME_1005.mp3") << "loading counts as a change";
    setEverything();
    form().mnuPreferences->trigger();
    form().cbPreferencesLoad->click();
    EXPECT_TRUE(open());
    form().txbSilence->setText(u"9"_qs);
    form().cbPreferencesIgnore->click();
    EXPECT_FALSE(open());
    form().cbPreferencesSave->click();
    EXPECT_TRUE(boxes().isEmpty());
    EXPECT_EQ(stored(17, 8), u"1500,-35,150,50,32000,8,1,96");
    EXPECT_EQ(stored(18, 12), u"0,101,195,1,0,0,1,0,1000,0,1,153");
    EXPECT_EQ(stored(19, 6), u"1,ACME_,1000,5,,1");
}

TEST_F(Page, StoredValuesThatTickABox) {
    const auto columns = test::rowsOf(
        "F2|chImportSpecifiedRows|F5|chBUSource|F7|chPromptSheet|F8|chIgnoreFirstRow|"
        "F9|chRecalcTimer",
        2);
    // Each value in each column in turn: ticked or not; x: the load ends the program.
    const char* const cases = R"(
1|+++++|0.6|+++++|0.5|-----|1.4|++--+|1.5|-----|2|-----|32768|xx--x|3e9|xx--x|'1.4'|++--+|
-32769|xxxxx|NULL|xxxxx)";
    for (const QStringList& row : test::rowsOf(cases, 2)) {
        QString found;
        for (const QStringList& column : columns) {
            const auto store = [&](const QString& value) {
                execute(u"UPDATE Admin SET  %1 = %2 WHERE F1 = 18"_qs.arg(column[0], value));
            };
            store(row[0]);
            try {
                form().cbPreferencesLoad->click();
                found += form().findChild<QCheckBox*>(column[1])->isChecked() ? u'+' : u'-';
            } catch (const test::ProcessEnded&) {
                found += u'x';
            }
            store(u"1"_qs);
        }
        EXPECT_EQ(found, row[1]) << qPrintable(row[0]);
    }
}

TEST_F(Page, AnApostropheEndsTheProgramWithTwoRowsStored) {
    setEverything();
    form().txbPrefix->setText(u"O'Hara_"_qs);
    EXPECT_THROW(form().cbPreferencesSave->click(), test::ProcessEnded);
    EXPECT_TRUE(
        desk.log().contains("\r\n09:05 frmMain.cbSaveSetupData_Click: Syntax error in string "
                            "'O'Hara_'., Line 60\r\n09:05 Build 682\r\n"));
    EXPECT_EQ(stored(17, 2), u"700,-40.5");
    EXPECT_EQ(stored(18, 12), u"1,0,195,0,1,1,0,0,1000,1,1,120");
    EXPECT_EQ(stored(19, 6), u"1,ACME_,1000,5,,1");
}

TEST_F(Page, OptionsAndTheServiceCodeEnableTheirControls) {
    for (int i : {0, 1, 2, 1, 3}) {
        form().opSourceFileFormat[i]->setChecked(true);
        EXPECT_EQ(form().cbxBitRate->isHidden() && form().lbBitRate->isHidden(), i != 1) << i;
    }
    for (int i : {0, 1}) {
        form().OpScriptFormat[i]->click();
        for (const char* name : {"chIgnoreFirstRow", "chPromptSheet", "chImportSpecifiedRows",
                                 "txbImportStartRow", "txbImportEndRow"})
            EXPECT_EQ(form().findChild<QWidget*>(QLatin1String(name))->isEnabled(), i == 1) << name;
    }
    for (const auto& entry :
         std::initializer_list<std::optional<QString>>{{}, u""_qs, u"3172 "_qs, u"3172"_qs}) {
        form().mnuPreferences->trigger();
        EXPECT_FALSE(form().txbRecalcTimer->isEnabled()) << "locked again at each opening";
        desk.boxes.entry = entry;
        QMouseEvent twice(QEvent::MouseButtonDblClick, {5, 5}, {5, 5}, Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(form().lbRecalcTimer, &twice);
        EXPECT_EQ(boxes(), QStringList(u"Password:"_qs));
        EXPECT_EQ(form().txbRecalcTimer->isEnabled(), entry == u"3172");
        EXPECT_EQ(form().chRecalcTimer->isEnabled(), entry == u"3172");
    }
}

TEST_F(Page, HelpOpensOutsideDocuments) {
    const QString page = u"Tarnwick will now open your default browser."_qs;
    const QString video = u"Tarnwick will now open your default browser to access YouTube."_qs;
    const QString manual = desk.folder.filePath(u"Tarnwick_Manual.pdf"_qs);
    state.vsProjectFolder = session.path();
    form().mnuProjectFolder->setEnabled(true);
    const std::tuple<QAction*, QString, QString> items[] = {
        {form().mnuManual, u"No PDF!|The manual cannot be found."_qs, manual},
        {form().mnuHistory, page, QString::fromUtf16(runtime::product::kChangeHistory)},
        {form().mnuTutorialPresentation, video,
         QString::fromUtf16(runtime::product::kPresentation)},
        {form().mnuTutorialBP, video, QString::fromUtf16(runtime::product::kBatchProcessing)},
        {form().mnuTutorialBasicScriptFormatting, video,
         QString::fromUtf16(runtime::product::kScriptFormatting)},
        {form().mnuProjectFolder, {}, session.path()}};
    for (const auto& [item, notice, target] : items) {
        item->trigger();
        EXPECT_EQ(boxes().join(u'\n'), notice);
        EXPECT_EQ(opener.opened.takeLast(), target);
    }
    auto* about = find<QWidget>(u"frmAbout"_qs);
    for (int round = 0; round < 2; ++round) {
        form().mnuHelpAbout->trigger();
        EXPECT_EQ(QRect(about->pos(), about->size()), QRect(133, 133, 488, 259));
        EXPECT_EQ(about->findChild<QLabel*>(u"lbVersion"_qs)->text(), u"Build 682");
        about->move(7, 8);
        form().mnuHelpAbout->trigger();
        EXPECT_EQ(about->pos(), QPoint(7, 8)) << "an open box is only raised";
        about->close();
    }
}

TEST_F(Page, KeysOpenTheMenusAndEscapeLeaves) {
    const auto press = [](QWidget& owner, const QKeySequence& key) {
        int pressed = 0;
        for (QShortcut* shortcut : owner.findChildren<QShortcut*>(Qt::FindDirectChildrenOnly))
            if (shortcut->key() == key && ++pressed) Q_EMIT shortcut->activated();
        return pressed == 1;
    };
    for (const auto& [key, menu] : {std::pair{u"Alt+F"_qs, form().mnuFile},
                                    {u"Alt+W"_qs, form().mnuWindows},
                                    {u"Alt+T"_qs, form().mnuTools},
                                    {u"Alt+H"_qs, form().mnuHelp},
                                    {u"F10"_qs, form().mnuFile}}) {
        EXPECT_TRUE(press(*form().menuBar, QKeySequence(key)));
        EXPECT_TRUE(menu->isVisible()) << key.toStdString();
        menu->close();
    }
    form().mnuPreferences->trigger();
    EXPECT_TRUE(press(*form().frPreferences, Qt::Key_Escape));
    EXPECT_TRUE(form().frPreferences->isHidden());
    for (QAction* opens : {form().mnuBatchProcessor, form().mnuRenameWizard}) {
        opens->trigger();
        auto* close = find<QPushButton>(u"cbClose"_qs);
        ASSERT_TRUE(close != nullptr && !form().isVisible());
        close->setEnabled(false);
        EXPECT_TRUE(press(*close->parentWidget(), Qt::Key_Escape));
        EXPECT_TRUE(close->isVisible()) << "a run is under way";
        close->setEnabled(true);
        press(*close->parentWidget(), Qt::Key_Escape);
        EXPECT_TRUE(form().isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

}  // namespace
