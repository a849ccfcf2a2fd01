#pragma once

#include "media/DisplayFrame.h"

#include <QQuickItem>

#include <mutex>

namespace corvane {

/// Passes the latest frame from the player's thread to the render thread and schedules an update of
/// the item. Any thread.
class FrameMailbox : public media::FrameSink {
  public:
    explicit FrameMailbox(QQuickItem *item) : m_item(item) {}

    /// To be called before the item is deleted. Main thread only.
    void detach();
    /// Returns true if the size differs from the previous one.
    bool setWantedSize(QSize size);
    media::DisplayFrame frame() const;

    QSize wantedSize() const override;
    void show(media::DisplayFrame frame) override;
    void clear() override;

  private:
    void scheduleUpdate();

    mutable std::mutex m_mutex;
    QQuickItem *m_item; ///< nullptr after `detach`
    QSize m_wantedSize;
    media::DisplayFrame m_frame;
    bool m_isUpdateScheduled = false;
};

} // namespace corvane
