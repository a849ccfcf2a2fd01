#pragma once

#include "document/ClipRange.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "transfer/VettedSources.h"

#include <QCoroTask>

#include <functional>
#include <stop_token>

namespace corvane {

/// A file to make from one source. The caller has validated both paths.
struct Output {
    QString source;
    ImportCopier::SourceRoot sourceRoot; ///< the source's folder with the grant of the source
    Destination destination;
    std::optional<media::ExportPreset> preset; ///< nullopt: a byte copy
    std::optional<ClipRange> range;            ///< of a transcode; nullopt: the entire asset
};

struct OutputProgress {
    double fraction = 0;   ///< from 0 to 1
    quint64 bytesDone = 0; ///< both 0 for a transcode
    quint64 bytesTotal = 0;
};

/// Makes the outputs of one run, as byte copies or through export sessions. Main thread; the work
/// itself runs on an executor.
class OutputMaker {
  public:
    using ProgressHandler = std::function<void(const OutputProgress &)>;

    /// `sessions` and `clock` must outlive every task. `stop` aborts the current output.
    OutputMaker(media::ExportSessionFactory &sessions, Clock &clock, std::stop_token stop);

    /// Calls `onProgress` on the main thread. Throws `Cancelled`, `ImportCopier::CopyError`,
    /// `AVExportSession::SessionError` or `FileError`; the destination is then unchanged. The maker
    /// must outlive the task.
    QCoro::Task<> make(Output output, ProgressHandler onProgress) const;
    /// Removes private copies of sources. To be called after the last output.
    QCoro::Task<> finish() const;

  private:
    QCoro::Task<> copy(Output output, ProgressHandler onProgress) const;
    QCoro::Task<> transcode(Output output, ProgressHandler onProgress) const;

    media::ExportSessionFactory &m_sessions;
    Clock &m_clock;
    std::stop_token m_stop;
    std::shared_ptr<VettedSources> m_sources; ///< used on an executor, by one output at a time
};

} // namespace corvane
