#include "rename/new_names.h"

#include "runtime/fault.h"
#include "runtime/numbers.h"

namespace tarnwick::rename {

namespace {

constexpr int kLetters = 26;
constexpr int kLongestExtension = 4;  // without the dot

bool isSecondOfPair(const QString& name, qsizetype at) {
    return at > 0 && name[at].isLowSurrogate() && name[at - 1].isHighSurrogate();
}

// The number of characters; a surrogate pair counts as one.
qsizetype lengthOf(const QString& name) {
    qsizetype length = 0;
    for (qsizetype at = 0; at < name.size(); ++at)
        length += !isSecondOfPair(name, at);
    return length;
}

// The position after the first `count` characters, in text units.
qsizetype unitAfter(const QString& name, qsizetype count) {
    qsizetype at = 0;
    for (; at < name.size() && count > 0; --count) {
        ++at;
        if (at < name.size() && isSecondOfPair(name, at)) ++at;
    }
    return at;
}

QString first(const QString& name, qsizetype count) {
    if (count < 0) runtime::invalidCall();
    return name.left(unitAfter(name, count));
}

QString last(const QString& name, qsizetype count) {
    if (count < 0) runtime::invalidCall();
    return name.mid(unitAfter(name, std::max<qsizetype>(lengthOf(name) - count, 0)));
}

}  // namespace

QString lettersOf(int index) {
    return QString(index / kLetters + 1, QChar(u'A' + index % kLetters));
}

bool ExtensionLength::find(const QString& name) {
    const qsizetype length = lengthOf(name);
    for (int back = 1; back <= kLongestExtension; ++back) {
        if (length - back < 1) runtime::invalidCall();
        if (last(name, back + 1).front() != u'.') continue;
        length_ = back + 1;
        return true;
    }
    return false;
}

QString withSuffix(const QString& name, int extension, const QString& suffix) {
    return first(name, lengthOf(name) - extension) + suffix + last(name, extension);
}

QString withReplaced(const QString& name, const QString& search, const QString& replacement,
                     bool caseSensitive) {
    QString replaced = name;
    return replaced.replace(search, replacement,
                            caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive);
}

QString withInserted(const QString& name, double start, const QString& text) {
    const auto length = static_cast<double>(lengthOf(name));
    return first(name, runtime::roundToLong(start - 1)) + text +
           last(name, runtime::roundToLong(length - start + 1));
}

QString withRemoved(const QString& name, double start, double count) {
    const auto length = static_cast<double>(lengthOf(name));
    return first(name, runtime::roundToLong(start - 1)) +
           last(name, runtime::roundToLong(length - count - start + 1));
}

QString withExtension(const QString& name, const QString& source, const QString& target) {
    return name.endsWith(source) ? name.chopped(source.size()) + target : name;
}

}  // namespace tarnwick::rename
