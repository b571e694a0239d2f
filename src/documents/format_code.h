#pragma once

#include <QString>
#include <vector>

namespace tarnwick::documents {

// A piece of a number format code.
struct CodePiece {
    enum Kind {
        kSign,      // one character, which may mean something: 0 # , . % / y m d h s @ ...
        kText,      // shown as it stands: quoted, escaped, or a currency; also empty
        kBrackets,  // [Red], [h], [<100]
        kGeneral    // the word General: the number as it is
    };
    Kind kind = kText;
    QString text;  // without the quotes, the backslash or the brackets

    // The character of a sign in small letters, '\0' of anything else.
    QChar sign() const { return kind == kSign ? text[0].toLower() : QChar(); }
    bool operator==(const CodePiece&) const = default;
};

using CodeSection = std::vector<CodePiece>;

// The parts of a code: for positive numbers, negative ones, 0 and texts. One at least.
std::vector<CodeSection> sectionsOf(const QString& code);

}  // namespace tarnwick::documents
