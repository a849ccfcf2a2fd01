#pragma once

#include <QList>
#include <QPointF>
#include <QSizeF>

#include <optional>

/// Chips one after another, and below one another where a row is full.
namespace corvane::FlowLayout {

struct Placement {
    QList<QPointF> positions; ///< of each chip's top left corner
    QSizeF size;              ///< the widest row by the rows with the spacing between them
};

/// Chips keep the sizes they are given. One that is wider than `width` takes a row of its own; with
/// no width there is one row.
Placement place(const QList<QSizeF> &sizes, double spacing, std::optional<double> width);

} // namespace corvane::FlowLayout
