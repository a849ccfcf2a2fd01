#include "delivery/DeliveryChoices.h"

#include <algorithm>

namespace corvane {

ClipRange widenedRange(const Subclip &subclip, double handleSeconds, double clipDuration) {
    const double out = subclip.outSeconds + handleSeconds;
    return {std::max(subclip.inSeconds - handleSeconds, 0.0),
            clipDuration > 0 ? std::min(out, clipDuration) : out};
}

} // namespace corvane
