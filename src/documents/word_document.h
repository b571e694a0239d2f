#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "documents/word_table.h"

namespace tarnwick::documents {

// A Word document, read only: its first table. The whole file is read on opening and not kept open.
// Files are not trusted: anything wrong with one is a runtime::Fault with a plain sentence that
// names the file. One thread at a time.
class WordDocument {
  public:
    // `path`: full path of a .docx, or of a .doc, which the office suite converts first (about a
    // second). It also converts rich text under the name of a .doc, which some programs write. The
    // content, not the name, decides which of them it is.
    static WordDocument open(const QString& path);

    // The same from a .docx in memory; `name` is used in faults.
    static WordDocument fromBytes(const QByteArray& bytes, const QString& name);

    // If there is no table: "The requested member of the collection does not exist."
    const WordTable& firstTable() const;

  private:
    explicit WordDocument(std::optional<WordTable> table) : table_(std::move(table)) {}

    std::optional<WordTable> table_;
};

}  // namespace tarnwick::documents
