#pragma once

#include "review/ui/StillTask.h"

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// A JPEG file's picture, cropped to fill the item, its corners round. It is read and decoded off
/// the main thread, anew with each new path, and no larger than the item is on the screen; nothing
/// is kept of it once the path changes. Without a picture the item is empty: its owner draws what
/// stands for one. Main thread.
class StillImage : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// Taken where no file stands at `path` at the moment of reading.
    Q_PROPERTY(QString fallbackPath READ fallbackPath WRITE setFallbackPath NOTIFY pathChanged)
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY isLoadedChanged)

  public:
    explicit StillImage(QQuickItem *parent = nullptr);
    ~StillImage() override;

    const QString &path() const { return m_path; }
    void setPath(const QString &path);
    const QString &fallbackPath() const { return m_fallbackPath; }
    void setFallbackPath(const QString &path);
    double radius() const { return m_radius; }
    void setRadius(double radius);
    bool isLoaded() const { return m_still != nullptr; }

    /// What its task has read; null for nothing.
    void take(std::shared_ptr<const HeldStill> still);

  Q_SIGNALS:
    void pathChanged();
    void radiusChanged();
    void isLoadedChanged();

  protected:
    void updatePolish() override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;

  private:
    void changePath(QString &field, const QString &path);
    void cancel();
    void setStill(std::shared_ptr<const HeldStill> still);
    stills::Wanted wanted() const;

    QString m_path;
    QString m_fallbackPath;
    double m_radius = 0;
    std::shared_ptr<StillTask> m_task;
    stills::Wanted m_asked; ///< what was read last, or is being read
    std::shared_ptr<const HeldStill> m_still;
    bool m_textureIsStale = false;
};

} // namespace corvane
