#include "documents/package_maker.h"
#include "journey.h"
#include "model/list_columns.h"
#include "support/wav_samples.h"

using namespace tarnwick;

namespace {

QByteArray cellOf(const QByteArray& text) {
    return "<tc><p><r><t xml:space='preserve'>" + text + "</t></r></p></tc>";
}
QByteArray rowOf(const QByteArray& cells) { return "<tr>" + cells + "</tr>"; }

// Sessions whose script is a Word document.
struct WordSession : test::Launched {
    void SetUp() override {
        Launched::SetUp();
        form().OpScriptFormat[0]->setChecked(true);
        write(u"take.wav"_qs, test::wavFile(test::wave(200, 9000)));
    }
    void loadWith(const QByteArray& rows) {
        write(u"script.docx"_qs, zipOf(documentParts("<tbl>" + rows + "</tbl>")));
        loadAnew();
    }
    // The last log entry of a load that ends the program, without its label.
    QByteArray recordOf(const QByteArray& rows) {
        EXPECT_THROW(loadWith(rows), test::ProcessEnded);
        const QByteArray log = desk.log();
        return log.sliced(log.lastIndexOf("frmMain.Import_Word: ")).split('\r').first().sliced(21);
    }
};

TEST_F(WordSession, RowsBecomePromptsAccordingToTheShapeOfTheTable) {
    form().opAutoNaming[1]->setChecked(true);  // ignored: the table decides
    form().chIgnoreFirstRow->setChecked(true);
    const QByteArray lines = "<tc><p><r><t>c</t><br/><t>d</t></r></p></tc>";
    const std::pair<QByteArray, QStringList> cases[] = {
        // name, text and words of each prompt
        {rowOf(cellOf("File") + cellOf("Text")) + rowOf(cellOf("") + cellOf("a  b")) +
             rowOf(cellOf("F_2") + lines) + rowOf(cellOf("F_3") + "<tc><p/></tc>"),
         {u"File|Text|1"_qs, u"|a  b|3"_qs, u"F_2|c\vd|1"_qs, u"F_3||1"_qs}},
        {rowOf(cellOf("one two") + cellOf("x") + cellOf("y")).repeated(2),
         {u"ACME_1000|one two|2"_qs, u"ACME_1005|one two|2"_qs}},
        {rowOf(cellOf(" one")), {u"ACME_1000| one|2"_qs}}};
    write(u"~$script.doc"_qs, "the mark of an open document");
    for (const auto& [rows, prompts] : cases) {
        loadWith(rows);
        ASSERT_TRUE(settled(static_cast<int>(prompts.size())));
        EXPECT_EQ(form().txbScript->text(), u"script.docx");
        EXPECT_EQ(form().lbImporting->text(),
                  u"Importing Word row %1 of %1"_qs.arg(prompts.size()));
        EXPECT_TRUE(form().mnuProjectFolder->isEnabled() && form().frLoadFiles->isHidden());
        for (int row = 0; row < prompts.size(); ++row)
            EXPECT_EQ(cell(row, model::kFileName) + u'|' + cell(row, model::kContent) + u'|' +
                          cell(row, model::kWords),
                      prompts[row]);
    }
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(WordSession, BadDocumentsEndTheLoadOrTheProgram) {
    load(u"take.wav"_qs);
    EXPECT_EQ(boxes(), QStringList(u"No Word file in Project folder.\rPlease fix and reload "
                                   u"working files."_qs));
    const QByteArray row = rowOf(cellOf("F") + cellOf("text"));
    const QByteArray noMember = "The requested member of the collection does not exist., Line ";
    loadWith(row.repeated(99));
    ASSERT_TRUE(settled(99));
    EXPECT_EQ(recordOf(row.repeated(100)), "Invalid property value, Line 150");
    EXPECT_EQ(recordOf(row + rowOf(cellOf("alone"))), noMember + "130");
    EXPECT_EQ(recordOf(""), noMember + "90");
    EXPECT_EQ(recordOf(row.repeated(40'000)), "Overflow, Line 100");

    // The bar keeps the bounds set by a workbook, so now the number of prompt rows is the limit.
    form().OpScriptFormat[1]->setChecked(true);
    form().chImportSpecifiedRows->setChecked(true);
    form().txbImportStartRow->setText(u"400"_qs);
    form().txbImportEndRow->setText(u"600"_qs);
    write(u"script.xlsx"_qs, zipOf(workbookParts("")));
    loadWith(row);
    ASSERT_TRUE(settled(201));
    form().OpScriptFormat[0]->setChecked(true);
    loadWith(row.repeated(500));
    ASSERT_TRUE(settled(500));
    EXPECT_EQ(recordOf(row.repeated(501)), "Subscript out of range, Line 140");

    write(u"Script.DOC"_qs, "no document");  // preferred to the .docx
    EXPECT_EQ(recordOf(row), "The file \"Script.DOC\" is not a Word document., Line 80");
}

}  // namespace
