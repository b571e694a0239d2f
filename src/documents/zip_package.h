#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>
#include <pugixml.hpp>
#include <stdexcept>
#include <string_view>

struct zip;

namespace tarnwick::documents {

// What is wrong with a package. Its reader turns this into a fault that names the file.
class PackageError : public std::runtime_error {
  public:
    enum Reason { kNotAPackage, kDamaged, kEncrypted, kTooLarge, kMissingPart };

    explicit PackageError(Reason reason) : std::runtime_error("package"), reason(reason) {}

    const Reason reason;
};

// A relation from one part to another. `type` is the last step of the type's address ("worksheet"),
// `target` the full name of the part inside the package.
struct Relationship {
    QString type;
    QString target;
};

// The zip container of new office documents: named parts, most of them XML, and the relations
// between them. It works on bytes in memory and refuses parts that would unpack to excessive sizes.
// Every function but contains throws PackageError.
class ZipPackage {
  public:
    explicit ZipPackage(const QByteArray& bytes);
    ~ZipPackage();
    ZipPackage(const ZipPackage&) = delete;
    ZipPackage& operator=(const ZipPackage&) = delete;

    bool contains(const QString& part) const;  // names without regard to case
    QByteArray part(const QString& name) const;
    void readXml(const QString& name, pugi::xml_document& document) const;

    // The relations of a part by their identifier; of the package itself for an empty name. Empty
    // if there are none.
    QHash<QString, Relationship> relationships(const QString& part) const;

  private:
    QByteArray bytes_;
    struct Closer {
        void operator()(zip* archive) const;
    };
    std::unique_ptr<zip, Closer> archive_;
};

// Access to elements and attributes by local name, with any namespace prefix. A missing one is a
// null node or attribute.
std::string_view localName(const pugi::xml_node& node);
bool isNamed(const pugi::xml_node& node, const char* name);
QByteArray textIn(const pugi::xml_node& node);  // what stands directly in it, in all its pieces
pugi::xml_node childNamed(const pugi::xml_node& parent, const char* name);
pugi::xml_attribute attributeNamed(const pugi::xml_node& node, const char* name);

}  // namespace tarnwick::documents
