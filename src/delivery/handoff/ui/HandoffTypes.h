#pragma once

#include "delivery/handoff/HandoffSheet.h"
#include "kit/QmlTypes.h"

namespace corvane::handoffTypes {

CORVANE_QML_TYPE(HandoffSheet)

} // namespace corvane::handoffTypes
