#pragma once

#include "lists/ListModel.h"

namespace corvane {

/// An item of the preview.
struct DeliveryRow {
    QString id; ///< unique in the list
    QString symbol;
    QString name;
    QString note; ///< beside the name; may be empty

    bool operator==(const DeliveryRow &) const = default;
};

/// The items to deliver.
class DeliveryRows : public ListModel<DeliveryRow> {
    Q_OBJECT

  public:
    enum Role { Symbol = Qt::UserRole + 1, Name, Note };

    explicit DeliveryRows(QObject *parent = nullptr)
        : ListModel({{Symbol, "symbol", &DeliveryRow::symbol},
                     {Name, "name", &DeliveryRow::name},
                     {Note, "note", &DeliveryRow::note}},
                    parent) {}
};

} // namespace corvane
