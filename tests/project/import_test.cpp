#include <gtest/gtest.h>

#include "documents/package_maker.h"
#include "forms/frm_main.h"
#include "forms/frm_select_import_sheet.h"
#include "project/excel_import.h"
#include "project/file_naming.h"
#include "project/naming_scheme.h"
#include "project/script_rows.h"
#include "project/word_import.h"
#include "runtime/fault.h"
#include "support/scripted_ports.h"

using namespace tarnwick;

namespace {

TEST(ScriptRows, SpecifiedRangeIsLenientButBounded) {
    const project::RowRange rows = project::specifiedRows(u"101 first"_qs, u"195.5"_qs);
    EXPECT_EQ(rows.viFirstRow, 101);
    EXPECT_EQ(rows.viLastRow, 196);
    EXPECT_THROW(project::specifiedRows(u"1"_qs, u"40000"_qs), runtime::Fault);
}

// The preview shows the effect of the boxes. It has three names and cannot go beyond 32767.
TEST(NamingScheme, NamesReachFurtherThanTheirPreview) {
    const auto name = [](const QString& start, const QString& increment, int position) {
        return project::readScheme(u"ACME_"_qs, start, increment, u"_a"_qs).nameAt(position);
    };
    EXPECT_EQ(name(u"1000"_qs, u"5"_qs, -1), u"ACME_995_a");
    EXPECT_EQ(name(u"0"_qs, u"32767"_qs, 499), u"ACME_16350733_a");
    EXPECT_THROW(name(u"2147483647"_qs, u"1"_qs, 1), runtime::Fault);
}

TEST(FileNaming, ThePreviewFollowsTheFourBoxesAndFaultsUnderTheirLabels) {
    test::FailureDesk desk;
    forms::frmMain form;
    const project::FileNaming naming(form, desk.failure);
    const std::tuple<QLineEdit*, QString, QString> changes[] = {
        {form.txbSuffix, u"_a"_qs, u"ACME_1000_a.mp3 ACME_1005_a.mp3 ACME_1010_a.mp3"_qs},
        {form.txbPrefix, u"x:"_qs, u"x:1000_a.mp3 x:1005_a.mp3 x:1010_a.mp3"_qs},
        {form.txbIncrement, u"-5"_qs, u"x:1000_a.mp3 x:995_a.mp3 x:990_a.mp3"_qs},
        {form.txbStarting, u"1001.5"_qs, u"x:1002_a.mp3 x:997_a.mp3 x:992_a.mp3"_qs},
        {form.txbStarting, u""_qs, u"x:0_a.mp3 x:-5_a.mp3 x:-10_a.mp3"_qs},
        {form.txbIncrement, u"16383"_qs, u"x:0_a.mp3 x:16383_a.mp3 x:32766_a.mp3"_qs},
        {form.txbIncrement, u"40000"_qs, u"txbIncrement_Change: Overflow, Line 10"_qs},
        {form.txbIncrement, u"32767"_qs, u"txbIncrement_Change: Overflow, Line 20"_qs},
        {form.txbPrefix, u"x"_qs, u"txbPrefix_Change: Overflow, Line 20"_qs},
        {form.txbSuffix, u"x"_qs, u"txbSuffix_Change: Overflow, Line 20"_qs},
        {form.txbStarting, u"3e9"_qs, u"txbStarting_Change: Overflow, Line 10"_qs}};
    for (const auto& [box, text, outcome] : changes) {
        if (outcome.contains(u"Overflow")) {
            EXPECT_THROW(box->setText(text), test::ProcessEnded);
            EXPECT_TRUE(desk.log().contains("frmImport." + outcome.toUtf8() + "\r\n"));
            continue;
        }
        box->setText(text);
        QStringList names;
        for (const QLineEdit* name : form.txbPreview)
            names << name->text();
        EXPECT_EQ(names.join(u' '), outcome);
    }
    QFocusEvent toTheDesktop(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    EXPECT_NO_THROW(QCoreApplication::sendEvent(form.txbStarting, &toTheDesktop));
    QFocusEvent toTheNextBox(QEvent::FocusOut, Qt::TabFocusReason);
    EXPECT_THROW(QCoreApplication::sendEvent(form.txbStarting, &toTheNextBox), test::ProcessEnded);
    EXPECT_TRUE(desk.log().contains("frmImport.txbStarting_LostFocus: Overflow, Line 10\r\n"));

    for (int i : {1, 0}) {
        form.opAutoNaming[i]->setChecked(true);
        EXPECT_EQ(form.frAutoNumber->isEnabled(), i == 1);
    }
    form.opSourceFileFormat[0]->setChecked(true);
    EXPECT_EQ(form.txbPreview[0]->text(), u"x0x.mp3") << "the format waits for a keystroke";
    EXPECT_THROW(form.txbStarting->setText(u"5"_qs), test::ProcessEnded);
    EXPECT_EQ(form.txbPreview[0]->text(), u"x5x.wav") << "the third name fails, not the first";
}

QByteArray cellOf(const QByteArray& text) {
    return "<tc><p><r><t xml:space='preserve'>" + text + "</t></r></p></tc>";
}
QByteArray rowOf(const QByteArray& cells) { return "<tr>" + cells + "</tr>"; }
QByteArray rowOf(const QByteArray& name, const QByteArray& text) {
    return rowOf(cellOf(name) + cellOf(text));
}

// Both imports on a real folder.
struct Imports : ::testing::Test {
    test::FailureDesk desk;
    platform::Disk files;
    runtime::ProcessState state;
    model::Session session;
    QTemporaryDir folder;
    int loads = 0;  // of the recording
    std::function<void()> onLoad;
    bool soundIsLoaded = false;
    forms::frmMain form;
    forms::frmSelectImportSheet chooser;
    project::ScriptImport import{form,
                                 {state, session, desk.boxes, files, desk.notices,
                                  [this] {
                                      ++loads;
                                      if (onLoad) onLoad();
                                  },
                                  [this] { return soundIsLoaded; }}};
    project::ExcelImport excel{
        form, chooser, import, {desk.failure, state, session, documents::Workbook::open}};
    project::WordImport word{
        form, import, {desk.failure, state, session, documents::WordDocument::open}};

    void SetUp() override { state.vsProjectFolder = folder.path(); }
    void write(const QString& name, const QByteArray& bytes) const {
        test::writeFile(folder.filePath(name), bytes);
    }
    void importSheet(const Rows& rows) {
        write(u"script.xlsx"_qs, zipOf(workbookParts(cellsOf(rows))));
        excel.Import_Excel();
    }
    void importTable(const QByteArray& rows) {
        write(u"script.docx"_qs, zipOf(documentParts("<tbl>" + rows + "</tbl>")));
        word.Import_Word();
    }
    void setRows(const QString& start, const QString& end) {
        form.chImportSpecifiedRows->setChecked(true);
        form.txbImportStartRow->setText(start);
        form.txbImportEndRow->setText(end);
    }
    // Name, text and words of each prompt.
    QString prompts() const {
        QStringList rows;
        for (int i = 1; i <= import.script().viPromptCount; ++i) {
            const model::PromptRow& row = import.script().Prompts.at(i);
            rows << row.FileName + u'|' + row.Content + u'|' + row.Words;
        }
        return rows.join(u'\n');
    }
    // The bar's bounds and value, and what stands over it.
    QString progress() const {
        const QProgressBar& bar = *form.pbLoadingScript;
        return u"%1 to %2: %3, "_qs.arg(bar.minimum()).arg(bar.maximum()).arg(bar.value()) +
               form.lbImporting->text();
    }
    // What the log says of an import that ends the program.
    template <class Import>
    QByteArray recordOf(Import&& call) {
        EXPECT_THROW(call(), test::ProcessEnded);
        const QByteArray log = desk.log();
        return log.sliced(log.lastIndexOf("frmMain.")).split('\r').first();
    }
    // Whether the import succeeded with these prompts.
    void expectDone(const QString& wanted, const QString& script = u"script.xlsx"_qs) {
        EXPECT_EQ(prompts(), wanted);
        EXPECT_EQ(form.txbScript->text(), script);
        EXPECT_TRUE(form.mnuProjectFolder->isEnabled() && form.frLoadFiles->isHidden());
        EXPECT_EQ(std::exchange(loads, 0), 1);
        EXPECT_TRUE(desk.boxes.shown.isEmpty());
    }
};

TEST_F(Imports, SheetRowsBecomePromptsByTheirLayout) {
    const Rows named{{u"File"_qs, u"Text"_qs},
                     {u"F_2"_qs, u"a  b"_qs},
                     {u"F_3"_qs, u""_qs},
                     {u""_qs, u"past the end"_qs}};
    const Rows texts{{u"one"_qs, u""_qs}, {u"two words"_qs, u"x"_qs}};
    const std::tuple<Rows, bool, bool, QString, QString> cases[] = {
        {named, true, true, u"F_2|a  b|3\nF_3||1"_qs, u"2 to 4: 4, Importing Excel row 3 of 3"_qs},
        {named, false, true, u"File|Text|1\nF_2|a  b|3\nF_3||1"_qs,
         u"1 to 4: 4, Importing Excel row 3 of 3"_qs},
        {named, true, false, u"ACME_1000|a  b|3\nACME_1005||1"_qs,
         u"2 to 4: 4, Importing Excel row 3 of 3"_qs},
        {texts, false, true, u"ACME_995|one|1\nACME_1000|two words|2"_qs,
         u"1 to 3: 3, Importing Excel row 2 of 2"_qs}};
    for (const auto& [rows, ignoresFirst, ownNames, wanted, progressed] : cases) {
        form.chIgnoreFirstRow->setChecked(ignoresFirst);
        form.opAutoNaming[ownNames ? 0 : 1]->setChecked(true);
        importSheet(rows);
        EXPECT_EQ(progress(), progressed);
        expectDone(wanted);
    }
}

TEST_F(Imports, SpecifiedSheetRowsAreReadWhateverIsInThem) {
    const Rows rows{{u"F_1"_qs, u"one"_qs}, {u"F_2"_qs, u"two"_qs}, {u""_qs, u"three"_qs}};
    setRows(u"2"_qs, u"4"_qs);
    importSheet(rows);
    EXPECT_EQ(progress(), u"2 to 5: 5, Importing Excel row 4 of 4");
    expectDone(u"F_2|two|1\n|three|1\n||1"_qs);
    for (const QString& end : {u"2"_qs, u"1"_qs}) {
        setRows(u"3"_qs, end);
        importSheet(rows);
        expectDone({});
    }
}

TEST_F(Imports, TheImportWaitsForTheChosenSheet) {
    QFile::copy(QStringLiteral(TARNWICK_TEST_DATA "/documents/script.xlsx"),
                folder.filePath(u"script.xlsx"_qs));
    form.chPromptSheet->setChecked(true);
    form.chIgnoreFirstRow->setChecked(false);
    for (int time = 0; time < 2; ++time) {
        excel.Import_Excel();
        EXPECT_TRUE(chooser.isVisible() && !form.frLoadFiles->isHidden());
        EXPECT_EQ(loads, 0);
        EXPECT_EQ(chooser.cbxSheetNames->count(), 3);
        EXPECT_EQ(chooser.cbxSheetNames->currentText(), u"Prompts");
        chooser.cbxSheetNames->setEditText(u"hidden"_qs);
        chooser.cbSelectSheet->click();
        EXPECT_FALSE(chooser.isVisible());
        expectDone(u"ACME_995|unseen|1"_qs);
        chooser.cbSelectSheet->click();
        EXPECT_EQ(loads, 0) << "nothing waits any more";
    }
    EXPECT_TRUE(desk.notices.told.isEmpty());
    for (const bool loaded : {false, true}) {
        soundIsLoaded = loaded;
        excel.Import_Excel();
        chooser.close();
        ASSERT_EQ(desk.notices.told.size(), 1);
        const platform::Notice notice = desk.notices.told.takeFirst();
        EXPECT_EQ(notice.what,
                  u"No sheet of script.xlsx was chosen, so nothing was loaded and the list of "
                  u"prompts is empty."_qs);
        EXPECT_EQ(notice.files, QStringList(folder.filePath(u"script.xlsx"_qs)));
        EXPECT_EQ(notice.safe.isEmpty(), !loaded);
    }
    excel.Import_Excel();
    chooser.cbxSheetNames->setEditText(u"gone"_qs);
    EXPECT_THROW(chooser.cbSelectSheet->click(), test::ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.last(),
              u"Tarnwick|Subscript out of range (there is no sheet \"gone\")");
    for (const bool loaded : {false, true}) {
        soundIsLoaded = loaded;
        QFile::remove(folder.filePath(u"script.xlsx"_qs));
        excel.Import_Excel();
        EXPECT_EQ(desk.notices.noted.size(), loaded ? 1 : 0) << "the box says enough";
    }
    EXPECT_TRUE(desk.notices.noted[0].what.startsWith(u"There is no Excel file in the project"));
}

TEST_F(Imports, NoticesOfTheScriptAreToldBeforeTheRecordingLoads) {
    session.vsWorkingFile = u"F_2.wav"_qs;
    form.chIgnoreFirstRow->setChecked(false);
    QByteArray cells = cellsOf({{u"F/1"_qs, u"one"_qs}, {u"F_2"_qs, u""_qs}});
    write(u"script.xlsx"_qs,
          zipOf(workbookParts(cells.chopped(6) + "<c r='B2'><f>B1</f></c></row>")));
    onLoad = [this] { EXPECT_EQ(desk.notices.told.size(), 3); };
    excel.Import_Excel();
    EXPECT_TRUE(desk.notices.told.last().what.startsWith(u"1 prompt is empty"));
    expectDone(u"F/1|one|1\nF_2||1"_qs);
    onLoad = {};
    desk.notices.told.clear();
    importTable(rowOf("F", "a") + rowOf("F", "b"));
    EXPECT_EQ(desk.notices.told.size(), 1);
    EXPECT_TRUE(desk.notices.noted.isEmpty());
}

TEST_F(Imports, TableRowsBecomePromptsByTheShapeOfTheTable) {
    form.opAutoNaming[1]->setChecked(true);  // the document has the last word on that
    form.chIgnoreFirstRow->setChecked(true);
    const QByteArray lines = "<tc><p><r><t>c</t><br/><t>d</t></r></p></tc>";
    const std::tuple<QByteArray, int, QString> cases[] = {
        {rowOf("File", "Text") + rowOf("", "a  b") + rowOf(cellOf("F_2") + lines) +
             rowOf(cellOf("F_3") + "<tc><p/></tc>"),
         4, u"File|Text|1\n|a  b|3\nF_2|c\vd|1\nF_3||1"_qs},
        {rowOf(cellOf("one two") + cellOf("x") + cellOf("y")).repeated(2), 2,
         u"ACME_1000|one two|2\nACME_1005|one two|2"_qs},
        {rowOf(cellOf(" one")), 1, u"ACME_1000| one|2"_qs}};
    write(u"~$script.doc"_qs, "the mark of an open document");
    for (const auto& [rows, count, wanted] : cases) {
        importTable(rows);
        EXPECT_EQ(progress(),
                  u"0 to 100: %1, Importing Word row %2 of %2"_qs.arg(count + 1).arg(count));
        expectDone(wanted, u"script.docx"_qs);
    }
}

// The log gets only the classic line; the box also names what is wrong, if it is known.
TEST_F(Imports, AFaultHasItsRecordAndItsBoxNamesTheField) {
    form.chIgnoreFirstRow->setChecked(false);
    const Rows row{{u"F"_qs, u"text"_qs}};
    const QByteArray cells = rowOf("F", "text");
    importTable(cells.repeated(99));
    const QByteArray noMember = "Word: The requested member of the collection does not exist.";
    const std::tuple<std::function<void()>, QByteArray, QString> faults[] = {
        {[&] { importTable(cells.repeated(100)); }, "Word: Invalid property value, Line 150",
         u"the script has more than 99 rows"_qs},
        {[&] {
             importSheet(Rows(500, row[0]));
             EXPECT_EQ(prompts(), u"F|text|1\n"_qs.repeated(500).chopped(1));
             importSheet(Rows(501, row[0]));
         },
         "Excel: Subscript out of range, Line 90", u"the script has more than 500 prompts"_qs},
        {[&] { importSheet(Rows(32768, row[0])); }, "Excel: Overflow, Line 90",
         u"the sheet has too many rows"_qs},
        {[&] { importTable(""); }, noMember + ", Line 90", u"there is no table"_qs},
        {[&] { importTable(cells.repeated(40'000)); }, "Word: Overflow, Line 100",
         u"the table has too many rows"_qs},
        {[&] { importTable(cells + rowOf(cellOf("alone"))); }, noMember + ", Line 130",
         u"row 2 of the table has no cell 2"_qs},
        {[&] {
             // The bar keeps the bounds that a workbook gave it: then the rows are the limit.
             setRows(u"400"_qs, u"600"_qs);
             importSheet({});
             importTable(cells.repeated(500));
             importTable(cells.repeated(501));
         },
         "Word: Subscript out of range, Line 140", u"the script has more than 500 prompts"_qs},
        {[&] {
             setRows(u"0"_qs, u"1"_qs);
             importSheet(row);
         },
         "Excel: Application-defined or object-defined error, Line 90", u"a sheet has no row 0"_qs},
        {[&] {
             setRows(u"1"_qs, u"4e4"_qs);
             importSheet(row);
         },
         "Excel: Overflow, Line 90", u"Only Import Rows is \"4e4\""_qs},
        {[&] {
             form.chImportSpecifiedRows->setChecked(false);
             form.txbStarting->setText(u"3e9"_qs);
             importSheet(row);
         },
         "Excel: Overflow, Line 90", u"Start at is \"3e9\""_qs}};
    for (const auto& [call, record, detail] : faults) {
        EXPECT_EQ(recordOf(call), "frmMain.Import_" + record);
        EXPECT_TRUE(desk.boxes.shown.last().contains(u" (%1), Line "_qs.arg(detail)))
            << desk.boxes.shown.last().toStdString() << " for " << detail.toStdString();
    }
}

TEST_F(Imports, BadScriptsEndInTheirRecordOrInABox) {
    form.frLoadFiles->show();
    const std::pair<QString, std::function<void()>> programs[] = {
        {u"Word"_qs, [this] { word.Import_Word(); }},
        {u"Excel"_qs, [this] { excel.Import_Excel(); }}};
    for (const auto& [program, call] : programs) {
        import.vsImportResult.clear();
        call();
        EXPECT_EQ(std::exchange(desk.boxes.shown, {}),
                  QStringList(u"No %1 file in Project folder.\rPlease fix and reload working "
                              u"files."_qs.arg(program)));
        EXPECT_EQ(import.vsImportResult, u"Abort");
        EXPECT_TRUE(form.frLoadFiles->isHidden());
    }
    write(u"Script.DOC"_qs, "no document");  // goes before the other
    EXPECT_EQ(recordOf(programs[0].second),
              "frmMain.Import_Word: The file \"Script.DOC\" is not a Word document., Line 80");
    write(u"script.xls"_qs, "no workbook");
    EXPECT_EQ(recordOf(programs[1].second),
              "frmMain.Import_Excel: The file \"script.xls\" is not a workbook., Line 70");
}

}  // namespace
