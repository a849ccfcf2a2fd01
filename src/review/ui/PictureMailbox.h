#pragma once

#include "media/DisplayFrame.h"

#include <QQuickItem>

#include <mutex>

namespace corvane {

/// Holds the latest picture between the player's thread and the one that draws, and tells the item
/// that there is one. Any thread.
class PictureMailbox : public media::FrameSink {
  public:
    explicit PictureMailbox(QQuickItem *item) : m_item(item) {}

    /// The item is told nothing any more. Main thread.
    void detach();
    /// True where that is another size than before.
    bool setWantedSize(QSize size);
    media::DisplayFrame picture() const;

    QSize wantedSize() const override;
    void show(media::DisplayFrame frame) override;
    void clear() override;

  private:
    void announce();

    mutable std::mutex m_mutex;
    QQuickItem *m_item; ///< nothing once it is gone
    QSize m_wantedSize;
    media::DisplayFrame m_picture;
    bool m_isAnnounced = false;
};

} // namespace corvane
