#pragma once

#include "platform/FileSystem.h"
#include "trust/HashingProgress.h"

#include <QCoreApplication>

#include <chrono>
#include <memory>

namespace corvane {

/// Counts hashed bytes and reports them to the main thread. The reports are delivered before the
/// result of the function that counted them. Used by one hashing thread at a time.
class HashingMeter {
  public:
    using Handler = std::function<void(const HashingProgress &)>;

    HashingMeter(Handler onProgress, int files, qint64 bytes)
        : m_onProgress(std::make_shared<Handler>(std::move(onProgress))),
          m_progress{.filesTotal = files, .bytesTotal = bytes} {}

    void addBytes(qint64 bytes) {
        m_progress.bytesDone += bytes;
        if (std::chrono::steady_clock::now() - m_reported >= kReportInterval) {
            report();
        }
    }
    /// Ends the current file, which was expected to have `bytes` bytes after `bytesBefore`.
    void finishFile(qint64 bytesBefore, qint64 bytes) {
        ++m_progress.filesDone;
        m_progress.bytesDone = bytesBefore + bytes;
        if (bytes >= kLargeFile) {
            report();
        }
    }

  private:
    static constexpr std::chrono::milliseconds kReportInterval{200};
    static constexpr qint64 kLargeFile = qint64(16) << 20;

    void report() {
        m_reported = std::chrono::steady_clock::now();
        if (*m_onProgress) {
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [handler = m_onProgress, progress = m_progress] { (*handler)(progress); },
                Qt::QueuedConnection);
        }
    }

    std::shared_ptr<Handler> m_onProgress;
    HashingProgress m_progress;
    std::chrono::steady_clock::time_point m_reported = std::chrono::steady_clock::now();
};

} // namespace corvane
