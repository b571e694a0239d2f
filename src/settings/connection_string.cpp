#include "settings/connection_string.h"

#include <QDir>
#include <optional>

#include "runtime/fault.h"
#include "settings/cipher.h"

namespace tarnwick::settings {

namespace {

constexpr QChar kQuote = u'"';
constexpr QChar kEnd = u';';

[[noreturn]] void invalid() { throw runtime::Fault(QStringLiteral("Invalid connection string.")); }

QString written(QString value) {
    if (!value.contains(kEnd) && !value.contains(kQuote)) return value;
    return kQuote + value.replace(kQuote, QString(2, kQuote)) + kQuote;
}

// The value that begins at `at`, which moves to its end.
QString readPlain(const QString& text, qsizetype& at) {
    const QString value = text.mid(at).section(kEnd, 0, 0);
    at += value.size();
    return value;
}

QString readQuoted(const QString& text, qsizetype& at) {
    QString value;
    for (;;) {
        const qsizetype begin = at + 1;
        const qsizetype end = text.indexOf(kQuote, begin);
        if (end < 0) invalid();
        value += text.mid(begin, end - begin);
        at = end + 1;
        if (at == text.size() || text[at] != kQuote) return value;
        value += kQuote;
    }
}

}  // namespace

QString connectionString(const QString& appPath) {
    const QString separator(QDir::separator());
    QString file = appPath;
    if (!file.endsWith(separator)) file += separator;
    file += QStringLiteral("Tarnwick.mdb");
    return QStringLiteral("Provider=SQLCipher;Data Source=") + written(file) +
           QStringLiteral(";Database Password=") + written(QString::fromLatin1(kDatabasePassword));
}

QString partOf(const QString& connectionString, const QString& name) {
    std::optional<QString> found;
    for (qsizetype at = 0; at < connectionString.size(); ++at) {
        const qsizetype equals = connectionString.indexOf(u'=', at);
        if (equals < 0) invalid();
        const bool wanted = QStringView(connectionString).mid(at, equals - at) == name;
        at = equals + 1;
        const bool quoted = at < connectionString.size() && connectionString[at] == kQuote;
        const QString value = (quoted ? readQuoted : readPlain)(connectionString, at);
        if (at < connectionString.size() && connectionString[at] != kEnd) invalid();
        if (wanted) found = value;
    }
    if (!found) invalid();
    return *found;
}

QString databaseFile(const QString& connectionString) {
    return partOf(connectionString, QStringLiteral("Data Source"));
}

}  // namespace tarnwick::settings
