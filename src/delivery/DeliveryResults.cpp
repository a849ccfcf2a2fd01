#include "delivery/DeliveryResults.h"

namespace corvane {

namespace {

/// The name and the reason as one paragraph that wraps.
QString richText(const DeliveryResult &row) {
    return QStringLiteral("<b>%1</b>: %2").arg(row.name.toHtmlEscaped(), row.error.toHtmlEscaped());
}

} // namespace

void DeliveryResults::setRows(QList<DeliveryResult> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

int DeliveryResults::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant DeliveryResults::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const DeliveryResult &row = m_rows.at(index.row());
    switch (role) {
    case Heading:
        return row.heading;
    case Symbol:
        return row.symbol;
    case Delivered:
        return row.outcome == DeliveryResult::Outcome::succeeded;
    case Cancelled:
        return row.outcome == DeliveryResult::Outcome::cancelled;
    case Name:
        return row.name;
    case Note:
        return row.note;
    case Reason:
        return row.reason;
    case Error:
        return row.error;
    case Rich:
        return richText(row);
    case Path:
        return row.path;
    default:
        return {};
    }
}

QHash<int, QByteArray> DeliveryResults::roleNames() const {
    return {{Heading, "heading"},     {Symbol, "symbol"},
            {Delivered, "delivered"}, {Cancelled, "cancelled"},
            {Name, "name"},           {Note, "note"},
            {Reason, "reason"},       {Error, "error"},
            {Rich, "rich"},           {Path, "path"}};
}

} // namespace corvane
