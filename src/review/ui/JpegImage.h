#pragma once

#include "review/ui/JpegTask.h"

#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Shows a JPEG file, cropped to fill the item, with rounded corners. The file is read and decoded
/// on a background thread at the resolution of the item on the screen. Changing the path frees the
/// image. The item is transparent while nothing is loaded. Main thread only.
class JpegImage : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    /// Used if there is no file at `path` when it is read.
    Q_PROPERTY(QString fallbackPath READ fallbackPath WRITE setFallbackPath NOTIFY pathChanged)
    /// A folder below which no component of the paths may be a link. Empty: only the file itself is
    /// no link.
    Q_PROPERTY(QString root MEMBER m_root NOTIFY rootChanged)
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY radiusChanged)
    Q_PROPERTY(bool isLoaded READ isLoaded NOTIFY isLoadedChanged)

  public:
    explicit JpegImage(QQuickItem *parent = nullptr);
    ~JpegImage() override;

    const QString &path() const { return m_path; }
    void setPath(const QString &path);
    const QString &fallbackPath() const { return m_fallbackPath; }
    void setFallbackPath(const QString &path);
    bool isLoaded() const { return m_image != nullptr; }

    /// Shows the result of the task; nullptr on failure.
    void finishTask(std::shared_ptr<const HeldImage> image);

  Q_SIGNALS:
    void pathChanged();
    void rootChanged();
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
    void setImage(std::shared_ptr<const HeldImage> image);
    jpeg::DecodeRequest request() const;

    QString m_path;
    QString m_fallbackPath;
    QString m_root;
    double m_radius = 0;
    std::shared_ptr<JpegTask> m_task;
    jpeg::DecodeRequest m_lastRequest;
    std::shared_ptr<const HeldImage> m_image;
    bool m_isTextureStale = false;
};

} // namespace corvane
