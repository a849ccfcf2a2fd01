#include "delivery/DeliveryResults.h"

namespace corvane {

QString DeliveryResult::symbol() const {
    switch (outcome) {
    case Outcome::succeeded:
        return QStringLiteral("checkmark.circle.fill");
    case Outcome::cancelled:
        return QStringLiteral("xmark.circle");
    case Outcome::failed:
        break;
    }
    return QStringLiteral("exclamationmark.triangle.fill");
}

QString DeliveryResult::richError() const {
    return QStringLiteral("<b>%1</b>: %2").arg(name.toHtmlEscaped(), error.toHtmlEscaped());
}

DeliveryResults::DeliveryResults(QObject *parent)
    : ListModel(
          {{Heading, "heading", &DeliveryResult::heading},
           {Symbol, "symbol", &DeliveryResult::symbol},
           {Delivered, "delivered",
            [](const auto &row) { return row.outcome == DeliveryResult::Outcome::succeeded; }},
           {Cancelled, "cancelled",
            [](const auto &row) { return row.outcome == DeliveryResult::Outcome::cancelled; }},
           {Name, "name", &DeliveryResult::name},
           {Note, "note", &DeliveryResult::note},
           {Reason, "reason", &DeliveryResult::reason},
           {Error, "error", &DeliveryResult::error},
           {Rich, "rich", &DeliveryResult::richError},
           {Path, "path", &DeliveryResult::path}},
          parent) {}

} // namespace corvane
