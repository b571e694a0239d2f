#pragma once

#include <QObject>

#include "runtime/failure_path.h"

namespace tarnwick::runtime {

// Connects a handler to a signal as an event procedure without a guard: what it throws does not
// travel through Qt but takes the default path.
template <class Sender, class Signal, class Handler>
QMetaObject::Connection onEvent(const FailurePath& failure, const Sender* sender, Signal signal,
                                const QObject* context, Handler handler) {
    return QObject::connect(
        sender, signal, context,
        [&failure, handler = std::move(handler)](const auto&... arguments) mutable {
            failure.unguarded([&] {
                if constexpr (std::is_invocable_v<Handler&, decltype(arguments)...>)
                    handler(arguments...);
                else
                    handler();
            });
        });
}

}  // namespace tarnwick::runtime
