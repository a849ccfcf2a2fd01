#pragma once

#include "delivery/DeliverySheet.h"
#include "kit/QmlTypes.h"

/// Registers the types that all delivery sheets bind to for QML. The objects are created in C++.
namespace corvane::deliveryTypes {

CORVANE_QML_TYPE(DeliverySheet)
CORVANE_QML_TYPE(NamingFields)
CORVANE_QML_TYPE(DeliveryRows)
CORVANE_QML_TYPE(DeliveryResults)

} // namespace corvane::deliveryTypes
