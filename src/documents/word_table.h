#pragma once

#include <QString>
#include <optional>
#include <pugixml.hpp>
#include <vector>

namespace tarnwick::documents {

// One table of a Word document: the texts of its cells as Cell(row, column) gives them, without
// the mark that ends a cell. The cells of a row are counted from 1, whatever their width, so rows
// can differ in length.
class WordTable {
  public:
    // nullopt: a cell merged into the one above, which keeps its place in the row but has no text.
    using Row = std::vector<std::optional<QString>>;

    explicit WordTable(std::vector<Row> rows);

    qint32 rowCount() const { return static_cast<qint32>(rows_.size()); }
    qint32 columnCount() const { return columns_; }  // of the longest row

    // Rows and columns count from 1. Outside the table, past the end of a short row and for a cell
    // merged into the one above: "The requested member of the collection does not exist."
    const QString& text(qint32 row, qint32 column) const;

  private:
    std::vector<Row> rows_;
    qint32 columns_ = 0;
};

// Throws the fault with the words above.
[[noreturn]] void noSuchMember();

// The first table in the body of a document; nullopt if there is none. Tables in text boxes and
// rows that are struck out do not count. Throws PackageError if elements are nested too deeply.
std::optional<WordTable> firstTable(const pugi::xml_node& body);

}  // namespace tarnwick::documents
