#pragma once

#include "delivery/handoff/HandoffSheet.h"

#include <QtQml/qqml.h>

/// The name under which the screens know the type that they are bound to. None is made by a screen.
namespace corvane::handoffTypes {

struct HandoffSheetType {
    Q_GADGET
    QML_FOREIGN(corvane::HandoffSheet)
    QML_NAMED_ELEMENT(HandoffSheet)
    QML_UNCREATABLE("Comes with the screen")
};

} // namespace corvane::handoffTypes
