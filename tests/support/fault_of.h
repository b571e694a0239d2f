#pragma once

#include "runtime/fault.h"

namespace tarnwick::test {

// What `call` gives, or what the fault says in which it ends.
template <class Call>
QString resultOf(Call&& call) {
    try {
        return call();
    } catch (const runtime::Fault& fault) {
        return fault.description();
    }
}

// Only the fault; "none" where there is none.
template <class Call>
QString faultOf(Call&& call) {
    return resultOf([&] { return call(), QStringLiteral("none"); });
}

}  // namespace tarnwick::test
