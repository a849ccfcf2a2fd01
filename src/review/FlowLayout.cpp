#include "review/FlowLayout.h"

#include <algorithm>

namespace corvane::FlowLayout {

Placement place(const QList<QSizeF> &sizes, double spacing, std::optional<double> width) {
    Placement placement;
    double x = 0;
    double y = 0;
    double rowHeight = 0;
    bool rowIsEmpty = true;
    for (const QSizeF &size : sizes) {
        if (!rowIsEmpty && width && x + size.width() > *width) {
            y += rowHeight + spacing;
            x = 0;
            rowHeight = 0;
        }
        placement.positions.append({x, y});
        placement.size.setWidth(std::max(placement.size.width(), x + size.width()));
        rowHeight = std::max(rowHeight, size.height());
        x += size.width() + spacing;
        rowIsEmpty = false;
    }
    placement.size = {std::max(placement.size.width(), 0.0), y + rowHeight};
    return placement;
}

} // namespace corvane::FlowLayout
