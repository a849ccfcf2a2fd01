#include "review/ui/StillTask.h"

#include "platform/SerialExecutor.h"
#include "review/ui/StillImage.h"

#include <atomic>

namespace corvane {

namespace {

std::atomic<qint64> bytesOfStills = 0;

SerialExecutor &stillsExecutor() {
    static SerialExecutor executor(QStringLiteral("stills"), SerialExecutor::Priority::Utility);
    return executor;
}

} // namespace

std::shared_ptr<const HeldStill> HeldStill::hold(QImage image) {
    const qint64 bytes = image.sizeInBytes();
    if (image.isNull()) {
        return nullptr;
    }
    if (bytesOfStills.fetch_add(bytes) + bytes > kMostBytes) {
        bytesOfStills -= bytes;
        return nullptr;
    }
    return std::shared_ptr<const HeldStill>(new HeldStill(std::move(image)));
}

HeldStill::~HeldStill() {
    bytesOfStills -= m_image.sizeInBytes();
}

qint64 HeldStill::heldBytes() {
    return bytesOfStills;
}

void StillTask::start(const std::shared_ptr<StillTask> &task) {
    stillsExecutor().post([task] { task->run(task); });
}

void StillTask::cancel() {
    m_stop.request_stop();
    const std::scoped_lock lock(m_mutex);
    m_item = nullptr;
}

void StillTask::run(const std::shared_ptr<StillTask> &self) {
    auto still = HeldStill::hold(stills::picture(m_wanted, m_stop.get_token()));
    const std::scoped_lock lock(m_mutex);
    if (!m_item) {
        return;
    }
    QMetaObject::invokeMethod(
        m_item, // a call that still waits ends with the item
        [self, still = std::move(still)] {
            if (self->m_item) {
                self->m_item->take(still);
            }
        },
        Qt::QueuedConnection);
}

} // namespace corvane
