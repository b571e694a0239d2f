#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "documents/word_table.h"

namespace tarnwick::documents {

// A Word document, read only: its first table. The file is read whole on opening and not held open.
// Every file is taken for hostile: whatever is wrong with it is a runtime::Fault with a plain
// sentence that names the file. One thread at a time.
class WordDocument {
  public:
    // `path`: full path of a .docx, or of a .doc, which the office suite converts first (about a
    // second); so it does with a rich text that bears the name of a .doc, as other programs write
    // it. Which of them it is, the content tells, not the name.
    static WordDocument open(const QString& path);

    // The same from a .docx in memory; `name` stands in the faults.
    static WordDocument fromBytes(const QByteArray& bytes, const QString& name);

    // Without any table: "The requested member of the collection does not exist."
    const WordTable& firstTable() const;

  private:
    explicit WordDocument(std::optional<WordTable> table) : table_(std::move(table)) {}

    std::optional<WordTable> table_;
};

}  // namespace tarnwick::documents
