#include "review/ui/JpegImage.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace corvane {

namespace {

/// Limit on the width and height of the decoded image, however large the item is.
constexpr int kMaxSide = 4096;

} // namespace

JpegImage::JpegImage(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &JpegImage::radiusChanged, this, &QQuickItem::polish);
    connect(this, &JpegImage::rootChanged, this, &QQuickItem::polish);
}

JpegImage::~JpegImage() {
    cancel();
}

void JpegImage::setPath(const QString &path) {
    changePath(m_path, path);
}

void JpegImage::setFallbackPath(const QString &path) {
    changePath(m_fallbackPath, path);
}

void JpegImage::changePath(QString &field, const QString &path) {
    if (field == path) {
        return;
    }
    field = path;
    cancel();
    m_lastRequest = {};
    setImage(nullptr);
    polish();
    Q_EMIT pathChanged();
}

void JpegImage::cancel() {
    if (m_task) {
        m_task->cancel();
        m_task.reset();
    }
}

jpeg::DecodeRequest JpegImage::request() const {
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    const QSize pixels(int(std::ceil(width() * ratio)), int(std::ceil(height() * ratio)));
    return {m_path, m_fallbackPath, m_root, pixels.boundedTo({kMaxSide, kMaxSide}),
            m_radius * ratio};
}

/// Runs once per frame, after all properties are set. After a change of size the former image stays
/// until the new one is loaded.
void JpegImage::updatePolish() {
    const jpeg::DecodeRequest now = request();
    if (now == m_lastRequest || now.pixels.isEmpty() ||
        (m_path.isEmpty() && m_fallbackPath.isEmpty())) {
        return;
    }
    cancel();
    m_lastRequest = now;
    m_task = std::make_shared<JpegTask>(this, now);
    JpegTask::start(m_task);
}

void JpegImage::finishTask(std::shared_ptr<const HeldImage> image) {
    m_task.reset();
    setImage(std::move(image));
}

void JpegImage::setImage(std::shared_ptr<const HeldImage> image) {
    if (image == m_image) {
        return;
    }
    const bool wasLoaded = isLoaded();
    m_image = std::move(image);
    m_isTextureStale = true;
    update();
    if (wasLoaded != isLoaded()) {
        Q_EMIT isLoadedChanged();
    }
}

QSGNode *JpegImage::updatePaintNode(QSGNode *node, UpdatePaintNodeData *) {
    auto *imageNode = static_cast<QSGImageNode *>(node);
    if (!m_image || width() <= 0 || height() <= 0) {
        delete imageNode;
        return nullptr;
    }
    if (!imageNode) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
        imageNode->setFiltering(QSGTexture::Linear);
        m_isTextureStale = true;
    }
    if (std::exchange(m_isTextureStale, false)) {
        imageNode->setTexture(window()->createTextureFromImage(m_image->image()));
    }
    imageNode->setRect(boundingRect());
    return imageNode;
}

void JpegImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        polish();
        update();
    }
}

void JpegImage::itemChange(ItemChange change, const ItemChangeData &data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        polish();
    }
}

} // namespace corvane
