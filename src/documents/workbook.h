#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "documents/sheet.h"

namespace tarnwick::documents {

// A spreadsheet workbook, read only: the names of its worksheets and the texts of their cells.
// The whole file is read on opening and not kept open; a sheet is parsed when it is first
// requested. Hidden worksheets count, chart sheets do not.
// Files are not trusted: anything wrong with one is a runtime::Fault with a plain sentence that
// names the file. One thread at a time.
class Workbook {
  public:
    // `path`: full path of an .xlsx, or of an .xls, which the office suite converts first (about
    // a second). The content, not the name, decides which of the two it is.
    static Workbook open(const QString& path);

    // The same from an .xlsx in memory; `name` is used in faults.
    static Workbook fromBytes(const QByteArray& bytes, const QString& name);

    Workbook(Workbook&&) noexcept;
    Workbook& operator=(Workbook&&) noexcept;
    ~Workbook();

    int sheetCount() const;              // at least 1
    QString sheetName(int index) const;  // from 1
    // The references stay valid as long as the workbook. No such sheet: "Subscript out of range".
    const Sheet& sheet(int index) const;            // from 1
    const Sheet& sheet(const QString& name) const;  // without regard to case

  private:
    struct Content;
    explicit Workbook(std::unique_ptr<Content> content);

    std::unique_ptr<Content> content_;
};

}  // namespace tarnwick::documents
