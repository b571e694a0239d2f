#pragma once

#include <QString>
#include <pugixml.hpp>

namespace tarnwick::documents {

// The text of a table cell in a Word document, with all tracked changes accepted:
//   - paragraphs are separated by CR, a line break is VT, a page break FF, a tab TAB;
//   - a table in the cell gives the paragraphs of its cells, one after the other;
//   - fields give their last result; struck-out and hidden text, pictures, text boxes and the marks
//     of notes and comments give nothing.
// Throws PackageError if elements are nested too deeply.
QString cellText(const pugi::xml_node& cell);

}  // namespace tarnwick::documents
