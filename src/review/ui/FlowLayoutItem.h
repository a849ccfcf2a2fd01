#pragma once

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Lays its visible children out one after another, and below one another where a row is full. They
/// keep their sizes; a child without a size takes no part. Where the item is given no width there
/// is one row. Its implicit size is what the rows take up. Main thread.
class FlowLayoutItem : public QQuickItem {
    Q_OBJECT
    QML_NAMED_ELEMENT(FlowLayout)
    Q_PROPERTY(double spacing READ spacing WRITE setSpacing NOTIFY spacingChanged)

  public:
    using QQuickItem::QQuickItem;

    double spacing() const { return m_spacing; }
    void setSpacing(double spacing);

  Q_SIGNALS:
    void spacingChanged();

  protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override;

  private:
    QList<QQuickItem *> placedItems() const;

    double m_spacing = 0;
};

} // namespace corvane
