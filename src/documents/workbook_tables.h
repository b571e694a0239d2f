#pragma once

#include <QString>
#include <vector>

#include "documents/number_format.h"
#include "documents/sheet.h"
#include "documents/zip_package.h"

namespace tarnwick::documents {

// What the sheets of one workbook share.
struct WorkbookTables {
    std::vector<QString> texts;         // what text cells refer to
    std::vector<NumberFormat> formats;  // by the style of a cell
    bool from1904 = false;              // days count from 1904
};

// The texts and formats of the parts of those names; none for an empty name. Throw PackageError.
std::vector<QString> readTexts(const ZipPackage& package, const QString& part);
std::vector<NumberFormat> readFormats(const ZipPackage& package, const QString& part);

// The cells of the worksheet that is the part of that name. Throws PackageError.
Sheet readSheet(const ZipPackage& package, const QString& part, const WorkbookTables& tables);

}  // namespace tarnwick::documents
