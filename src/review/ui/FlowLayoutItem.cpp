#include "review/ui/FlowLayoutItem.h"

#include "review/FlowLayout.h"

namespace corvane {

void FlowLayoutItem::setSpacing(double spacing) {
    if (m_spacing != spacing) {
        m_spacing = spacing;
        Q_EMIT spacingChanged();
        polish();
    }
}

void FlowLayoutItem::componentComplete() {
    QQuickItem::componentComplete();
    // At once, so that whoever stands below knows the height before the first frame.
    updatePolish();
}

void FlowLayoutItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width()) {
        polish();
    }
}

void FlowLayoutItem::itemChange(ItemChange change, const ItemChangeData &data) {
    if (change == ItemChildAddedChange) {
        connect(data.item, &QQuickItem::widthChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::heightChanged, this, &QQuickItem::polish);
        connect(data.item, &QQuickItem::visibleChanged, this, &QQuickItem::polish);
        polish();
    } else if (change == ItemChildRemovedChange) {
        data.item->disconnect(this);
        polish();
    }
    QQuickItem::itemChange(change, data);
}

QList<QQuickItem *> FlowLayoutItem::placedItems() const {
    QList<QQuickItem *> items;
    for (QQuickItem *item : childItems()) {
        if (item->isVisible() && item->width() > 0) {
            items.append(item);
        }
    }
    return items;
}

void FlowLayoutItem::updatePolish() {
    const QList<QQuickItem *> items = placedItems();
    QList<QSizeF> sizes;
    for (const QQuickItem *item : items) {
        sizes.append(item->size());
    }
    const auto placement =
        FlowLayout::place(sizes, m_spacing, widthValid() ? std::optional(width()) : std::nullopt);
    for (qsizetype which = 0; which < items.size(); ++which) {
        items.at(which)->setPosition(placement.positions.at(which));
    }
    setImplicitSize(placement.size.width(), placement.size.height());
}

} // namespace corvane
