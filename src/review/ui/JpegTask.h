#pragma once

#include "review/ui/JpegDecoder.h"

#include <memory>
#include <mutex>

namespace corvane {

class JpegImage;

/// An image that counts towards a limit on the memory of all such images. Any thread.
class HeldImage {
  public:
    static constexpr qint64 kMaxTotalBytes = qint64(128) * 1024 * 1024;

    /// Returns nullptr for a null image, or if the image would exceed `kMaxTotalBytes`.
    static std::shared_ptr<const HeldImage> create(QImage image);
    ~HeldImage();
    Q_DISABLE_COPY_MOVE(HeldImage)

    const QImage &image() const { return m_image; }
    /// Bytes of all existing images.
    static qint64 totalBytes();

  private:
    explicit HeldImage(QImage image) : m_image(std::move(image)) {}

    QImage m_image;
};

/// Loads an image for an item on a background thread of utility priority, one task after another.
/// Created and cancelled on the main thread.
class JpegTask {
  public:
    JpegTask(JpegImage *item, jpeg::DecodeRequest request)
        : m_item(item), m_request(std::move(request)) {}

    static void start(const std::shared_ptr<JpegTask> &task);
    /// Discards the result. The item may then be deleted.
    void cancel();

  private:
    void run(const std::shared_ptr<JpegTask> &self);

    std::mutex m_mutex;
    JpegImage *m_item; ///< nullptr if cancelled
    const jpeg::DecodeRequest m_request;
    std::stop_source m_stop;
};

} // namespace corvane
