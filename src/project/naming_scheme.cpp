#include "project/naming_scheme.h"

#include "runtime/arithmetic.h"
#include "runtime/numbers.h"

namespace tarnwick::project {

QString NamingScheme::nameAt(qint32 position) const {
    const qint32 step = runtime::multiply<qint32>(viFileIncrement, position);
    return prefix + QString::number(runtime::add(vlFileNumber, step)) + suffix;
}

NamingScheme readScheme(const QString& prefix, const QString& start, const QString& increment,
                        const QString& suffix) {
    return {prefix, runtime::roundToLong(runtime::val(start)),
            runtime::roundToInteger(runtime::val(increment)), suffix};
}

}  // namespace tarnwick::project
