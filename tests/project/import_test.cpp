#include <gtest/gtest.h>

#include "documents/package_maker.h"
#include "forms/frm_main.h"
#include "forms/frm_select_import_sheet.h"
#include "project/excel_import.h"
#include "project/word_import.h"
#include "support/scripted_ports.h"

using namespace tarnwick;

namespace {

QByteArray cellOf(const QByteArray& text) {
    return "<tc><p><r><t xml:space='preserve'>" + text + "</t></r></p></tc>";
}
QByteArray rowOf(const QByteArray& cells) { return "<tr>" + cells + "</tr>"; }

// Both imports on a real folder.
struct Imports : ::testing::Test {
    test::FailureDesk desk;
    platform::Disk files;
    runtime::ProcessState state;
    model::Session session;
    QTemporaryDir folder;
    int loads = 0;  // of the recording
    forms::frmMain form;
    forms::frmSelectImportSheet chooser;
    project::ScriptImport import{form,
                                 {state, desk.boxes, files, desk.notices, [this] { ++loads; }}};
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
    QStringList prompts() const {
        QStringList rows;
        for (int i = 1; i <= import.script().viPromptCount; ++i) {
            const model::PromptRow& row = import.script().Prompts.at(i);
            rows << row.FileName + u'|' + row.Content + u'|' + row.Words;
        }
        return rows;
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
    void expectDone(const QString& script) {
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
    const struct {
        Rows rows;
        bool ignoresFirst, ownNames;
        QStringList prompts;
        QString progress;
    } cases[] = {{named,
                  true,
                  true,
                  {u"F_2|a  b|3"_qs, u"F_3||1"_qs},
                  u"2 to 4: 4, Importing Excel row 3 of 3"_qs},
                 {named,
                  false,
                  true,
                  {u"File|Text|1"_qs, u"F_2|a  b|3"_qs, u"F_3||1"_qs},
                  u"1 to 4: 4, Importing Excel row 3 of 3"_qs},
                 {named,
                  true,
                  false,
                  {u"ACME_1000|a  b|3"_qs, u"ACME_1005||1"_qs},
                  u"2 to 4: 4, Importing Excel row 3 of 3"_qs},
                 {texts,
                  false,
                  true,
                  {u"ACME_995|one|1"_qs, u"ACME_1000|two words|2"_qs},
                  u"1 to 3: 3, Importing Excel row 2 of 2"_qs}};
    for (const auto& [rows, ignoresFirst, ownNames, wanted, progressed] : cases) {
        form.chIgnoreFirstRow->setChecked(ignoresFirst);
        form.opAutoNaming[ownNames ? 0 : 1]->setChecked(true);
        importSheet(rows);
        EXPECT_EQ(prompts(), wanted);
        EXPECT_EQ(progress(), progressed);
        expectDone(u"script.xlsx"_qs);
    }
}

TEST_F(Imports, SpecifiedSheetRowsAreReadWhateverIsInThem) {
    const Rows rows{{u"F_1"_qs, u"one"_qs}, {u"F_2"_qs, u"two"_qs}, {u""_qs, u"three"_qs}};
    setRows(u"2"_qs, u"4"_qs);
    importSheet(rows);
    EXPECT_EQ(prompts(), QStringList({u"F_2|two|1"_qs, u"|three|1"_qs, u"||1"_qs}));
    EXPECT_EQ(progress(), u"2 to 5: 5, Importing Excel row 4 of 4");
    expectDone(u"script.xlsx"_qs);
    setRows(u"3"_qs, u"2"_qs);
    importSheet(rows);
    EXPECT_EQ(prompts(), QStringList());
    setRows(u"3"_qs, u"1"_qs);
    importSheet(rows);
    EXPECT_EQ(prompts(), QStringList());
    setRows(u"0"_qs, u"1"_qs);
    EXPECT_EQ(recordOf([&] { importSheet(rows); }),
              "frmMain.Import_Excel: Application-defined or object-defined error, Line 90");
}

TEST_F(Imports, NoMoreSheetRowsThanThereAreSlots) {
    const auto rows = [](int count) { return Rows(count, {u"F"_qs, u"text"_qs}); };
    importSheet(rows(501));
    EXPECT_EQ(prompts(), QStringList(500, u"F|text|1"_qs));
    EXPECT_EQ(recordOf([&] { importSheet(rows(502)); }),
              "frmMain.Import_Excel: Subscript out of range, Line 90");
    EXPECT_EQ(recordOf([&] { importSheet(rows(32768)); }),
              "frmMain.Import_Excel: Overflow, Line 90");
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
        EXPECT_EQ(prompts(), QStringList(u"ACME_995|unseen|1"_qs));
        expectDone(u"script.xlsx"_qs);
        chooser.cbSelectSheet->click();
        EXPECT_EQ(loads, 0) << "nothing waits any more";
    }
}

TEST_F(Imports, TableRowsBecomePromptsByTheShapeOfTheTable) {
    form.opAutoNaming[1]->setChecked(true);  // the document has the last word on that
    form.chIgnoreFirstRow->setChecked(true);
    const QByteArray lines = "<tc><p><r><t>c</t><br/><t>d</t></r></p></tc>";
    const std::pair<QByteArray, QStringList> cases[] = {
        {rowOf(cellOf("File") + cellOf("Text")) + rowOf(cellOf("") + cellOf("a  b")) +
             rowOf(cellOf("F_2") + lines) + rowOf(cellOf("F_3") + "<tc><p/></tc>"),
         {u"File|Text|1"_qs, u"|a  b|3"_qs, u"F_2|c\vd|1"_qs, u"F_3||1"_qs}},
        {rowOf(cellOf("one two") + cellOf("x") + cellOf("y")).repeated(2),
         {u"ACME_1000|one two|2"_qs, u"ACME_1005|one two|2"_qs}},
        {rowOf(cellOf(" one")), {u"ACME_1000| one|2"_qs}}};
    write(u"~$script.doc"_qs, "the mark of an open document");
    for (const auto& [rows, wanted] : cases) {
        importTable(rows);
        EXPECT_EQ(prompts(), wanted);
        EXPECT_EQ(progress(), u"0 to 100: %1, Importing Word row %2 of %2"_qs.arg(wanted.size() + 1)
                                  .arg(wanted.size()));
        expectDone(u"script.docx"_qs);
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
    const QByteArray row = rowOf(cellOf("F") + cellOf("text"));
    const auto record = [&](const QByteArray& rows) {
        return recordOf([&] { importTable(rows); }).replace("frmMain.Import_Word: ", "");
    };
    const QByteArray noMember = "The requested member of the collection does not exist., Line ";
    importTable(row.repeated(99));
    EXPECT_EQ(record(row.repeated(100)), "Invalid property value, Line 150");
    EXPECT_EQ(record(row + rowOf(cellOf("alone"))), noMember + "130");
    EXPECT_EQ(record(""), noMember + "90");
    EXPECT_EQ(record(row.repeated(40'000)), "Overflow, Line 100");
    // The bar keeps the bounds that a workbook gave it: then the rows themselves are the limit.
    setRows(u"400"_qs, u"600"_qs);
    importSheet({});
    importTable(row.repeated(500));
    EXPECT_EQ(prompts().size(), 500);
    EXPECT_EQ(record(row.repeated(501)), "Subscript out of range, Line 140");
    write(u"Script.DOC"_qs, "no document");  // goes before the other
    EXPECT_EQ(record(row), "The file \"Script.DOC\" is not a Word document., Line 80");
    write(u"script.xls"_qs, "no workbook");
    EXPECT_EQ(recordOf(programs[1].second),
              "frmMain.Import_Excel: The file \"script.xls\" is not a workbook., Line 70");
}

}  // namespace
