#pragma once

#include "export/ExportScreenState.h"

#include <QtQml/qqml.h>

/// The names under which the screens know the types that they are bound to. None is made by a
/// screen: they come with the state of an export's or a handoff's.
namespace corvane::exportTypes {

struct DeliveryScreenStateType {
    Q_GADGET
    QML_FOREIGN(corvane::DeliveryScreenState)
    QML_NAMED_ELEMENT(DeliveryScreenState)
    QML_UNCREATABLE("Comes with the screen")
};

struct ExportScreenStateType {
    Q_GADGET
    QML_FOREIGN(corvane::ExportScreenState)
    QML_NAMED_ELEMENT(ExportScreenState)
    QML_UNCREATABLE("Comes with the screen")
};

struct NamingFieldsType {
    Q_GADGET
    QML_FOREIGN(corvane::NamingFields)
    QML_NAMED_ELEMENT(NamingFields)
    QML_UNCREATABLE("Comes with the screen")
};

struct DeliveryRowsType {
    Q_GADGET
    QML_FOREIGN(corvane::DeliveryRows)
    QML_NAMED_ELEMENT(DeliveryRows)
    QML_UNCREATABLE("Comes with the screen")
};

struct DeliveryResultsType {
    Q_GADGET
    QML_FOREIGN(corvane::DeliveryResults)
    QML_NAMED_ELEMENT(DeliveryResults)
    QML_UNCREATABLE("Comes with the screen")
};

} // namespace corvane::exportTypes
