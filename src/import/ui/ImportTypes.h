#pragma once

#include "import/ImportSheet.h"

#include <QtQml/qqml.h>

/// Registers the types of `ImportSheet` for QML. The objects are created in C++.
namespace corvane::importTypes {

struct ImportSheetType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportSheet)
    QML_NAMED_ELEMENT(ImportSheet)
    QML_UNCREATABLE("Created by the project screen")
};

struct ImportSourceListType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportSourceList)
    QML_NAMED_ELEMENT(ImportSourceList)
    QML_UNCREATABLE("Property of ImportSheet")
};

struct ImportRowListType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportRowList)
    QML_NAMED_ELEMENT(ImportRowList)
    QML_UNCREATABLE("Property of ImportSheet")
};

struct ImportPreviewTextsType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportPreviewTexts)
    QML_VALUE_TYPE(importPreviewTexts)
};

struct ImportRunTextsType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportRunTexts)
    QML_VALUE_TYPE(importRunTexts)
};

struct ImportResultTextsType {
    Q_GADGET
    QML_FOREIGN(corvane::ImportResultTexts)
    QML_VALUE_TYPE(importResultTexts)
};

} // namespace corvane::importTypes
