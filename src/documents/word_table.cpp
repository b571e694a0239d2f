#include "documents/word_table.h"

#include <algorithm>

#include "documents/cell_text.h"
#include "documents/word_markup.h"
#include "runtime/fault.h"

namespace tarnwick::documents {

namespace {

constexpr int kWidest = 1 << 14;  // most grid columns that one cell can span

// Visits the outermost elements of that name, also inside wrappers such as content controls,
// insertions and alternatives.
template <class Visit>
void eachNamed(const pugi::xml_node& parent, std::string_view name, Visit&& visit, int depth = 0) {
    checkDepth(depth);
    for (const pugi::xml_node& child : parent.children()) {
        const std::string_view found = localName(child);
        if (found == name)
            visit(child);
        else if (found == "AlternateContent")
            eachNamed(chosenBranch(child), name, visit, depth + 1);
        else if (found != "p" && found != "del" && found != "moveFrom")
            eachNamed(child, name, visit, depth + 1);
    }
}

int numberOf(const pugi::xml_node& property, int otherwise, int least) {
    return std::clamp(attributeNamed(property, "val").as_int(otherwise), least, kWidest);
}

// Whether a cell continues a merged group that an earlier cell began.
bool goesOn(const pugi::xml_node& merge) {
    return merge && std::string_view(attributeNamed(merge, "val").value()) != "restart";
}

// The grid positions in a row of cells in vertically merged groups, ascending.
using Merged = std::vector<qint64>;

WordTable::Row readRow(const pugi::xml_node& line, Merged& merged) {
    WordTable::Row row;
    const Merged above = std::exchange(merged, {});
    const pugi::xml_node lineProperties = childNamed(line, "trPr");
    qint64 place = numberOf(childNamed(lineProperties, "gridBefore"), 0, 0);
    bool mergedBefore = false;  // horizontally
    eachNamed(line, "tc", [&](const pugi::xml_node& cell) {
        const pugi::xml_node properties = childNamed(cell, "tcPr");
        const pugi::xml_node down = childNamed(properties, "vMerge");
        const pugi::xml_node across = childNamed(properties, "hMerge");
        if (down) merged.push_back(place);
        if (!(goesOn(across) && mergedBefore)) {
            // If no cell above begins the group, this is an ordinary cell.
            const bool belongsAbove =
                goesOn(down) && std::binary_search(above.begin(), above.end(), place);
            row.push_back(belongsAbove ? std::nullopt : std::optional(cellText(cell)));
        }
        mergedBefore = !across.empty();
        place += numberOf(childNamed(properties, "gridSpan"), 1, 1);
    });
    return row;
}

std::vector<WordTable::Row> readRows(const pugi::xml_node& table) {
    std::vector<WordTable::Row> rows;
    Merged merged;
    eachNamed(table, "tr", [&](const pugi::xml_node& line) {
        if (!childNamed(childNamed(line, "trPr"), "del")) rows.push_back(readRow(line, merged));
    });
    return rows;
}

}  // namespace

void noSuchMember() {
    throw runtime::Fault(QStringLiteral("The requested member of the collection does not exist."));
}

WordTable::WordTable(std::vector<Row> rows) : rows_(std::move(rows)) {
    for (const Row& row : rows_)
        columns_ = std::max(columns_, static_cast<qint32>(row.size()));
}

const QString& WordTable::text(qint32 row, qint32 column) const {
    if (row < 1 || row > rowCount() || column < 1) noSuchMember();
    const Row& cells = rows_[static_cast<std::size_t>(row - 1)];
    if (column > static_cast<qint32>(cells.size())) noSuchMember();
    const std::optional<QString>& cell = cells[static_cast<std::size_t>(column - 1)];
    if (!cell) noSuchMember();
    return *cell;
}

std::optional<WordTable> firstTable(const pugi::xml_node& body) {
    std::optional<WordTable> first;
    eachNamed(body, "tbl", [&](const pugi::xml_node& table) {
        if (first) return;
        std::vector<WordTable::Row> rows = readRows(table);
        if (!rows.empty()) first.emplace(std::move(rows));
    });
    return first;
}

}  // namespace tarnwick::documents
