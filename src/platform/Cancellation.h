#pragma once

#include "platform/Failure.h"

#include <stop_token>

namespace corvane {

/// Throws `Cancelled` if a stop was requested.
inline void throwIfStopRequested(const std::stop_token &stop) {
    if (stop.stop_requested()) {
        throw Cancelled();
    }
}

} // namespace corvane
