#include "project/naming_scheme.h"

#include "runtime/arithmetic.h"
#include "runtime/numbers.h"

namespace tarnwick::project {

QString NamingScheme::nameAfter(qint32 steps) const {
    return prefix + QString::number(runtime::add(vlFileNumber, steps)) + suffix;
}

QString NamingScheme::nameAt(qint32 position) const {
    return nameAfter(runtime::multiply<qint32>(viFileIncrement, position));
}

QString NamingScheme::previewAt(qint16 position) const {
    return nameAfter(runtime::multiply(viFileIncrement, position));
}

NamingScheme readScheme(const QString& prefix, const QString& start, const QString& increment,
                        const QString& suffix) {
    return {prefix, runtime::roundToLong(runtime::val(start)),
            runtime::roundToInteger(runtime::val(increment)), suffix};
}

}  // namespace tarnwick::project
