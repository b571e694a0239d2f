#include <algorithm>
#include <stdexcept>

#include "documents/compound_file.h"
#include "documents/office_converter.h"
#include "documents/package_maker.h"
#include "documents/word_document.h"
#include "documents/workbook.h"
#include "runtime/fault.h"
#include "targets.h"

// Targets for the readers of documents. Add one here for each new reader; it must use everything it
// reads.

namespace tarnwick::fuzz {

namespace {

using namespace tarnwick::documents;

QByteArray copyOf(Bytes bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

void readWorkbook(const QByteArray& bytes) {
    try {
        const Workbook workbook = Workbook::fromBytes(bytes, QStringLiteral("fuzz"));
        for (int sheet = 1; sheet <= workbook.sheetCount(); ++sheet)
            for (qint32 row = 1; row <= 40; ++row)
                for (qint32 column = 1; column <= 10; ++column)
                    workbook.sheet(sheet).text(row, column);
    } catch (const runtime::Fault&) {
    }
}

// Returns the total number of characters in the cells of its table.
qsizetype readDocument(const QByteArray& bytes) {
    qsizetype characters = 0;
    try {
        const WordDocument document = WordDocument::fromBytes(bytes, QStringLiteral("fuzz"));
        const WordTable& table = document.firstTable();
        for (qint32 row = 0; row <= table.rowCount(); ++row)
            for (qint32 column = 1; column <= std::min(table.columnCount(), 50); ++column)
                try {
                    characters += table.text(row, column).size();
                } catch (const runtime::Fault&) {  // no such cell
                }
    } catch (const runtime::Fault&) {
    }
    return characters;
}

// Relations of a workbook to every kind of part that the reader uses.
constexpr char kRelations[] =
    "<Relationships><Relationship Id='s' Type='http://x/worksheet' "
    "Target='worksheets/sheet1.xml'/><Relationship Id='t' Type='http://x/sharedStrings' "
    "Target='sharedStrings.xml'/><Relationship Id='f' Type='http://x/styles' "
    "Target='styles.xml'/></Relationships>";

}  // namespace

void compoundFile(Bytes bytes) {
    const QByteArray file = copyOf(bytes);
    isPasswordProtected(file);
    const CompoundFile compound(file);
    for (const QStringView name : {u"Workbook", u"WordDocument", u"1Table"})
        if (compound.stream(name).size() > file.size())
            throw std::logic_error("a stream larger than its file");
}

void workbook(Bytes bytes) { readWorkbook(copyOf(bytes)); }

void workbookParts(Bytes bytes) {
    const QList<QByteArray> given = copyOf(bytes).split('\0');
    Parts parts = workbookParts(given.value(0));
    replacePart(parts, "xl/_rels/workbook.xml.rels", kRelations);
    replacePart(parts, "xl/sharedStrings.xml", given.value(1));
    replacePart(parts, "xl/styles.xml", given.value(2));
    if (given.size() > 3) replacePart(parts, "xl/workbook.xml", given[3]);
    if (given.size() > 4) replacePart(parts, "xl/_rels/workbook.xml.rels", given[4]);
    readWorkbook(zipOf(parts));
}

void wordDocument(Bytes bytes) { readDocument(copyOf(bytes)); }

void wordBody(Bytes bytes) {
    const QByteArray body = copyOf(bytes);
    if (readDocument(zipOf(documentParts(body))) > body.size())
        throw std::logic_error("more text than there is in the document");
}

}  // namespace tarnwick::fuzz
