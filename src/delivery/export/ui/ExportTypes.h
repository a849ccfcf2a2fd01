#pragma once

#include "delivery/export/ExportSheet.h"
#include "kit/QmlTypes.h"

namespace corvane::exportTypes {

CORVANE_QML_TYPE(ExportSheet)

} // namespace corvane::exportTypes
