#include "transfer/OutputMaker.h"

#include "platform/FileSystem.h"
#include "platform/SerialExecutor.h"
#include "transfer/AVExportSession.h"
#include "transfer/ProgressPoll.h"

#include <atomic>

namespace corvane {

namespace {

constexpr std::chrono::milliseconds kByteProgressInterval{50};

} // namespace

OutputMaker::OutputMaker(media::ExportSessionFactory &sessions, Clock &clock, std::stop_token stop)
    : m_sessions(sessions),
      m_clock(clock),
      m_stop(std::move(stop)),
      m_sources(std::make_shared<VettedSources>()) {}

QCoro::Task<> OutputMaker::make(Output output, ProgressHandler onProgress) const {
    return output.preset ? transcode(std::move(output), std::move(onProgress))
                         : copy(std::move(output), std::move(onProgress));
}

QCoro::Task<> OutputMaker::finish() const {
    co_await userInitiatedExecutor().run([sources = m_sources] { sources->clear(); });
}

QCoro::Task<> OutputMaker::copy(Output output, ProgressHandler onProgress) const {
    std::atomic<quint64> bytesDone = 0;
    std::atomic<quint64> bytesTotal = 0;
    const auto report = [&] {
        const quint64 done = bytesDone;
        const quint64 total = bytesTotal;
        onProgress({.fraction = total > 0 ? std::min(1.0, double(done) / double(total)) : 0,
                    .bytesDone = done,
                    .bytesTotal = total});
    };
    const ProgressPoll poll(m_clock, kByteProgressInterval, report);
    co_await userInitiatedExecutor().run([&] {
        const auto status = fileSystem().linkStatus(output.source);
        bytesTotal = status ? quint64(status->size) : 0;
        ImportCopier::copy(
            output.source, output.destination, output.sourceRoot,
            [&](quint64 done) { bytesDone = done; }, m_stop);
    });
    report();
}

QCoro::Task<> OutputMaker::transcode(Output output, ProgressHandler onProgress) const {
    using SessionError = AVExportSession::SessionError;
    const AVExportSession::Transcode transcode{.source = output.source,
                                               .sourceRoot = output.sourceRoot,
                                               .vettedSources = m_sources.get(),
                                               .destination = output.destination,
                                               .preset = *output.preset,
                                               .range = output.range};
    const auto report = [&](double fraction) { onProgress({.fraction = fraction}); };
    try {
        co_await AVExportSession::transcodeVetted(transcode, m_sessions, report, m_stop, m_clock);
    } catch (const SessionError &error) {
        if (error.kind() == SessionError::Kind::cancelled) {
            throw Cancelled();
        }
        throw;
    }
}

} // namespace corvane
