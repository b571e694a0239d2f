#pragma once

#include "runtime/fault.h"

namespace tarnwick::test {

// The result of `call`, or the description of the fault it throws.
template <class Call>
QString resultOf(Call&& call) {
    try {
        return call();
    } catch (const runtime::Fault& fault) {
        return fault.description();
    }
}

// Only the description of the fault; "none" if there is none.
template <class Call>
QString faultOf(Call&& call) {
    return resultOf([&] { return call(), QStringLiteral("none"); });
}

}  // namespace tarnwick::test
