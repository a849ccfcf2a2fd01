#include "review/ui/FrameMailbox.h"

#include <utility>

namespace corvane {

void FrameMailbox::detach() {
    const std::scoped_lock lock(m_mutex);
    m_item = nullptr;
}

bool FrameMailbox::setWantedSize(QSize size) {
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_wantedSize, size) != size;
}

media::DisplayFrame FrameMailbox::frame() const {
    const std::scoped_lock lock(m_mutex);
    return m_frame;
}

QSize FrameMailbox::wantedSize() const {
    const std::scoped_lock lock(m_mutex);
    return m_wantedSize;
}

void FrameMailbox::show(media::DisplayFrame frame) {
    const std::scoped_lock lock(m_mutex);
    m_frame = std::move(frame);
    scheduleUpdate();
}

void FrameMailbox::clear() {
    const std::scoped_lock lock(m_mutex);
    m_frame = {};
    scheduleUpdate();
}

/// Queues at most one call to the main thread at a time.
void FrameMailbox::scheduleUpdate() {
    if (!m_item || std::exchange(m_isUpdateScheduled, true)) {
        return;
    }
    QMetaObject::invokeMethod(
        m_item,
        [this, item = m_item] { // the item owns this mailbox; deleting it discards the call
            {
                const std::scoped_lock lock(m_mutex);
                m_isUpdateScheduled = false;
            }
            item->update();
        },
        Qt::QueuedConnection);
}

} // namespace corvane
