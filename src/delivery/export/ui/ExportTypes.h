#pragma once

#include "delivery/export/ExportSheet.h"

#include <QtQml/qqml.h>

/// The QML names of the types that the export sheet binds to.
namespace corvane::exportTypes {

struct ExportSheetType {
    Q_GADGET
    QML_FOREIGN(corvane::ExportSheet)
    QML_NAMED_ELEMENT(ExportSheet)
    QML_UNCREATABLE("Comes with the screen")
};

} // namespace corvane::exportTypes
