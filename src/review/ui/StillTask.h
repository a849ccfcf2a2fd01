#pragma once

#include "review/ui/StillDecoder.h"

#include <memory>
#include <mutex>

namespace corvane {

class StillImage;

/// A picture that is held, and its bytes in the count of all that are. Any thread.
class HeldStill {
  public:
    /// All pictures together hold no more than this; one that finds no room isn't shown.
    static constexpr qint64 kMostBytes = qint64(128) * 1024 * 1024;

    /// Null where there is no room for it.
    static std::shared_ptr<const HeldStill> hold(QImage image);
    ~HeldStill();
    Q_DISABLE_COPY_MOVE(HeldStill)

    const QImage &image() const { return m_image; }
    /// How much all of them hold now.
    static qint64 heldBytes();

  private:
    explicit HeldStill(QImage image) : m_image(std::move(image)) {}

    QImage m_image;
};

/// The reading of one picture for one item. It is made and cancelled on the main thread and runs on
/// a thread of its own at utility priority, one after another. What a cancelled one has read is
/// dropped.
class StillTask {
  public:
    StillTask(StillImage *item, stills::Wanted wanted)
        : m_item(item), m_wanted(std::move(wanted)) {}

    static void start(const std::shared_ptr<StillTask> &task);
    /// The item hears nothing of it from now on, and may end.
    void cancel();

  private:
    void run(const std::shared_ptr<StillTask> &self);

    std::mutex m_mutex;
    StillImage *m_item; ///< null once cancelled
    const stills::Wanted m_wanted;
    std::stop_source m_stop;
};

} // namespace corvane
