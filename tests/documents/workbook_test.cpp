#include "documents/workbook.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <QtEndian>

#include "documents/office_converter.h"
#include "documents/package_maker.h"
#include "support/fault_of.h"
#include "support/files.h"

using namespace tarnwick;
using documents::Sheet;
using documents::Workbook;
using test::faultOf;
using test::writeFile;

namespace {

QString data(const char* name) {
    return QStringLiteral(TARNWICK_TEST_DATA "/documents/") + QString::fromLatin1(name);
}

// What becomes of a file with those bytes: the text of its first cell, or the fault.
QString firstCell(const QByteArray& bytes) {
    return test::resultOf(
        [&] { return Workbook::fromBytes(bytes, QStringLiteral("w")).sheet(1).text(1, 1); });
}

Sheet sheetOf(const QByteArray& rows) {
    return Workbook::fromBytes(zipOf(workbookParts(rows)), QStringLiteral("w")).sheet(1);
}

}  // namespace

// Written by the office suite, read natively and through the converter.
class RealWorkbook : public testing::TestWithParam<const char*> {};

TEST_P(RealWorkbook, CellsAreWhatAPersonSees) {
    const Workbook workbook = Workbook::open(data(GetParam()));
    ASSERT_EQ(workbook.sheetCount(), 3);
    EXPECT_EQ(workbook.sheetName(1), "Prompts");
    EXPECT_EQ(workbook.sheetName(3), "Hidden");
    EXPECT_EQ(workbook.sheet(QStringLiteral("hidden")).text(1, 1), "unseen");
    EXPECT_EQ(faultOf([&] { workbook.sheet(0); }), "Subscript out of range");
    EXPECT_EQ(faultOf([&] { workbook.sheetName(4); }), "Subscript out of range");
    EXPECT_EQ(faultOf([&] { workbook.sheet(QStringLiteral("Prompt")); }), "Subscript out of range");
    // The old form has no format for conditions: the result of a formula is only a number there.
    const bool old = QString::fromLatin1(GetParam()).endsWith(QStringLiteral(".xls"));
    const struct {
        int sheet, row, column;
        QStringList texts;  // from that column on
    } rows[] = {{1, 1, 2, {"Prompt"}},
                {1, 2, 2, {"Welcome to the night line."}},
                {1, 3, 1, {"1500", QStringLiteral(u"Größe, “quoted” & <marked> — 日本")}},
                {1, 4, 1, {"", "First line\nsecond line", "one  two"}},
                {1, 45, 28, {"far away"}},
                {1, 1048577, 1, {""}},
                {1, 0, 1, {""}},
                {2, 1, 1, {"12.5", "0.1", "123456789012", "-7"}},
                {2, 2, 1, {"07/03/2020", "1999-12-31", "13:05:09"}},
                {2, 3, 1, {"12.5%", "0007", "1234.5"}},
                {2, 4, 1, {"True", old ? "0" : "False"}},
                {3, 1, 1, {"unseen"}},
                {2, 5, 1, {"25", "take_-7", "#DIV/0!"}}};
    for (const auto& [sheet, row, column, texts] : rows)
        for (int i = 0; i < texts.size(); ++i)
            EXPECT_EQ(workbook.sheet(sheet).text(row, column + i), texts[i]) << sheet << ' ' << row;
}

INSTANTIATE_TEST_SUITE_P(Workbook, RealWorkbook, testing::Values("script.xlsx", "script.xls"));

TEST(Workbook, ReadsWhatOtherWritersMake) {
    const Sheet sheet = sheetOf(
        "<row r='-1'><c><v>9</v></c></row>"
        "<row><c t='s'><v>0</v></c><c t='inlineStr'><is><r><t>in</t></r><r><t>line</t></r></is></c>"
        "<c/><c><v>1E3</v></c></row>"
        "<row r='1048576'><c r='XFD1048576'><v>0.30000000000000004</v></c>"
        "<c r='XFE1048576'><v>9</v></c></row>"
        "<row r='1048577'><c><v>9</v></c></row><row r='1048578'><c><v>9</v></c></row>"
        "<row r='3'><c r='B3' t='s'><v>1</v></c><c t='s'><v>2</v></c>"
        "<c t='b'><f>1=1</f><v>1</v></c><c t='str'><f>A1</f><v> x </v></c>"
        "<c><v>1e300</v></c><c><v>nan</v></c></row>"
        "<row r='4'><c s='1'><v>7</v></c><c s='1' t='s'><v>1</v></c>"
        "<c s='1' t='inlineStr'><is><t>in</t></is></c><c s='1' t='str'><v>x</v></c>"
        "<c s='1' t='b'><v>1</v></c><c s='1' t='e'><v>#N/A</v></c></row>"
        "<row><c t='inlineStr'><is><t>_x0041_<![CDATA[<b>]]>_xzzzz_ _x0042.</t></is></c>"
        "<c t='str'><v>_x00</v></c><c t='b'><v>0</v></c><c t='str'><v>_x0043_</v></c>"
        "<c><v>1x</v></c><c><v>1e999</v></c><c s='2'><v>7</v></c><c r='Z5'><v>26</v></c></row>");
    const struct {
        int row, column;
        const char* text;
    } cells[] = {{1, 1, "Two  runs"},  {1, 2, "inline"},        {1, 3, ""},
                 {1, 4, "1000"},       {3, 2, "a\rb"},          {3, 3, ""},
                 {3, 4, "True"},       {3, 5, " x "},           {3, 6, "1E+300"},
                 {3, 7, "nan"},        {1048576, 16384, "0.3"}, {4, 1, "VO_007"},
                 {4, 2, "VO_a\rb"},    {4, 3, "VO_in"},         {4, 4, "VO_x"},
                 {4, 5, "True"},       {4, 6, "#N/A"},          {5, 1, "A<b>_xzzzz_ _x0042."},
                 {5, 2, "_x00"},       {5, 3, "False"},         {5, 4, "C"},
                 {5, 5, "1x"},         {5, 6, "1e999"},         {5, 7, "7"},
                 {5, 26, "26"},        {1048575, 1, ""},        {1048576, 1, ""},
                 {1048576, 16385, ""}, {1048577, 1, ""}};
    for (const auto& [row, column, text] : cells)
        EXPECT_EQ(sheet.text(row, column), text) << row << ' ' << column;
}

TEST(Workbook, AFormulaWithoutItsResultIsKnown) {
    const Sheet sheet = sheetOf(
        "<row><c><f>1+1</f></c><c><f>1+1</f><v></v></c><c t='b'><f>1=1</f><v/></c>"
        "<c><f t='shared' si='0'/></c></row>"
        "<row><c><f>1+1</f><v>2</v></c><c t='str'><f>A9</f><v></v></c><c/><c t='e'><f>1/0</f>"
        "<v>#DIV/0!</v></c></row>");
    for (int column = 1; column <= 4; ++column) {
        EXPECT_TRUE(sheet.lacksResult(1, column) && sheet.text(1, column).isEmpty()) << column;
        EXPECT_FALSE(sheet.lacksResult(2, column)) << column;
    }
    EXPECT_FALSE(sheet.lacksResult(0, 1));
}

TEST(Workbook, BadFilesAreNamedForWhatTheyAre) {
    const QByteArray good = bytesOf("script.xlsx");
    const Parts parts = workbookParts("<row><c><v>1</v></c></row>");
    const QByteArray made = zipOf(parts);
    ASSERT_EQ(firstCell(made), "1");
    const auto with = [&](const char* part, const QByteArray& content) {
        Parts changed = parts;
        replacePart(changed, part, content);
        return zipOf(changed);
    };
    const QString damaged = QStringLiteral("The workbook \"w\" is damaged.");
    const QString other = QStringLiteral("The file \"w\" is not a workbook.");
    const QString large = QStringLiteral("The workbook \"w\" is too large to be read.");
    QByteArray flipped = good;
    flipped[flipped.indexOf("sheet1.xml") + 60] ^= 0x55;
    const auto rows = [](const QByteArray& text) { return zipOf(workbookParts(text)); };
    const std::pair<QByteArray, QString> files[] = {
        {"", other},
        {"no workbook at all", other},
        {zipOf({{"readme.txt", "x"}}), other},
        {with("_rels/.rels", "<Relationships/>"), other},
        {with("xl/workbook.xml", "<document/>"), other},
        {good.left(good.size() / 2), damaged},
        {flipped, damaged},
        {with("xl/workbook.xml", "<workbook><sheets>"), damaged},
        {with("xl/workbook.xml", ""), damaged},
        {with("XL/Worksheets/Sheet1.xml", "<chartsheet/>"), damaged},
        {zipOf({parts.begin(), parts.end() - 1}), damaged},
        {with("xl/_rels/workbook.xml.rels", "<Relationships/>"),
         QStringLiteral("The workbook \"w\" has no worksheets.")},
        {rows("<row><c t='s'><v>3</v></c></row>"), damaged},
        {rows("<row><c t='s'><v>-1</v></c></row>"), damaged},
        {rows("<row><c r='1A'><v>1</v></c></row>"), damaged},
        {rows("<row><c r='A'><v>1</v></c></row>"), damaged},
        {rows("<row><c r='A1x'><v>1</v></c></row>"), damaged},
        {rows(QByteArray(40 << 20, ' ')), large},
        {rows(QByteArray(8 << 20, ' ')), large}  // a bomb by its ratio
    };
    for (const auto& [bytes, fault] : files)
        EXPECT_EQ(firstCell(bytes), fault)
            << bytes.size() << ' ' << bytes.left(20).toHex().constData();
    // What the package says of its last part, before any of it is unpacked.
    constexpr quint32 kMost = 32 << 20, kFrom = 1 << 20;
    for (const auto& [size, packed, fault] : {std::tuple(kMost, kMost, damaged),
                                              {kMost + 1, kMost, large},
                                              {kFrom, 9u, damaged},
                                              {kFrom + 1, 9u, large},
                                              {300 * 5001u - 1, 5000u, damaged},
                                              {300 * 5001u, 5000u, large}}) {
        QByteArray stated = made;
        const qsizetype entry = stated.lastIndexOf("PK\1\2");
        qToLittleEndian(packed, stated.data() + entry + 20);
        qToLittleEndian(size, stated.data() + entry + 24);
        EXPECT_EQ(firstCell(stated), fault) << size << " of " << packed;
    }
    for (qsizetype end = 0; end < made.size(); end += 7)
        EXPECT_NE(firstCell(made.left(end)), "1") << end;
}

TEST(Workbook, BadFilesOnDisk) {
    const QTemporaryDir folder;
    const QString cut = folder.filePath(QStringLiteral("cut.xls"));  // a text, to the suite
    writeFile(cut, bytesOf("script.xls").left(3000));
    const QString most = folder.filePath(QStringLiteral("most")),
                  more = folder.filePath(QStringLiteral("more"));
    for (const auto& [path, size] : {std::pair(most, 128 << 20), {more, (128 << 20) + 1}}) {
        writeFile(path, "");
        QFile::resize(path, size);
    }
    const std::pair<QString, const char*> files[] = {
        {most, "The file \"most\" is not a workbook."},
        {more, "The workbook \"more\" is too large to be read."},
        {data("none.xlsx"), "File not found"},
        {data(""), "The file \"\" is not a workbook."},
        {data("encrypted.xls"), "The workbook \"encrypted.xls\" is protected by a password."},
        {data("letter.doc"), "The workbook \"letter.doc\" is damaged."},
        {cut, "The workbook \"cut.xls\" is damaged."},
        {data("script.fods"), "The file \"script.fods\" is not a workbook."}};
    for (const auto& [path, fault] : files)
        EXPECT_EQ(faultOf([&] { Workbook::open(path); }), fault) << path.toStdString();
}

// A stand-in for the suite, first on the search path.
TEST(OfficeConverter, TheSuiteIsMissingOrHangs) {
    const QByteArray document = bytesOf("script.xls");
    const QByteArray path = qgetenv("PATH");
    const QTemporaryDir folder;
    qputenv("PATH", folder.path().toUtf8());
    const auto convert = [&] {
        documents::convertDocument(document, documents::kWorkbookConversion, 300);
    };
    EXPECT_EQ(faultOf(convert),
              "LibreOffice is needed to read a .xls file. Please install the package "
              "libreoffice-calc.");
    const QString suite = folder.filePath(QStringLiteral("soffice"));
    writeFile(suite, "#!/bin/sh\n/bin/sleep 20 &\nwait\n");
    QFile::setPermissions(suite, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(faultOf(convert), "LibreOffice took too long to convert the file.");
    writeFile(suite, "#!/bin/sh\nexit 0\n");
    EXPECT_TRUE(documents::convertDocument(document, documents::kWorkbookConversion).isEmpty());
    writeFile(folder.filePath(QStringLiteral("soffice.bin")), "");
    EXPECT_NE(faultOf(convert), "none");  // there, but without its part for workbooks
    qputenv("PATH", path);
}
