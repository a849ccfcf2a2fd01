#pragma once

#include "delivery/handoff/HandoffScreenState.h"

#include <QtQml/qqml.h>

/// The name under which the screens know the type that they are bound to. None is made by a screen.
namespace corvane::handoffTypes {

struct HandoffScreenStateType {
    Q_GADGET
    QML_FOREIGN(corvane::HandoffScreenState)
    QML_NAMED_ELEMENT(HandoffScreenState)
    QML_UNCREATABLE("Comes with the screen")
};

} // namespace corvane::handoffTypes
