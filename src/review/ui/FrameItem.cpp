#include "review/ui/FrameItem.h"

#include "review/ui/FrameMailbox.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace corvane {

namespace {

/// The image shares the memory of the frame.
QImage imageOf(const media::DisplayFrame &frame) {
    using Pixels = std::shared_ptr<const uchar>;
    const auto release = [](void *pixels) { delete static_cast<Pixels *>(pixels); };
    return QImage(frame.pixels.get(), frame.width, frame.height, frame.bytesPerLine,
                  QImage::Format_RGB32, release, new Pixels(frame.pixels));
}

/// The largest centered rectangle with the aspect ratio of the frame, aligned to physical pixels.
QRectF fitted(QSizeF frame, QSizeF bounds, double pixelRatio) {
    const auto size = frame.scaled(bounds * pixelRatio, Qt::KeepAspectRatio);
    const double width = std::round(size.width());
    const double height = std::round(size.height());
    return {std::floor((bounds.width() * pixelRatio - width) / 2) / pixelRatio,
            std::floor((bounds.height() * pixelRatio - height) / 2) / pixelRatio,
            width / pixelRatio, height / pixelRatio};
}

} // namespace

FrameItem::FrameItem(QQuickItem *parent)
    : QQuickItem(parent), m_mailbox(std::make_shared<FrameMailbox>(this)) {
    setFlag(ItemHasContents);
}

FrameItem::~FrameItem() {
    m_mailbox->detach();
    if (m_engine) {
        m_engine->player().setSink(nullptr);
    }
}

void FrameItem::setEngine(PlayerEngine *engine) {
    if (m_engine == engine) {
        return;
    }
    if (m_engine) {
        m_engine->player().setSink(nullptr);
    }
    m_engine = engine;
    if (m_engine) {
        m_engine->player().setSink(m_mailbox);
    }
    Q_EMIT engineChanged();
}

QSGNode *FrameItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *) {
    auto *imageNode = static_cast<QSGImageNode *>(node);
    const auto frame = m_mailbox->frame();
    if (frame.isNull() || width() <= 0 || height() <= 0) {
        delete imageNode;
        return nullptr;
    }
    if (!imageNode) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
        imageNode->setFiltering(QSGTexture::Linear);
    }
    imageNode->setTexture(
        window()->createTextureFromImage(imageOf(frame), QQuickWindow::TextureIsOpaque));
    imageNode->setRect(fitted(QSizeF(frame.width, frame.height), size(), pixelRatio()));
    return imageNode;
}

double FrameItem::pixelRatio() const {
    return window() ? window()->effectiveDevicePixelRatio() : 1;
}

void FrameItem::updateWantedSize() {
    const auto wanted = size() * pixelRatio();
    const QSize pixels(int(std::ceil(wanted.width())), int(std::ceil(wanted.height())));
    if (m_mailbox->setWantedSize(pixels) && m_engine) {
        m_engine->player().redraw();
    }
    update();
}

void FrameItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    updateWantedSize();
}

void FrameItem::itemChange(ItemChange change, const ItemChangeData &data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        updateWantedSize();
    }
}

} // namespace corvane
