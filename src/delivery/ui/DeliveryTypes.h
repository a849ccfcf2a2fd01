#pragma once

#include "delivery/DeliverySheet.h"

#include <QtQml/qqml.h>

/// The QML names of the types that the sheets of both deliveries bind to.
namespace corvane::deliveryTypes {

struct DeliverySheetType {
    Q_GADGET
    QML_FOREIGN(corvane::DeliverySheet)
    QML_NAMED_ELEMENT(DeliverySheet)
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

} // namespace corvane::deliveryTypes
