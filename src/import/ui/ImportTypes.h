#pragma once

#include "import/ImportSheet.h"

#include <QtQml/qqml.h>

/// The names under which the sheet knows the types that it is bound to. None is made by a screen:
/// they come with the sheet's state.
namespace corvane::importTypes {

struct ImportSheetType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportSheet)
    QML_NAMED_ELEMENT(ImportSheet)
    QML_UNCREATABLE("Comes with the import's sheet")
};

struct ImportSourceListType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportSourceList)
    QML_NAMED_ELEMENT(ImportSourceList)
    QML_UNCREATABLE("Comes with the import's sheet")
};

struct ImportRowListType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportRowList)
    QML_NAMED_ELEMENT(ImportRowList)
    QML_UNCREATABLE("Comes with the import's sheet")
};

} // namespace corvane::importTypes
