#include "documents/word_document.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "documents/package_maker.h"
#include "support/fault_of.h"
#include "support/files.h"

using namespace tarnwick;
using documents::WordDocument;
using test::resultOf;
using test::writeFile;

namespace {

const QString kNoMember = QStringLiteral("The requested member of the collection does not exist.");

// The first table, rows in brackets, a bar between cells, a dash for one that is not there; or the
// fault.
template <class Open>
QString read(Open&& open) {
    return resultOf([&] {
        const WordDocument document = open();
        const documents::WordTable& table = document.firstTable();
        QString whole;
        for (qint32 row = 1; row <= table.rowCount(); ++row) {
            QStringList cells;
            for (qint32 column = 1; column <= table.columnCount(); ++column)
                cells << resultOf([&] { return table.text(row, column); });
            whole += u'[' + cells.join(u'|').replace(kNoMember, QStringLiteral("-")) + u']';
        }
        return whole;
    });
}

QString readBytes(const QByteArray& bytes) {
    return read([&] { return WordDocument::fromBytes(bytes, QStringLiteral("w")); });
}
QString readBody(const QByteArray& body) { return readBytes(zipOf(documentParts(body))); }

QString readFile(const QString& path) {
    return read([&] { return WordDocument::open(path); });
}

QByteArray row(const QByteArray& cells) { return "<tr>" + cells + "</tr>"; }
QByteArray cell(const QByteArray& text, const QByteArray& properties = {}) {
    return "<tc><tcPr>" + properties + "</tcPr><p><r><t>" + text + "</t></r></p></tc>";
}

}  // namespace

// Written by the office suite from script.fodt, and once by hand, for a form that it only reads.
TEST(WordDocument, EveryFormOfADocumentGivesTheSameTexts) {
    const QString folder = QStringLiteral(TARNWICK_TEST_DATA "/documents/");
    const QString lines =
        QStringLiteral(u"[NL_1|Welcome to the night line.][NL_2|First\vsecond\tthird\rGröße");
    const QString all =
        lines + QStringLiteral(
                    u", “quoted” & <marked> — 日本 𝄞][NL_3|][|See our page one  two "
                    u"no\u00a0break soft\u00adhyphen non\u2011breaking end page 1]"
                    u"[NL_5|before\rin 1\rin 2\rafter]");
    const QTemporaryDir other;
    const QString rich = other.filePath(QStringLiteral("rich.doc"));
    writeFile(rich, "{\\rtf1 x\\par\\trowd\\cellx999\\intbl a\\line b\\cell\\row\\pard}");
    EXPECT_EQ(readFile(folder + QStringLiteral("script.docx")), all);
    EXPECT_EQ(readFile(folder + QStringLiteral("script.doc")), all);
    EXPECT_EQ(readFile(folder + QStringLiteral("script_1995.doc")),
              lines + QStringLiteral("][NL_3|]"));
    EXPECT_EQ(readFile(rich), QStringLiteral("[a\vb]"));
}

TEST(WordDocument, TextInACell) {
    const QByteArray begin = "<fldChar fldCharType='begin'/><instrText>IF</instrText>",
                     separate = "<fldChar fldCharType='separate'/>",
                     end = "<fldChar fldCharType='end'/>";
    const std::pair<QByteArray, QString> cells[] = {
        {"", {}},
        {"<p/><p><r><t> a </t><t> &#9; </t><t xml:space='preserve'> b\n c </t></r></p>",
         QStringLiteral("\ra b  c ")},
        {"<p><pPr><tabs><tab/></tabs></pPr><r><t>a</t><tab/><cr/><br type='page'/>"
         "<sym char='2192'/><sym char='zz'/></r></p>",
         QStringLiteral(u"a\t\v\f→")},
        {"<sdt><sdtPr><tag val='x'/></sdtPr><sdtContent><p><smartTag><r><t>in</t></r></smartTag>"
         "<ins><r><t>serted</t></r></ins></p></sdtContent></sdt>",
         QStringLiteral("inserted")},
        {"<p><del><r><delText>x</delText><tab/></r></del><moveFrom><r><t>y</t></r></moveFrom>"
         "<moveTo><r><t>moved</t></r></moveTo></p>",
         QStringLiteral("moved")},
        {"<p><pPr><rPr><del/></rPr></pPr><r><t>one</t></r></p><p><r><t>line</t></r></p>",
         QStringLiteral("oneline")},
        {"<p><r><rPr><vanish/></rPr><t>x</t></r><r><rPr><vanish val='0'/></rPr><t>seen</t></r></p>",
         QStringLiteral("seen")},
        {"<p><r>" + begin + begin + separate + "<t>x</t>" + end + "<t>y</t>" + separate +
             "<t>result</t>" + end + end + "</r><fldSimple><r><t>7</t></r></fldSimple></p>",
         QStringLiteral("result7")},
        {"<p><r><AlternateContent><Choice><t>new</t></Choice><Fallback><t>old</t></Fallback>"
         "</AlternateContent><AlternateContent><Choice><t>er</t></Choice><Fallback/>"
         "</AlternateContent></r></p>",
         QStringLiteral("older")},
        {"<p><r><pict><txbxContent><p><r><t>x</t></r></p></txbxContent></pict><ruby><rt><r><t>x</t>"
         "</r></rt><rubyBase><r><t>base</t></r></rubyBase></ruby></r><oMath><r><t>+1</t></r>"
         "</oMath></p>",
         QStringLiteral("base+1")}};
    for (const auto& [content, text] : cells)
        EXPECT_EQ(readBody("<tbl>" + row("<tc>" + content + "</tc>") + "</tbl>"),
                  u'[' + text + u']');
}

TEST(WordDocument, RowsAndColumnsAreThoseThatAreThere) {
    const QByteArray begins = "<vMerge val='restart'/>", goesOn = "<vMerge/>";
    const QByteArray wide = "<gridSpan val='2'/>";
    const std::pair<QByteArray, const char*> tables[] = {
        {row(cell("a") + cell("b")) + row(cell("wide", wide)) + row(""), "[a|b][wide|-][-|-]"},
        {row(cell("tall", begins) + cell("b")) + row(cell("", goesOn) + cell("d")) +
             row(cell("e") + cell("", goesOn)),
         "[tall|b][-|d][e|]"},
        // Merged cells are found by their place on the grid, not by their number in the row.
        {row(cell("a", wide) + cell("tall", begins)) +
             row("<trPr><gridBefore val='1'/></trPr>" + cell("b") + cell("", goesOn)),
         "[a|tall][b|-]"},
        {row(cell("a", "<gridSpan val='0'/>") + cell("tall", begins)) +
             row("<trPr><gridBefore val='-1'/></trPr>" + cell("b", "<hMerge/>") + cell("", goesOn)),
         "[a|tall][b|-]"},
        {row(cell("a", "<hMerge val='restart'/>") + cell("", "<hMerge/>") + cell("b")), "[a|b]"},
        {"<sdt><sdtContent>" + row("<sdt>" + cell("a") + "</sdt>" + cell("b")) +
             "</sdtContent></sdt>" + row("<trPr><del/></trPr>" + cell("struck out")),
         "[a|b]"}};
    const QByteArray before = "<p><r><pict><txbxContent><tbl>" + row(cell("in a box")) +
                              "</tbl></txbxContent></pict></r></p><tbl/><sdt><sdtContent>",
                     after = "</sdtContent></sdt><tbl>" + row(cell("second")) + "</tbl>";
    for (const auto& [rows, whole] : tables)
        EXPECT_EQ(readBody(before + "<tbl>" + rows + "</tbl>" + after), whole);
    const auto document = WordDocument::fromBytes(
        zipOf(documentParts("<tbl>" + row(cell("a")) + "</tbl>")), QStringLiteral("w"));
    for (const auto& [line, column] : {std::pair(0, 1), {2, 1}, {1, 0}, {1, 2}})
        EXPECT_EQ(resultOf([&] { return document.firstTable().text(line, column); }), kNoMember);
}

TEST(WordDocument, BadFilesAreNamedForWhatTheyAre) {
    const auto nested = [](const QByteArray& open, const QByteArray& close, int times) {
        return zipOf(documentParts("<tbl><tr><tc>" + open.repeated(times) + close.repeated(times) +
                                   "</tc></tr></tbl>"));
    };
    const auto text = [](qsizetype length, const QByteArray& more) {
        return zipOf(
            documentParts("<tbl><tr>" + cell(QByteArray(length, 'x') + more) + "</tr></tbl>"));
    };
    const QString damaged = QStringLiteral("The document \"w\" is damaged.");
    const QString other = QStringLiteral("The file \"w\" is not a Word document.");
    const QString large = QStringLiteral("The document \"w\" is too large to be read.");
    for (const char* name : {"sdt", "p", "r", "AlternateContent"}) {
        const bool choice = name[0] == 'A';
        const QByteArray open = QByteArray("<") + name + (choice ? "><Choice>" : ">");
        const QByteArray close = QByteArray(choice ? "</Choice></" : "</") + name + ">";
        EXPECT_EQ(readBytes(nested(open, close, 250)), "[]") << name;
        EXPECT_EQ(readBytes(nested(open, close, 251)), damaged) << name;
        if (name == QByteArrayView("p") || name == QByteArrayView("r")) continue;
        const auto around = [&](int times) {
            return readBody(open.repeated(times) + "<tbl>" + row("") + "</tbl>" +
                            close.repeated(times));
        };
        EXPECT_EQ(around(250), "[]") << name;
        EXPECT_EQ(around(251), damaged) << name;
    }
    EXPECT_EQ(readBytes(text(1 << 16, "")).size(), (1 << 16) + 2);
    EXPECT_EQ(readBytes(text(1 << 16, "</t><t>y")), large);
    const QByteArray good = bytesOf("script.docx");
    const std::pair<QByteArray, QString> files[] = {
        {"", other},
        {"<html><table><tr><td>a</td></tr></table></html>", other},
        {bytesOf("script.xlsx"), other},
        {good.left(good.size() / 2), damaged},
        {nested("<tbl><tr><tc>", "</tc></tr></tbl>", 4000), damaged},
        {zipOf({documentParts("").front()}), damaged},
        {zipOf(documentParts("<p/>")), kNoMember},
        {zipOf(documentParts(QByteArray(8 << 20, ' '))), large}};
    for (const auto& [bytes, fault] : files)
        EXPECT_EQ(readBytes(bytes), fault) << bytes.size() << ' ' << bytes.left(99).constData();

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("it.doc"));
    EXPECT_EQ(readFile(path), "File not found");
    QByteArray letter = bytesOf("letter.doc");
    writeFile(path, letter);
    EXPECT_EQ(readFile(path), kNoMember);
    writeFile(path, letter.left(3000));
    EXPECT_EQ(readFile(path), "The document \"it.doc\" is damaged.");
    letter[letter.indexOf("\xec\xa5") + 11] = '\x13';
    writeFile(path, letter);
    EXPECT_EQ(readFile(path), "The document \"it.doc\" is protected by a password.");
}
