#include "platform/wildcards.h"

#include <algorithm>

namespace tarnwick::platform {

namespace {

qsizetype afterCharacter(QStringView text, qsizetype at) {
    return at + (text[at].isHighSurrogate() ? 2 : 1);
}

// Each star takes as few characters as possible; on a mismatch the last star takes one more. There
// is no need to go back further: the last star can take anything that an earlier one could.
bool fits(QStringView name, QStringView wildcard) {
    qsizetype n = 0, w = 0, afterStar = 0, resume = 0;
    while (n < name.size()) {
        const QChar wanted = w < wildcard.size() ? wildcard[w] : QChar();
        if (wanted == u'*') {
            afterStar = ++w;
            resume = n;
        } else if (wanted == u'?' || wanted == name[n]) {
            n = wanted == u'?' ? afterCharacter(name, n) : n + 1;
            ++w;
        } else if (afterStar > 0) {
            w = afterStar;
            n = resume = afterCharacter(name, resume);
        } else {
            return false;
        }
    }
    return std::all_of(wildcard.begin() + w, wildcard.end(), [](QChar c) { return c == u'*'; });
}

}  // namespace

Wildcards::Wildcards(const QStringList& patterns) {
    for (const QString& pattern : patterns) {
        const QString text = pattern.toCaseFolded();
        const bool bare = text.endsWith(u'.');
        const bool hidden = text.startsWith(u'.');
        patterns_ << Pattern{text.chopped(bare ? 1 : 0), bare, hidden};
        if (text.endsWith(u".*")) patterns_ << Pattern{text.chopped(2), true, hidden};
    }
}

bool Wildcards::match(const QString& name) const {
    const QString folded = name.toCaseFolded();
    return std::any_of(patterns_.begin(), patterns_.end(), [&](const Pattern& pattern) {
        return !(pattern.bare && name.contains(u'.')) &&
               (pattern.hidden || !name.startsWith(u'.')) && fits(folded, pattern.text);
    });
}

}  // namespace tarnwick::platform
