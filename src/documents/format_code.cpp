#include "documents/format_code.h"

namespace tarnwick::documents {

namespace {

constexpr QStringView kGeneralWord = u"General";

// The text from `at` up to but without `end`, or all the rest. Advances `at` past it and `end`.
QString textUpTo(QChar end, const QString& code, qsizetype& at) {
    qsizetype found = code.indexOf(end, at);
    if (found == -1) found = code.size();
    const QString text = code.sliced(at, found - at);
    at = found + 1;
    return text;
}

// [$kr-414] names a currency to show and a language; both may be missing.
CodePiece bracketed(const QString& inner) {
    if (!inner.startsWith(u'$')) return {CodePiece::kBrackets, inner};
    qsizetype end = inner.lastIndexOf(u'-');
    if (end == -1) end = inner.size();
    return {CodePiece::kText, inner.sliced(1, end - 1)};
}

CodePiece pieceAt(const QString& code, qsizetype& at) {
    if (QStringView(code).mid(at).startsWith(kGeneralWord, Qt::CaseInsensitive)) {
        at += kGeneralWord.size();
        return {CodePiece::kGeneral, {}};
    }
    const QChar first = code[at++];
    switch (first.unicode()) {
        case u'"':
            return {CodePiece::kText, textUpTo(u'"', code, at)};
        case u'[':
            return bracketed(textUpTo(u']', code, at));
        case u'\\':
            return {CodePiece::kText, code.mid(at++, 1)};
        case u'_':  // a space as wide as the next sign, or a sign that fills the cell: no text
        case u'*':
            ++at;
            return {};
        default:
            return {CodePiece::kSign, first};
    }
}

}  // namespace

std::vector<CodeSection> sectionsOf(const QString& code) {
    std::vector<CodeSection> sections(1);
    for (qsizetype at = 0; at < code.size();) {
        CodePiece piece = pieceAt(code, at);
        if (piece.sign() == u';')
            sections.emplace_back();
        else
            sections.back().push_back(std::move(piece));
    }
    return sections;
}

}  // namespace tarnwick::documents
