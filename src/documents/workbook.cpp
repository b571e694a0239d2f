#include "documents/workbook.h"

#include <QFileInfo>
#include <optional>

#include "documents/compound_file.h"
#include "documents/foreign_file.h"
#include "documents/office_converter.h"
#include "documents/workbook_tables.h"
#include "documents/zip_package.h"
#include "runtime/fault.h"

namespace tarnwick::documents {

namespace {

const FileKind& kind() {
    static const FileKind workbook{QStringLiteral("workbook"), QStringLiteral("a workbook")};
    return workbook;
}

}  // namespace

struct Workbook::Content {
    struct Entry {
        QString name;
        QString part;
        std::optional<Sheet> sheet;  // read at the first request
    };

    Content(const QByteArray& bytes, const QString& name) : name(name), package(bytes) { load(); }

    void load();
    const Sheet& sheet(Entry& entry) const;

    QString name;
    ZipPackage package;
    WorkbookTables tables;
    std::vector<Entry> entries;
};

void Workbook::Content::load() {
    QString workbook;
    for (const Relationship& relation : package.relationships({}))
        if (relation.type == u"officeDocument") workbook = relation.target;
    if (!workbook.endsWith(u".xml", Qt::CaseInsensitive))
        throw PackageError(PackageError::kNotAPackage);
    pugi::xml_document document;
    package.readXml(workbook, document);
    const pugi::xml_node root = document.document_element();
    if (!isNamed(root, "workbook")) throw PackageError(PackageError::kNotAPackage);

    const QHash<QString, Relationship> relations = package.relationships(workbook);
    for (const pugi::xml_node& sheet : childNamed(root, "sheets").children()) {
        if (!isNamed(sheet, "sheet")) continue;
        const Relationship relation =
            relations.value(QString::fromUtf8(attributeNamed(sheet, "id").value()));
        if (relation.type == u"worksheet")
            entries.push_back({QString::fromUtf8(attributeNamed(sheet, "name").value()),
                               relation.target, std::nullopt});
    }
    QString texts, styles;
    for (const Relationship& relation : relations) {
        if (relation.type == u"sharedStrings") texts = relation.target;
        if (relation.type == u"styles") styles = relation.target;
    }
    tables.texts = readTexts(package, texts);
    tables.formats = readFormats(package, styles);
    tables.from1904 = attributeNamed(childNamed(root, "workbookPr"), "date1904").as_bool();
}

const Sheet& Workbook::Content::sheet(Entry& entry) const {
    if (!entry.sheet) {
        try {
            entry.sheet = readSheet(package, entry.part, tables);
        } catch (const PackageError& error) {
            failWith(error.reason, kind(), name);
        }
    }
    return *entry.sheet;
}

Workbook::Workbook(std::unique_ptr<Content> content) : content_(std::move(content)) {}
Workbook::Workbook(Workbook&&) noexcept = default;
Workbook& Workbook::operator=(Workbook&&) noexcept = default;
Workbook::~Workbook() = default;

Workbook Workbook::open(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    const QByteArray bytes = readForeignFile(path, kind());
    if (!isCompoundFile(bytes)) return fromBytes(bytes, name);
    return fromBytes(newFormOf(bytes, kWorkbookConversion, kind(), name), name);
}

Workbook Workbook::fromBytes(const QByteArray& bytes, const QString& name) {
    std::unique_ptr<Content> content;
    try {
        content = std::make_unique<Content>(bytes, name);
    } catch (const PackageError& error) {
        failWith(error.reason, kind(), name);
    }
    if (content->entries.empty())
        throw runtime::Fault(QStringLiteral("The workbook \"%1\" has no worksheets.").arg(name));
    return Workbook(std::move(content));
}

int Workbook::sheetCount() const { return static_cast<int>(content_->entries.size()); }

QString Workbook::sheetName(int index) const {
    if (index < 1 || index > sheetCount()) runtime::subscriptOutOfRange();
    return content_->entries[static_cast<std::size_t>(index - 1)].name;
}

const Sheet& Workbook::sheet(int index) const {
    if (index < 1 || index > sheetCount()) runtime::subscriptOutOfRange();
    return content_->sheet(content_->entries[static_cast<std::size_t>(index - 1)]);
}

const Sheet& Workbook::sheet(const QString& name) const {
    for (Content::Entry& entry : content_->entries)
        if (entry.name.compare(name, Qt::CaseInsensitive) == 0) return content_->sheet(entry);
    runtime::subscriptOutOfRange();
}

}  // namespace tarnwick::documents
