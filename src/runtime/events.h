#pragma once

#include <QObject>

#include "runtime/failure_path.h"

namespace tarnwick::runtime {

// Connects a handler to a signal as an unguarded event procedure: an exception goes to
// FailurePath::Default_Path and does not propagate through Qt.
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
