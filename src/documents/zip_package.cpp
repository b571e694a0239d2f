#include "documents/zip_package.h"

#include <zip.h>

#include <QStringList>
#include <cstring>

namespace tarnwick::documents {

namespace {

constexpr zip_uint64_t kLargestPart = 32 << 20;  // bytes, unpacked
// Largest allowed ratio of unpacked to packed size for a large part. Deflate reaches 1032 for pure
// repetition; no real document comes near that.
constexpr zip_uint64_t kLargestRatio = 300;
constexpr zip_uint64_t kRatioCountsFrom = 1 << 20;
// Most elements and attributes in a part. Each takes about 50 bytes in memory, however short.
constexpr qsizetype kMostMarkup = 8'000'000;

struct FileCloser {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};

// "xl/worksheets" + "../media/x" = "xl/media/x"; a target with a leading slash starts at the root.
QString resolved(const QString& folder, const QString& target) {
    QStringList steps;
    if (!target.startsWith(u'/')) steps = folder.split(u'/', Qt::SkipEmptyParts);
    for (const QString& step : target.split(u'/', Qt::SkipEmptyParts)) {
        if (step == u"..") {
            if (!steps.isEmpty()) steps.removeLast();
        } else if (step != u".") {
            steps.append(step);
        }
    }
    return steps.join(u'/');
}

const char* afterColon(const char* name) {
    const char* colon = std::strchr(name, ':');
    return colon ? colon + 1 : name;
}

}  // namespace

void ZipPackage::Closer::operator()(zip* archive) const { zip_discard(archive); }

ZipPackage::ZipPackage(const QByteArray& bytes) : bytes_(bytes) {
    if (!bytes_.startsWith("PK")) throw PackageError(PackageError::kNotAPackage);
    zip_source_t* source = zip_source_buffer_create(
        bytes_.constData(), static_cast<zip_uint64_t>(bytes_.size()), 0, nullptr);
    if (!source) throw PackageError(PackageError::kDamaged);
    archive_.reset(zip_open_from_source(source, ZIP_RDONLY, nullptr));
    if (!archive_) {
        zip_source_free(source);
        throw PackageError(PackageError::kDamaged);
    }
}

ZipPackage::~ZipPackage() = default;

bool ZipPackage::contains(const QString& part) const {
    return zip_name_locate(archive_.get(), part.toUtf8().constData(), ZIP_FL_NOCASE) >= 0;
}

QByteArray ZipPackage::part(const QString& name) const {
    const zip_int64_t index =
        zip_name_locate(archive_.get(), name.toUtf8().constData(), ZIP_FL_NOCASE);
    if (index < 0) throw PackageError(PackageError::kMissingPart);
    zip_stat_t status;
    constexpr zip_uint64_t kNeeded = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE;
    if (zip_stat_index(archive_.get(), static_cast<zip_uint64_t>(index), 0, &status) != 0 ||
        (status.valid & kNeeded) != kNeeded)
        throw PackageError(PackageError::kDamaged);
    if ((status.valid & ZIP_STAT_ENCRYPTION_METHOD) && status.encryption_method != ZIP_EM_NONE)
        throw PackageError(PackageError::kEncrypted);
    if (status.size > kLargestPart ||
        (status.size > kRatioCountsFrom && status.size / kLargestRatio > status.comp_size))
        throw PackageError(PackageError::kTooLarge);

    const std::unique_ptr<zip_file_t, FileCloser> file(
        zip_fopen_index(archive_.get(), static_cast<zip_uint64_t>(index), 0));
    if (!file) throw PackageError(PackageError::kDamaged);
    QByteArray content(static_cast<qsizetype>(status.size), Qt::Uninitialized);
    zip_uint64_t filled = 0;
    zip_int64_t count = 0;
    while (filled < status.size &&
           (count = zip_fread(file.get(), content.data() + filled, status.size - filled)) > 0)
        filled += static_cast<zip_uint64_t>(count);
    // Reading past the end makes the library verify the checksum.
    char beyond;
    if (filled != status.size || zip_fread(file.get(), &beyond, sizeof beyond) != 0)
        throw PackageError(PackageError::kDamaged);
    return content;
}

void ZipPackage::readXml(const QString& name, pugi::xml_document& document) const {
    const QByteArray content = part(name);
    // A shorter part has room for fewer, so only a long one is worth counting.
    if (content.size() > kMostMarkup && content.count('<') + content.count('=') > kMostMarkup)
        throw PackageError(PackageError::kTooLarge);
    // Keep text that is only white space: it can be the blank between two runs.
    if (!document.load_buffer(content.constData(), static_cast<std::size_t>(content.size()),
                              pugi::parse_default | pugi::parse_ws_pcdata_single))
        throw PackageError(PackageError::kDamaged);
}

QHash<QString, Relationship> ZipPackage::relationships(const QString& part) const {
    const qsizetype slash = part.lastIndexOf(u'/');
    const QString folder = part.left(slash + 1);
    const QString name =
        folder + QStringLiteral("_rels/") + part.mid(slash + 1) + QStringLiteral(".rels");
    QHash<QString, Relationship> relations;
    if (!contains(name)) return relations;
    pugi::xml_document document;
    readXml(name, document);
    for (const pugi::xml_node& node : document.document_element().children()) {
        const QString type = QString::fromUtf8(attributeNamed(node, "Type").value());
        relations.insert(
            QString::fromUtf8(attributeNamed(node, "Id").value()),
            {type.mid(type.lastIndexOf(u'/') + 1),
             resolved(folder, QString::fromUtf8(attributeNamed(node, "Target").value()))});
    }
    return relations;
}

std::string_view localName(const pugi::xml_node& node) { return afterColon(node.name()); }

bool isNamed(const pugi::xml_node& node, const char* name) {
    return std::strcmp(afterColon(node.name()), name) == 0;
}

QByteArray textIn(const pugi::xml_node& node) {
    QByteArray text;
    for (const pugi::xml_node& child : node.children())
        text += child.value();  // empty of an element
    return text;
}

pugi::xml_node childNamed(const pugi::xml_node& parent, const char* name) {
    for (const pugi::xml_node& child : parent.children())
        if (isNamed(child, name)) return child;
    return {};
}

pugi::xml_attribute attributeNamed(const pugi::xml_node& node, const char* name) {
    for (const pugi::xml_attribute& attribute : node.attributes())
        if (std::strcmp(afterColon(attribute.name()), name) == 0) return attribute;
    return {};
}

}  // namespace tarnwick::documents
