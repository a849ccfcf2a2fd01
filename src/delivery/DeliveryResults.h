#pragma once

#include "lists/ListModel.h"

namespace corvane {

/// A row of a finished run.
struct DeliveryResult {
    enum class Outcome { succeeded, failed, cancelled };

    Outcome outcome = Outcome::succeeded;
    QString name;
    QString note;    ///< about the HD copy; may be empty
    QString reason;  ///< why there is no HD copy; may be empty
    QString error;   ///< why the row was not delivered
    QString path;    ///< for "Reveal"; empty if not delivered
    QString heading; ///< of the rows from here on; empty except for the first of each kind

    QString symbol() const;
    /// The name and the error as one paragraph of rich text.
    QString richError() const;
    bool operator==(const DeliveryResult &) const = default;
};

/// The rows of a finished run: first those that were delivered, then the others.
class DeliveryResults : public ListModel<DeliveryResult, &DeliveryResult::name> {
    Q_OBJECT

  public:
    enum Role {
        Heading = Qt::UserRole + 1,
        Symbol,
        Delivered,
        Cancelled,
        Name,
        Note,
        Reason,
        Error,
        Rich,
        Path
    };

    explicit DeliveryResults(QObject *parent = nullptr);
};

} // namespace corvane
