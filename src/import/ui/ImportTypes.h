#pragma once

#include "import/ImportSheet.h"
#include "kit/QmlTypes.h"

/// Registers the types of `ImportSheet` for QML. The objects are created in C++.
namespace corvane::importTypes {

CORVANE_QML_TYPE(ImportSheet)
CORVANE_QML_TYPE(ImportSourceList)
CORVANE_QML_TYPE(ImportRowList)
CORVANE_QML_VALUE(ImportPreviewTexts, importPreviewTexts)
CORVANE_QML_VALUE(ImportRunTexts, importRunTexts)
CORVANE_QML_VALUE(ImportResultTexts, importResultTexts)

} // namespace corvane::importTypes
