#pragma once

#include "delivery/handoff/HandoffSheet.h"
#include "kit/QmlTypes.h"

/// Registers the handoff sheet for QML. The object is created in C++.
namespace corvane::handoffTypes {

CORVANE_QML_TYPE(HandoffSheet)

} // namespace corvane::handoffTypes
