#include "settings/update_statement.h"

#include <cmath>

#include "runtime/fault.h"
#include "runtime/numbers.h"
#include "settings/quote.h"

namespace tarnwick::settings {

UpdateStatement& UpdateStatement::add(const QString& literal) {
    text_ += first_ ? QStringLiteral(" F") : QStringLiteral(", F");
    text_ += QString::number(column_++) + QStringLiteral(" = ") + literal;
    first_ = false;
    return *this;
}

UpdateStatement& UpdateStatement::number(QStringView entry) {
    const double value = runtime::val(entry);
    if (!std::isfinite(value))
        runtime::withDetail(QStringLiteral("the entry \"%1\"").arg(entry), runtime::overflow);
    return add(runtime::plainText(value));
}

UpdateStatement& UpdateStatement::asTyped(const QString& entry) {
    if (!runtime::isNumber(entry))
        throw runtime::Fault(QStringLiteral("Syntax error in number '%1'.").arg(entry));
    runtime::withDetail(QStringLiteral("the entry \"%1\"").arg(entry),
                        [&] { runtime::strictDouble(entry); });
    return add(entry);
}

UpdateStatement& UpdateStatement::integer(qint32 value) { return add(QString::number(value)); }

UpdateStatement& UpdateStatement::boolean(bool value) { return integer(value ? 1 : 0); }

UpdateStatement& UpdateStatement::quoted(const QString& text) {
    if (text.contains(u'\''))
        throw runtime::Fault(QStringLiteral("Syntax error in string '%1'.").arg(text));
    return quotedDoubled(text);
}

UpdateStatement& UpdateStatement::quotedDoubled(const QString& text) {
    return add(u'\'' + Quote_Doubled(text) + u'\'');
}

}  // namespace tarnwick::settings
