#include "documents/workbook_tables.h"

#include <QHash>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <string_view>

namespace tarnwick::documents {

namespace {

// Workbooks write characters that XML cannot hold as "_x000D_".
QString unescaped(QString text) {
    for (qsizetype at = 0; (at = text.indexOf(u"_x", at)) >= 0; ++at) {
        if (at + 7 > text.size() || text[at + 6] != u'_') continue;
        bool hexadecimal = false;
        const ushort code = QStringView(text).mid(at + 2, 4).toUShort(&hexadecimal, 16);
        if (hexadecimal) text.replace(at, 7, QChar(code));
    }
    return text;
}

// The text of a shared or an inline string, either plain or in several runs. Phonetic runs (the
// pronunciation) are not part of it.
QString stringText(const pugi::xml_node& string) {
    QByteArray text;
    for (const pugi::xml_node& child : string.children()) {
        if (isNamed(child, "t"))
            text += textIn(child);
        else if (isNamed(child, "r"))
            text += textIn(childNamed(child, "t"));
    }
    return unescaped(QString::fromUtf8(text));
}

// Parses "BC12" into row and column; false if it is not such a reference.
bool parseReference(const char* reference, qint32& row, qint32& column) {
    qint32 letters = 0;
    const char* at = reference;
    for (; *at >= 'A' && *at <= 'Z' && letters <= kMaximumColumns; ++at)
        letters = letters * 26 + (*at - 'A' + 1);
    qint32 number = 0;
    const auto [end, error] = std::from_chars(at, at + std::strlen(at), number);
    if (letters == 0 || error != std::errc() || *end != '\0') return false;
    row = number;
    column = letters;
    return true;
}

QString numberText(const QByteArray& value, const NumberFormat& format, bool from1904) {
    double number = 0.0;
    const auto [end, error] =
        std::from_chars(value.constData(), value.constData() + value.size(), number);
    if (error != std::errc() || *end != '\0' || !std::isfinite(number))
        return QString::fromUtf8(value);
    return format.format(number, from1904);
}

const NumberFormat& formatOf(const pugi::xml_node& cell, const WorkbookTables& tables) {
    static const NumberFormat plain;
    const unsigned style = attributeNamed(cell, "s").as_uint();
    return style < tables.formats.size() ? tables.formats[style] : plain;
}

// A stored result of type text may be empty; a result of any other type has a value.
bool lacksResult(const pugi::xml_node& cell) {
    return childNamed(cell, "f") && textIn(childNamed(cell, "v")).isEmpty() &&
           attributeNamed(cell, "t").as_string("n") != std::string_view("str");
}

QString cellText(const pugi::xml_node& cell, const WorkbookTables& tables) {
    const QByteArray type = attributeNamed(cell, "t").as_string("n");
    const NumberFormat& format = formatOf(cell, tables);
    if (type == "inlineStr") return format.format(stringText(childNamed(cell, "is")));
    const QByteArray value = textIn(childNamed(cell, "v"));
    if (value.isEmpty()) return {};
    if (type == "s") {
        bool valid = false;
        const qulonglong index = value.trimmed().toULongLong(&valid);
        if (!valid || index >= tables.texts.size()) throw PackageError(PackageError::kDamaged);
        return format.format(tables.texts[index]);
    }
    if (type == "b")
        return value.trimmed() == "1" ? QStringLiteral("True") : QStringLiteral("False");
    if (type == "n") return numberText(value.trimmed(), format, tables.from1904);
    const QString text = unescaped(QString::fromUtf8(value));
    return type == "str" ? format.format(text) : text;  // formula result; else an error or ISO date
}

}  // namespace

std::vector<QString> readTexts(const ZipPackage& package, const QString& part) {
    std::vector<QString> texts;
    if (part.isEmpty()) return texts;
    pugi::xml_document document;
    package.readXml(part, document);
    for (const pugi::xml_node& string : document.document_element().children())
        if (isNamed(string, "si")) texts.push_back(stringText(string));
    return texts;
}

std::vector<NumberFormat> readFormats(const ZipPackage& package, const QString& part) {
    std::vector<NumberFormat> formats;
    if (part.isEmpty()) return formats;
    pugi::xml_document document;
    package.readXml(part, document);
    const pugi::xml_node root = document.document_element();
    QHash<int, NumberFormat> own;
    for (const pugi::xml_node& format : childNamed(root, "numFmts").children())
        own.insert(attributeNamed(format, "numFmtId").as_int(),
                   NumberFormat(QString::fromUtf8(attributeNamed(format, "formatCode").value())));
    for (const pugi::xml_node& style : childNamed(root, "cellXfs").children()) {
        const int number = attributeNamed(style, "numFmtId").as_int();
        const auto found = own.constFind(number);
        formats.push_back(found == own.cend() ? NumberFormat::builtIn(number) : *found);
    }
    return formats;
}

Sheet readSheet(const ZipPackage& package, const QString& part, const WorkbookTables& tables) {
    pugi::xml_document document;
    package.readXml(part, document);
    const pugi::xml_node root = document.document_element();
    if (!isNamed(root, "worksheet")) throw PackageError(PackageError::kDamaged);
    Sheet sheet;
    qint32 row = 0;  // a row or cell without a position follows the previous one
    for (const pugi::xml_node& line : childNamed(root, "sheetData").children()) {
        if (!isNamed(line, "row")) continue;
        row = std::clamp(attributeNamed(line, "r").as_int(row + 1), 0, kMaximumRows + 1);
        qint32 column = 0;
        for (const pugi::xml_node& cell : line.children()) {
            if (!isNamed(cell, "c")) continue;
            column = std::min(column, kMaximumColumns) + 1;
            qint32 place = row;
            const pugi::xml_attribute reference = attributeNamed(cell, "r");
            if (reference && !parseReference(reference.value(), place, column))
                throw PackageError(PackageError::kDamaged);
            sheet.setText(place, column, cellText(cell, tables));
            if (lacksResult(cell)) sheet.setLacksResult(place, column);
        }
    }
    return sheet;
}

}  // namespace tarnwick::documents
