#include "review/ui/PictureMailbox.h"

#include <utility>

namespace corvane {

void PictureMailbox::detach() {
    const std::scoped_lock lock(m_mutex);
    m_item = nullptr;
}

bool PictureMailbox::setWantedSize(QSize size) {
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_wantedSize, size) != size;
}

media::DisplayFrame PictureMailbox::picture() const {
    const std::scoped_lock lock(m_mutex);
    return m_picture;
}

QSize PictureMailbox::wantedSize() const {
    const std::scoped_lock lock(m_mutex);
    return m_wantedSize;
}

void PictureMailbox::show(media::DisplayFrame picture) {
    const std::scoped_lock lock(m_mutex);
    m_picture = std::move(picture);
    announce();
}

void PictureMailbox::clear() {
    const std::scoped_lock lock(m_mutex);
    m_picture = {};
    announce();
}

/// One hop to the main thread at a time, however fast the pictures come.
void PictureMailbox::announce() {
    if (!m_item || std::exchange(m_isAnnounced, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        m_item,
        [this, item = m_item] { // the item keeps this mailbox, and a call to it ends with it
            {
                const std::scoped_lock lock(m_mutex);
                m_isAnnounced = false;
            }
            item->update();
        },
        Qt::QueuedConnection);
}

} // namespace corvane
