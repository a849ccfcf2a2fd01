#pragma once

#include "media/Picture.h"

#include <QQuickItem>

#include <mutex>

namespace corvane {

/// Holds the latest picture between the player's thread and the one that draws, and tells the item
/// that there is one. Any thread.
class PictureMailbox : public media::PictureSink {
  public:
    explicit PictureMailbox(QQuickItem *item) : m_item(item) {}

    /// The item is told nothing any more. Main thread.
    void detach();
    /// True where that is another size than before.
    bool setWantedSize(QSize size);
    media::Picture picture() const;

    QSize wantedSize() const override;
    void show(media::Picture picture) override;
    void clear() override;

  private:
    void announce();

    mutable std::mutex m_mutex;
    QQuickItem *m_item; ///< nothing once it is gone
    QSize m_wantedSize;
    media::Picture m_picture;
    bool m_isAnnounced = false;
};

} // namespace corvane
