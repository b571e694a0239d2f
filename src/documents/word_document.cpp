#include "documents/word_document.h"

#include <QFileInfo>

#include "documents/compound_file.h"
#include "documents/foreign_file.h"
#include "documents/office_converter.h"

namespace tarnwick::documents {

namespace {

const FileKind& kind() {
    static const FileKind document{QStringLiteral("document"), QStringLiteral("a Word document")};
    return document;
}

std::optional<WordTable> tableOf(const ZipPackage& package) {
    QString part;
    for (const Relationship& relation : package.relationships({}))
        if (relation.type == u"officeDocument") part = relation.target;
    if (part.isEmpty()) throw PackageError(PackageError::kNotAPackage);
    pugi::xml_document xml;
    package.readXml(part, xml);
    const pugi::xml_node root = xml.document_element();
    if (!isNamed(root, "document")) throw PackageError(PackageError::kNotAPackage);
    return firstTable(childNamed(root, "body"));
}

}  // namespace

WordDocument WordDocument::open(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const QByteArray bytes = readForeignFile(path, kind());
    if (bytes.startsWith("{\\rtf"))
        return fromBytes(newFormOf(bytes, kRichTextConversion, kind(), name), name);
    if (isCompoundFile(bytes))
        return fromBytes(newFormOf(bytes, documentConversion(bytes), kind(), name), name);
    return fromBytes(bytes, name);
}

WordDocument WordDocument::fromBytes(const QByteArray& bytes, const QString& name) {
    try {
        return WordDocument(tableOf(ZipPackage(bytes)));
    } catch (const PackageError& error) {
        failWith(error.reason, kind(), name);
    }
}

const WordTable& WordDocument::firstTable() const {
    if (!table_) noSuchMember();
    return *table_;
}

}  // namespace tarnwick::documents
