#pragma once

#include "delivery/ExportNaming.h"
#include "platform/VolumeLimits.h"

#include <algorithm>

namespace corvane {

/// The choices that every kind of delivery offers.
struct DeliveryChoices {
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    double subclipHandleSeconds = 0; ///< added at both ends of a subclip
    NamingPreset namingPreset = NamingPreset::keepOriginal;
    ExportNamingOptions naming;
    VolumeLimits volumeLimits; ///< of the folder to deliver into, as far as they are known

    bool operator==(const DeliveryChoices &) const = default;
};

/// Returns the range of a subclip extended by the handles. The result does not start below 0, and
/// does not end after `clipDuration` unless that is unknown (0).
inline ClipRange widenedRange(const Subclip &subclip, double handleSeconds, double clipDuration) {
    const double out = subclip.outSeconds + handleSeconds;
    return {std::max(subclip.inSeconds - handleSeconds, 0.0),
            clipDuration > 0 ? std::min(out, clipDuration) : out};
}

} // namespace corvane
