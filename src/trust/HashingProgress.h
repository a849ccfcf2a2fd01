#pragma once

#include <QtGlobal>

#include <algorithm>
#include <functional>
#include <stop_token>

namespace corvane {

/// Progress of hashing several files.
struct HashingProgress {
    int filesDone = 0;
    int filesTotal = 0;
    qint64 bytesDone = 0;
    qint64 bytesTotal = 0;

    /// Completed part, from 0 to 1.
    double fraction() const {
        return bytesTotal > 0 ? std::clamp(double(bytesDone) / double(bytesTotal), 0.0, 1.0) : 0;
    }
    bool operator==(const HashingProgress &) const = default;
};

/// Cancels and observes an operation that hashes files.
struct HashingControl {
    std::stop_token stop;
    /// Called on the main thread, at most five times per second and after each larger file.
    std::function<void(const HashingProgress &)> progress;
};

} // namespace corvane
