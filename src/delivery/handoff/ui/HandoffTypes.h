#pragma once

#include "delivery/handoff/HandoffSheet.h"

#include <QtQml/qqml.h>

/// The QML name of the type that the handoff sheet binds to.
namespace corvane::handoffTypes {

struct HandoffSheetType {
    Q_GADGET
    QML_FOREIGN(corvane::HandoffSheet)
    QML_NAMED_ELEMENT(HandoffSheet)
    QML_UNCREATABLE("Comes with the screen")
};

} // namespace corvane::handoffTypes
