#include "review/ui/StillImage.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace corvane {

namespace {

/// No picture is made larger than this along a side, however large the item is.
constexpr int kLongestSide = 4096;

} // namespace

StillImage::StillImage(QQuickItem *parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

StillImage::~StillImage() {
    cancel();
}

void StillImage::setPath(const QString &path) {
    changePath(m_path, path);
}

void StillImage::setFallbackPath(const QString &path) {
    changePath(m_fallbackPath, path);
}

void StillImage::changePath(QString &field, const QString &path) {
    if (field == path) {
        return;
    }
    field = path;
    cancel();
    m_asked = {};
    setStill(nullptr);
    polish();
    Q_EMIT pathChanged();
}

void StillImage::setRadius(double radius) {
    if (m_radius != radius) {
        m_radius = radius;
        polish();
        Q_EMIT radiusChanged();
    }
}

void StillImage::cancel() {
    if (m_task) {
        m_task->cancel();
        m_task.reset();
    }
}

stills::Wanted StillImage::wanted() const {
    const double ratio = window() ? window()->effectiveDevicePixelRatio() : 1;
    const QSize pixels(int(std::ceil(width() * ratio)), int(std::ceil(height() * ratio)));
    return {m_path, m_fallbackPath, pixels.boundedTo({kLongestSide, kLongestSide}),
            m_radius * ratio};
}

/// Once a frame, when all properties are set. A picture of another size stays until the new one is
/// there.
void StillImage::updatePolish() {
    const stills::Wanted now = wanted();
    if (now == m_asked || now.pixels.isEmpty() || (m_path.isEmpty() && m_fallbackPath.isEmpty())) {
        return;
    }
    cancel();
    m_asked = now;
    m_task = std::make_shared<StillTask>(this, now);
    StillTask::start(m_task);
}

void StillImage::take(std::shared_ptr<const HeldStill> still) {
    m_task.reset();
    setStill(std::move(still));
}

void StillImage::setStill(std::shared_ptr<const HeldStill> still) {
    if (still == m_still) {
        return;
    }
    const bool wasLoaded = isLoaded();
    m_still = std::move(still);
    m_textureIsStale = true;
    update();
    if (wasLoaded != isLoaded()) {
        Q_EMIT isLoadedChanged();
    }
}

QSGNode *StillImage::updatePaintNode(QSGNode *node, UpdatePaintNodeData *) {
    auto *imageNode = static_cast<QSGImageNode *>(node);
    if (!m_still || width() <= 0 || height() <= 0) {
        delete imageNode;
        return nullptr;
    }
    if (!imageNode) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
        imageNode->setFiltering(QSGTexture::Linear);
        m_textureIsStale = true;
    }
    if (std::exchange(m_textureIsStale, false)) {
        imageNode->setTexture(window()->createTextureFromImage(m_still->image()));
    }
    imageNode->setRect(boundingRect());
    return imageNode;
}

void StillImage::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) {
        polish();
        update();
    }
}

void StillImage::itemChange(ItemChange change, const ItemChangeData &data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        polish();
    }
}

} // namespace corvane
