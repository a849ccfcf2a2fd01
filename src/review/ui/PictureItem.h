#pragma once

#include "review/PlayerEngine.h"

#include <QPointer>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

class PictureMailbox;

/// The name under which the screens know the engine. None makes one.
struct PlayerEngineType {
    Q_GADGET
    QML_FOREIGN(corvane::PlayerEngine)
    QML_NAMED_ELEMENT(PlayerEngine)
    QML_UNCREATABLE("Comes with the review screen")
};

/// The picture of an engine's player, as large as fits, in the middle of the item; nothing around
/// it. It asks the player for as many pixels as it covers. Main thread.
class PictureItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(corvane::PlayerEngine *engine READ engine WRITE setEngine NOTIFY engineChanged)

  public:
    explicit PictureItem(QQuickItem *parent = nullptr);
    ~PictureItem() override;

    /// It may end before the item does. An engine shows in one item at a time.
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
    std::shared_ptr<PictureMailbox> m_mailbox;
};

} // namespace corvane
