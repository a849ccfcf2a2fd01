#include "review/ui/JpegTask.h"

#include "platform/SerialExecutor.h"
#include "review/ui/JpegImage.h"

#include <atomic>

namespace corvane {

namespace {

std::atomic<qint64> totalImageBytes = 0;

SerialExecutor &jpegExecutor() {
    return sharedExecutor("jpegImages", SerialExecutor::Priority::Utility);
}

} // namespace

std::shared_ptr<const HeldImage> HeldImage::create(QImage image) {
    const qint64 bytes = image.sizeInBytes();
    if (image.isNull()) {
        return nullptr;
    }
    if (totalImageBytes.fetch_add(bytes) + bytes > kMaxTotalBytes) {
        totalImageBytes -= bytes;
        return nullptr;
    }
    return std::shared_ptr<const HeldImage>(new HeldImage(std::move(image)));
}

HeldImage::~HeldImage() {
    totalImageBytes -= m_image.sizeInBytes();
}

qint64 HeldImage::totalBytes() {
    return totalImageBytes;
}

void JpegTask::start(const std::shared_ptr<JpegTask> &task) {
    jpegExecutor().post([task] { task->run(task); });
}

void JpegTask::cancel() {
    m_stop.request_stop();
    const std::scoped_lock lock(m_mutex);
    m_item = nullptr;
}

void JpegTask::run(const std::shared_ptr<JpegTask> &self) {
    auto image = HeldImage::create(jpeg::decode(m_request, m_stop.get_token()));
    const std::scoped_lock lock(m_mutex);
    if (!m_item) {
        return;
    }
    QMetaObject::invokeMethod(
        m_item, // deleting the item discards a queued call
        [self, image = std::move(image)] {
            if (self->m_item) {
                self->m_item->finishTask(image);
            }
        },
        Qt::QueuedConnection);
}

} // namespace corvane
