#include "project/naming_scheme.h"

#include "runtime/arithmetic.h"
#include "runtime/numbers.h"

namespace tarnwick::project {

QString NamingScheme::nameAfter(qint32 steps) const {
    return prefix + QString::number(runtime::add(vlFileNumber, steps)) + suffix;
}

QString NamingScheme::nameAt(qint32 position) const {
    return runtime::withDetail(tooLarge(), [&] {
        return nameAfter(runtime::multiply<qint32>(viFileIncrement, position));
    });
}

QString NamingScheme::previewAt(qint16 position) const {
    return runtime::withDetail(
        tooLarge(), [&] { return nameAfter(runtime::multiply(viFileIncrement, position)); });
}

QString NamingScheme::tooLarge() const {
    return u"file names from %1 in steps of %2"_qs.arg(vlFileNumber).arg(viFileIncrement);
}

NamingScheme readScheme(const QString& prefix, const QString& start, const QString& increment,
                        const QString& suffix) {
    const auto number = [](const QString& caption, const QString& text, auto round) {
        return runtime::withDetail(u"%1 is \"%2\""_qs.arg(caption, text),
                                   [&] { return round(runtime::val(text)); });
    };
    return {prefix, number(u"Start at"_qs, start, runtime::roundToLong),
            number(u"Increment"_qs, increment, runtime::roundToInteger), suffix};
}

}  // namespace tarnwick::project
