#pragma once

#include "delivery/export/ExportSheet.h"
#include "kit/QmlTypes.h"

/// Registers the export sheet for QML. The object is created in C++.
namespace corvane::exportTypes {

CORVANE_QML_TYPE(ExportSheet)

} // namespace corvane::exportTypes
