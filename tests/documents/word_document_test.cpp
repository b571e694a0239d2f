#include "documents/word_document.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "documents/package_maker.h"
#include "runtime/fault.h"

using namespace tarnwick;
using documents::WordDocument;
using documents::WordTable;

namespace {

constexpr char kNoMember[] = "The requested member of the collection does not exist.";

template <class Call>
QString resultOf(Call&& call) {
    try {
        return call();
    } catch (const runtime::Fault& fault) {
        return fault.description();
    }
}

// All of a table: its rows in brackets, a bar between cells, a dash for a cell that is not there.
QString wholeOf(const WordTable& table) {
    QString whole;
    for (qint32 row = 1; row <= table.rowCount(); ++row) {
        QStringList cells;
        for (qint32 column = 1; column <= table.columnCount(); ++column) {
            const QString cell = resultOf([&] { return table.text(row, column); });
            cells << (cell == kNoMember ? QStringLiteral("-") : cell);
        }
        whole += u'[' + cells.join(u'|') + u']';
    }
    return whole;
}

// What becomes of a file with those bytes: its first table, or the fault.
QString read(const QByteArray& bytes) {
    return resultOf(
        [&] { return wholeOf(WordDocument::fromBytes(bytes, QStringLiteral("w")).firstTable()); });
}

QByteArray row(const QByteArray& cells) { return "<w:tr>" + cells + "</w:tr>"; }
QByteArray cell(const QByteArray& text, const QByteArray& properties = {}) {
    return "<w:tc><w:tcPr>" + properties + "</w:tcPr><w:p><w:r><w:t>" + text +
           "</w:t></w:r></w:p></w:tc>";
}

}  // namespace

// Written by the office suite from script.fodt, and once by hand, for a form that it only reads.
TEST(WordDocument, EveryFormOfADocumentGivesTheSameTexts) {
    const QString folder = QStringLiteral(TARNWICK_TEST_DATA "/documents/");
    const QString first = QStringLiteral("[NL_1|Welcome to the night line.][NL_2|");
    const QString all =
        first + QStringLiteral(
                    u"First\vsecond\tthird\rGröße, “quoted” & <marked> — 日本 𝄞]"
                    u"[NL_3|][|See our page one  two no\u00a0break soft\u00adhyphen "
                    u"non\u2011breaking end page 1]"
                    u"[NL_5|before\rin 1\rin 2\rafter]");
    const QTemporaryDir other;
    const QString rich = other.filePath(QStringLiteral("rich.doc"));
    QFile file(rich);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("{\\rtf1 x\\par\\trowd\\cellx999\\intbl a\\line b\\cell\\row\\pard}");
    file.close();
    const std::pair<QString, QString> files[] = {
        {folder + QStringLiteral("script.docx"), all},
        {folder + QStringLiteral("script.doc"), all},
        {folder + QStringLiteral("script_1995.doc"),
         first + QStringLiteral(u"First\vsecond\tthird\rGröße][NL_3|]")},
        {rich, QStringLiteral("[a\vb]")}};
    for (const auto& [path, table] : files)
        EXPECT_EQ(resultOf([&] { return wholeOf(WordDocument::open(path).firstTable()); }), table)
            << path.toStdString();
}

TEST(WordDocument, TextInACell) {
    const std::pair<QByteArray, QString> cells[] = {
        {"", {}},
        {"<w:p/><w:p><w:r><w:t> a </w:t><w:t xml:space='preserve'> b\n c </w:t></w:r></w:p>",
         QStringLiteral("\ra b  c ")},
        {"<w:p><w:pPr><w:tabs><w:tab/></w:tabs></w:pPr><w:r><w:t>a</w:t><w:tab/><w:cr/>"
         "<w:br w:type='page'/><w:sym w:char='2192'/></w:r></w:p>",
         QStringLiteral(u"a\t\v\f→")},
        {"<w:sdt><w:sdtPr><w:tag w:val='x'/></w:sdtPr><w:sdtContent><w:p><w:smartTag><w:r><w:t>in"
         "</w:t></w:r></w:smartTag><w:ins><w:r><w:t>serted</w:t></w:r></w:ins></w:p>"
         "</w:sdtContent></w:sdt>",
         QStringLiteral("inserted")},
        {"<w:p><w:del><w:r><w:delText>x</w:delText><w:tab/></w:r></w:del><w:moveFrom><w:r><w:t>y"
         "</w:t></w:r></w:moveFrom><w:moveTo><w:r><w:t>moved</w:t></w:r></w:moveTo></w:p>",
         QStringLiteral("moved")},
        {"<w:p><w:pPr><w:rPr><w:del/></w:rPr></w:pPr><w:r><w:t>one</w:t></w:r></w:p>"
         "<w:p><w:r><w:t>line</w:t></w:r></w:p>",
         QStringLiteral("oneline")},
        {"<w:p><w:r><w:rPr><w:vanish/></w:rPr><w:t>x</w:t></w:r><w:r><w:rPr><w:vanish w:val='0'/>"
         "</w:rPr><w:t>seen</w:t></w:r></w:p>",
         QStringLiteral("seen")},
        {"<w:p><w:r><w:fldChar w:fldCharType='begin'/><w:instrText>IF</w:instrText>"
         "<w:fldChar w:fldCharType='begin'/><w:fldChar w:fldCharType='separate'/><w:t>x</w:t>"
         "<w:fldChar w:fldCharType='end'/><w:t>y</w:t><w:fldChar w:fldCharType='separate'/>"
         "<w:t>result</w:t><w:fldChar w:fldCharType='end'/><w:fldChar w:fldCharType='end'/></w:r>"
         "<w:fldSimple w:instr='PAGE'><w:r><w:t>7</w:t></w:r></w:fldSimple></w:p>",
         QStringLiteral("result7")},
        {"<w:p><w:r><m:AlternateContent><m:Choice><w:t>new</w:t></m:Choice><m:Fallback><w:t>old"
         "</w:t></m:Fallback></m:AlternateContent><m:AlternateContent><m:Choice><w:t>er</w:t>"
         "</m:Choice><m:Fallback/></m:AlternateContent></w:r></w:p>",
         QStringLiteral("older")},
        {"<w:p><w:r><w:pict><w:txbxContent><w:p><w:r><w:t>x</w:t></w:r></w:p></w:txbxContent>"
         "</w:pict><w:ruby><w:rt><w:r><w:t>x</w:t></w:r></w:rt><w:rubyBase><w:r><w:t>base</w:t>"
         "</w:r></w:rubyBase></w:ruby></w:r><m:oMath><m:r><m:t>+1</m:t></m:r></m:oMath></w:p>",
         QStringLiteral("base+1")}};
    for (const auto& [content, text] : cells)
        EXPECT_EQ(read(zipOf(
                      documentParts("<w:tbl>" + row("<w:tc>" + content + "</w:tc>") + "</w:tbl>"))),
                  u'[' + text + u']');
}

TEST(WordDocument, RowsAndColumnsAreThoseThatAreThere) {
    const QByteArray begins = "<w:vMerge w:val='restart'/>", goesOn = "<w:vMerge/>";
    const QByteArray wide = "<w:gridSpan w:val='2'/>";
    const std::pair<QByteArray, QString> bodies[] = {
        {row(cell("a") + cell("b")) + row(cell("wide", wide)) + row(""), "[a|b][wide|-][-|-]"},
        {row(cell("tall", begins) + cell("b")) + row(cell("", goesOn) + cell("d")) +
             row(cell("e") + cell("", goesOn)),
         "[tall|b][-|d][e|]"},
        // Merged cells are found by their place on the grid, not by their number in the row.
        {row(cell("a", wide) + cell("tall", begins)) +
             row("<w:trPr><w:gridBefore w:val='1'/></w:trPr>" + cell("b") + cell("", goesOn)),
         "[a|tall][b|-]"},
        {row(cell("a", "<w:hMerge w:val='restart'/>") + cell("", "<w:hMerge/>") + cell("b")),
         "[a|b]"},
        {"<w:sdt><w:sdtContent>" +
             row("<w:sdt><w:sdtContent>" + cell("a") + "</w:sdtContent></w:sdt>" + cell("b")) +
             "</w:sdtContent></w:sdt>" + row("<w:trPr><w:del/></w:trPr>" + cell("struck out")),
         "[a|b]"}};
    for (const auto& [rows, table] : bodies) {
        EXPECT_EQ(read(zipOf(documentParts("<w:p/><w:tbl>" + rows + "</w:tbl>"))), table);
        EXPECT_EQ(read(zipOf(documentParts(
                      "<w:p><w:r><w:pict><w:txbxContent><w:tbl>" + row(cell("box")) +
                      "</w:tbl></w:txbxContent></w:pict></w:r></w:p><w:tbl/><w:sdt><w:sdtContent>"
                      "<w:tbl>" +
                      rows + "</w:tbl></w:sdtContent></w:sdt><w:tbl>" + row(cell("second")) +
                      "</w:tbl>"))),
                  table);
    }
}

TEST(WordDocument, BadFilesAreNamedForWhatTheyAre) {
    const auto nested = [](int times) {
        return zipOf(documentParts("<w:tbl><w:tr><w:tc>" + QByteArray("<w:sdt>").repeated(times) +
                                   QByteArray("</w:sdt>").repeated(times) +
                                   "</w:tc></w:tr></w:tbl>"));
    };
    ASSERT_EQ(read(nested(200)), "[]");
    const QString damaged = QStringLiteral("The document \"w\" is damaged.");
    const QString other = QStringLiteral("The file \"w\" is not a Word document.");
    const QByteArray good = bytesOf("script.docx");
    const std::pair<QByteArray, QString> files[] = {
        {"", other},
        {"<html><table><tr><td>a</td></tr></table></html>", other},
        {bytesOf("script.xlsx"), other},
        {good.left(good.size() / 2), damaged},
        {nested(4000), damaged},
        {zipOf(documentParts(QByteArray("<w:p>").repeated(9000))), damaged},
        {zipOf({documentParts("").front()}), damaged},
        {zipOf(documentParts("<w:p/>")), kNoMember},
        {zipOf(documentParts(QByteArray(8 << 20, ' '))),
         QStringLiteral("The document \"w\" is too large to be read.")}};
    for (const auto& [bytes, fault] : files)
        EXPECT_EQ(read(bytes), fault) << bytes.size() << ' ' << bytes.left(20).toHex().constData();

    // On disk: without a table, protected, and cut short.
    const QTemporaryDir folder;
    const QByteArray letter = bytesOf("letter.doc");
    QByteArray locked = letter;
    locked[letter.indexOf("\xec\xa5") + 11] = '\x13';
    const std::pair<QByteArray, const char*> documents[] = {
        {letter, kNoMember},
        {locked, "The document \"it.doc\" is protected by a password."},
        {letter.left(3000), "The document \"it.doc\" is damaged."}};
    const QString path = folder.filePath(QStringLiteral("it.doc"));
    const auto open = [&] { return wholeOf(WordDocument::open(path).firstTable()); };
    EXPECT_EQ(resultOf(open), "File not found");
    for (const auto& [bytes, fault] : documents) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        EXPECT_EQ(resultOf(open), fault);
    }
}
