#include "review/ui/PictureItem.h"

#include "review/ui/PictureMailbox.h"

#include <QImage>
#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace corvane {

namespace {

/// Shares the picture's memory for as long as the image lives.
QImage imageOf(const media::DisplayFrame &picture) {
    using Pixels = std::shared_ptr<const uchar>;
    const auto release = [](void *pixels) { delete static_cast<Pixels *>(pixels); };
    return QImage(picture.pixels.get(), picture.width, picture.height, picture.bytesPerLine,
                  QImage::Format_RGB32, release, new Pixels(picture.pixels));
}

/// The largest rectangle of the picture's shape in the middle, its edges on the screen's pixels.
QRectF fitted(QSizeF picture, QSizeF bounds, double pixelRatio) {
    const auto size = picture.scaled(bounds * pixelRatio, Qt::KeepAspectRatio);
    const double width = std::round(size.width());
    const double height = std::round(size.height());
    return {std::floor((bounds.width() * pixelRatio - width) / 2) / pixelRatio,
            std::floor((bounds.height() * pixelRatio - height) / 2) / pixelRatio,
            width / pixelRatio, height / pixelRatio};
}

} // namespace

PictureItem::PictureItem(QQuickItem *parent)
    : QQuickItem(parent), m_mailbox(std::make_shared<PictureMailbox>(this)) {
    setFlag(ItemHasContents);
}

PictureItem::~PictureItem() {
    m_mailbox->detach();
    if (m_engine) {
        m_engine->player().setSink(nullptr);
    }
}

void PictureItem::setEngine(PlayerEngine *engine) {
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

QSGNode *PictureItem::updatePaintNode(QSGNode *node, UpdatePaintNodeData *) {
    auto *imageNode = static_cast<QSGImageNode *>(node);
    const auto picture = m_mailbox->picture();
    if (picture.isNull() || width() <= 0 || height() <= 0) {
        delete imageNode;
        return nullptr;
    }
    if (!imageNode) {
        imageNode = window()->createImageNode();
        imageNode->setOwnsTexture(true);
        imageNode->setFiltering(QSGTexture::Linear);
    }
    imageNode->setTexture(
        window()->createTextureFromImage(imageOf(picture), QQuickWindow::TextureIsOpaque));
    imageNode->setRect(fitted(QSizeF(picture.width, picture.height), size(), pixelRatio()));
    return imageNode;
}

double PictureItem::pixelRatio() const {
    return window() ? window()->effectiveDevicePixelRatio() : 1;
}

void PictureItem::updateWantedSize() {
    const auto wanted = size() * pixelRatio();
    const QSize pixels(int(std::ceil(wanted.width())), int(std::ceil(wanted.height())));
    if (m_mailbox->setWantedSize(pixels) && m_engine) {
        m_engine->player().redraw();
    }
    update();
}

void PictureItem::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    updateWantedSize();
}

void PictureItem::itemChange(ItemChange change, const ItemChangeData &data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        updateWantedSize();
    }
}

} // namespace corvane
