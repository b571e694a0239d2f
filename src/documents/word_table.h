#pragma once

#include <QString>
#include <optional>
#include <pugixml.hpp>
#include <vector>

namespace tarnwick::documents {

// One table of a Word document: the texts of its cells as Cell(row, column) gives them, without
// the mark that ends a cell. A row counts the cells that it has, however wide they are, from 1;
// so rows need not be equally long.
class WordTable {
  public:
    // A cell that belongs to the one above it has a place in its row, but no text of its own.
    using Row = std::vector<std::optional<QString>>;

    explicit WordTable(std::vector<Row> rows);

    qint32 rowCount() const { return static_cast<qint32>(rows_.size()); }
    qint32 columnCount() const { return columns_; }  // of the longest row

    // Rows and columns count from 1. Outside the table, past the end of a short row and for a cell
    // that belongs to the one above: "The requested member of the collection does not exist."
    const QString& text(qint32 row, qint32 column) const;

  private:
    std::vector<Row> rows_;
    qint32 columns_ = 0;
};

// The fault with the words above.
[[noreturn]] void noSuchMember();

// The first table in the body of a document; none when there is no table. Tables in text boxes and
// rows that are struck out do not count. Throws PackageError for elements nested without reason.
std::optional<WordTable> firstTable(const pugi::xml_node& body);

}  // namespace tarnwick::documents
