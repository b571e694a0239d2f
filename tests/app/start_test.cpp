#include "journey.h"

using namespace tarnwick;

namespace {

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
    EXPECT_FALSE(form().cbUndo->isEnabled());
    EXPECT_FALSE(form().cbZoomSelection->isEnabled());
    EXPECT_FALSE(database.isOpen());
    EXPECT_THROW(form().mnuQuit->trigger(), test::ProcessEnded);
}

TEST_F(Start, UnusualSettingsAreShownAsDefined) {
    execute(u"UPDATE Admin SET F7 = 2, F8 = 5, F11 = 1, F12 = 0 WHERE F1 = 18"_qs);
    execute(u"UPDATE Admin SET F2 = 0, F3 = NULL, F6 = '_x', F7 = 3 WHERE F1 = 19"_qs);
    application.Sub_Main();
    EXPECT_FALSE(form().chPromptSheet->isChecked());
    EXPECT_FALSE(form().chIgnoreFirstRow->isChecked());
    EXPECT_TRUE(form().OpScriptFormat[0]->isChecked());
    EXPECT_FALSE(form().txbImportStartRow->isEnabled());
    EXPECT_FALSE(form().opRowEach[0]->isChecked());
    EXPECT_FALSE(form().opRowEach[1]->isChecked());
    EXPECT_TRUE(form().frAutoNumber->isEnabled());
    EXPECT_EQ(form().txbPrefix->text(), u"");
    EXPECT_EQ(form().txbSuffix->text(), u"_x");
    EXPECT_TRUE(form().opSourceFileFormat[3]->isChecked());
    EXPECT_TRUE(form().cbxBitRate->isHidden());
}

TEST_F(Start, AMissingDatabaseEndsTheProgram) {
    QFile::remove(databaseFile());
    EXPECT_THROW(application.Sub_Main(), test::ProcessEnded);
    EXPECT_EQ(desk.log().count("\r\n"), 4);
    EXPECT_TRUE(desk.log().endsWith("Program execution terminated - No database!\r\n"));
}

std::unique_ptr<engine::SoundEditor> noEditor() { throw runtime::Fault(u"no thread"_qs); }

TEST_F(Start, ASoundEngineThatCannotStartTakesTheDefaultPath) {
    services.createEDT = noEditor;
    EXPECT_THROW(desk.failure.unguarded([&] { application.Sub_Main(); }), test::ProcessEnded);
    EXPECT_EQ(boxes(), QStringList(u"Tarnwick|no thread"_qs));
    EXPECT_EQ(desk.log(), "09:05 07-Mar-2020\r\n09:05 Program launched\r\n");
}

TEST_F(Start, ABatchProcessorWithoutASoundEngineEndsInARecord) {
    services.createEDTX = noEditor;
    application.Sub_Main();
    EXPECT_THROW(form().mnuBatchProcessor->trigger(), test::ProcessEnded);
    EXPECT_TRUE(desk.log().contains(" frmBatchProcessor.Form_Load: no thread, Line 10\r\n"));
}

TEST_F(Start, AnUnusableDatabaseEndsInALogRecord) {
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[this] { execute(u"UPDATE Admin SET  F7 = 4 WHERE F1 = 19"_qs); },
         "frmMain.PreferencesLoad: Subscript out of range, Line 70"},
        {[this] { execute(u"UPDATE Admin SET  F9 = NULL WHERE F1 = 17"_qs); },
         "frmMain.PreferencesLoad: Invalid use of Null, Line 20"},
        {[this] { execute(u"DELETE FROM Admin WHERE F1 = 17"_qs); }, "frmMain.PreferencesLoad: "},
        {[this] { execute(u"DELETE FROM Admin WHERE F1 = 18"_qs); }, "frmFrame.MDIForm_Load: "},
        {[this] { test::writeFile(databaseFile(), QByteArray(4096, 'x')); },
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

}  // namespace
