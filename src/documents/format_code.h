#pragma once

#include <QString>
#include <vector>

namespace tarnwick::documents {

// A piece of a number format code.
struct CodePiece {
    enum Kind {
        kSign,      // one character, which may have a meaning: 0 # , . % / y m d h s @ ...
        kText,      // shown unchanged: quoted, escaped, or a currency; may be empty
        kBrackets,  // [Red], [h], [<100]
        kGeneral    // the word General: the number unchanged
    };
    Kind kind = kText;
    QString text;  // without the quotes, the backslash or the brackets

    // The character of a sign in lower case, '\0' for anything else.
    QChar sign() const { return kind == kSign ? text[0].toLower() : QChar(); }
    bool operator==(const CodePiece&) const = default;
};

using CodeSection = std::vector<CodePiece>;

// The sections of a code: for positive numbers, negative ones, 0 and texts. At least one.
std::vector<CodeSection> sectionsOf(const QString& code);

}  // namespace tarnwick::documents
