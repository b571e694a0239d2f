#pragma once

#include <QString>
#include <vector>

#include "documents/number_format.h"
#include "documents/sheet.h"
#include "documents/zip_package.h"

namespace tarnwick::documents {

// Data shared by the sheets of one workbook.
struct WorkbookTables {
    std::vector<QString> texts;         // shared strings that text cells refer to
    std::vector<NumberFormat> formats;  // indexed by the style of a cell
    bool from1904 = false;              // days count from 1904
};

// Read the texts and formats from the named part; empty for an empty name. Throw PackageError.
std::vector<QString> readTexts(const ZipPackage& package, const QString& part);
std::vector<NumberFormat> readFormats(const ZipPackage& package, const QString& part);

// Reads the cells of the worksheet in the named part. Throws PackageError.
Sheet readSheet(const ZipPackage& package, const QString& part, const WorkbookTables& tables);

}  // namespace tarnwick::documents
