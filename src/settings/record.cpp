#include "settings/record.h"

#include "runtime/fault.h"
#include "runtime/numbers.h"

namespace tarnwick::settings {

void Record::add(const QString& name, const QVariant& value) { columns_.emplace_back(name, value); }

const QVariant& Record::column(const QString& name) const {
    for (const auto& [key, value] : columns_)
        if (key.compare(name, Qt::CaseInsensitive) == 0) return value;
    throw runtime::Fault(
        QStringLiteral("Item cannot be found in the collection corresponding to the requested "
                       "name or ordinal."));
}

const QVariant& Record::filled(const QString& name) const {
    const QVariant& value = column(name);
    if (!value.isValid()) throw runtime::Fault(QStringLiteral("Invalid use of Null"));
    return value;
}

bool Record::isNull(const QString& name) const { return !column(name).isValid(); }

QString Record::text(const QString& name) const {
    const QVariant& value = filled(name);
    if (value.typeId() == QMetaType::Double) return runtime::plainText(value.toDouble());
    return value.toString();
}

QString Record::textOr(const QString& name, const QString& onNull) const {
    return isNull(name) ? onNull : text(name);
}

// Applies `conversion` to the value of the column. A fault gets the column and the value as its
// detail.
template <class Conversion>
auto Record::converted(const QString& name, Conversion conversion) const {
    const QVariant& value = filled(name);
    return runtime::withDetail(QStringLiteral("stored value %1 is \"%2\"").arg(name, text(name)),
                               [&] { return conversion(value); });
}

bool Record::ticked(const QString& name) const {
    const qint32 value = number(name);
    return converted(name, [&](const QVariant&) { return runtime::roundToInteger(value) == 1; });
}

qint32 Record::number(const QString& name) const {
    return converted(name, [](const QVariant& value) {
        if (value.typeId() == QMetaType::QString) return runtime::strictLong(value.toString());
        return runtime::roundToLong(value.toDouble());
    });
}

double Record::real(const QString& name) const {
    return converted(name, [](const QVariant& value) {
        if (value.typeId() == QMetaType::QString) return runtime::strictDouble(value.toString());
        return value.toDouble();
    });
}

bool Record::isTrue(const QString& name) const {
    const QVariant& value = column(name);
    if (value.typeId() == QMetaType::QString)
        return value.toString().compare(QStringLiteral("True"), Qt::CaseInsensitive) == 0;
    return value.isValid() && value.toDouble() != 0.0;
}

}  // namespace tarnwick::settings
