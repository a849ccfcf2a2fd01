#pragma once

#include "review/PlayerEngine.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

class FrameMailbox;

/// Shows the frames of an engine's player, centered and as large as fits. Requests frames at the
/// resolution of the screen. Main thread only.
class FrameItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(corvane::PlayerEngine *engine READ engine WRITE setEngine NOTIFY engineChanged)

  public:
    explicit FrameItem(QQuickItem *parent = nullptr);
    ~FrameItem() override;

    /// The engine may be deleted before the item. An engine can be shown by one item at a time.
    PlayerEngine *engine() const { return m_engine; }
    void setEngine(PlayerEngine *engine);

  Q_SIGNALS:
    void engineChanged();

  protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

  private:
    double pixelRatio() const;
    void updateWantedSize();

    QPointer<PlayerEngine> m_engine;
    std::shared_ptr<FrameMailbox> m_mailbox;
};

} // namespace corvane
