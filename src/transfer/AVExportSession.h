#pragma once

#include "document/ClipRange.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "trust/RootIdentity.h"

#include <QCoroTask>

#include <functional>

/// Produces one output file from one source through an export session. What is read was verified,
/// and what is placed is complete: the output is made under a hidden name beside its destination,
/// and whatever fails, nothing of it is left and the destination keeps what it held.
namespace corvane::AVExportSession {

class SessionError : public Failure {
  public:
    enum class Kind {
        cannotCreateSession,
        unsupportedSourceForPreset,
        exportFailed,
        timeRangeInvalid,
        destinationIsNotAFile,
        sourceIdentityChanged,
        sourceContentChanged,
        cancelled,
    };

    static SessionError cannotCreateSession(const QString &source);
    static SessionError unsupportedSourceForPreset(const QString &preset);
    static SessionError exportFailed(const QString &text);
    static SessionError timeRangeInvalid(double inSeconds, double outSeconds);
    static SessionError destinationIsNotAFile(const QString &destination);
    static SessionError sourceIdentityChanged(const QString &source);
    static SessionError sourceContentChanged(const QString &source);
    static SessionError cancelled();

    Kind kind() const { return m_kind; }

  private:
    SessionError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

    Kind m_kind;
};

/// One output to make. The source was vetted by the caller.
struct Transcode {
    QString source;
    QString destination;
    media::ExportPreset preset = media::ExportPreset::highestQuality;
    std::optional<ClipRange> range; ///< nullopt: the entire asset
    /// The grant of the source. With it, what is encoded is a private copy that was verified
    /// against it while it was made; the copy is gone when the task is done.
    std::optional<RootIdentity> expectedIdentity;
};

/// How often the progress is told.
constexpr std::chrono::milliseconds kProgressInterval{200};

/// Called and awaited on the main thread, where `progress` is called too (0 to 1). Throws
/// `SessionError`. Where the factory can make no session at all, that is told before anything is
/// read. The factory must outlive the task.
QCoro::Task<> transcodeVetted(Transcode transcode, media::ExportSessionFactory &sessions,
                              std::function<void(double)> progress, std::stop_token stop,
                              Clock &clock = Clock::system());

} // namespace corvane::AVExportSession
