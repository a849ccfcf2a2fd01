#pragma once

#include "delivery/DeliverySheet.h"
#include "kit/QmlTypes.h"

/// Registers the types that the sheets of all deliveries bind to.
namespace corvane::deliveryTypes {

CORVANE_QML_TYPE(DeliverySheet)
CORVANE_QML_TYPE(NamingFields)
CORVANE_QML_TYPE(DeliveryRows)
CORVANE_QML_TYPE(DeliveryResults)
CORVANE_QML_VALUE(DeliveryChoice, deliveryChoice)
CORVANE_QML_VALUE(DeliveryRunTexts, deliveryRunTexts)
CORVANE_QML_VALUE(DeliveryResultTexts, deliveryResultTexts)

} // namespace corvane::deliveryTypes
