#pragma once

#include "delivery/export/ExportScreenState.h"

#include <QtQml/qqml.h>

/// The QML names of the types that the export sheet binds to.
namespace corvane::exportTypes {

struct ExportScreenStateType {
    Q_GADGET
    QML_FOREIGN(corvane::ExportScreenState)
    QML_NAMED_ELEMENT(ExportScreenState)
    QML_UNCREATABLE("Comes with the screen")
};

} // namespace corvane::exportTypes
