#pragma once

#include "document/ClipRange.h"
#include "media/ExportSession.h"
#include "platform/Clock.h"
#include "transfer/ImportCopier.h"

#include <QCoroTask>

#include <functional>

namespace corvane {
class VettedSources;
}

/// Transcodes one source to one output file. The output is written to a hidden temporary file in
/// the destination's folder and renamed when it is complete. On failure the temporary file is
/// removed and the destination unchanged, unless the last step fails, which syncs the folder after
/// the rename.
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

/// An output to create. The caller has checked the paths.
struct Transcode {
    QString source;
    /// The source's folder with the grant of the source. With a grant, a private copy is encoded
    /// instead of the source.
    ImportCopier::SourceRoot sourceRoot;
    VettedSources *vettedSources = nullptr; ///< keeps that copy; nullptr: until the task ends
    Destination destination;
    media::ExportPreset preset = media::ExportPreset::highestQuality;
    std::optional<ClipRange> range; ///< nullopt: the entire asset
};

/// Interval of the progress reports.
constexpr std::chrono::milliseconds kProgressInterval{200};

/// Runs the transcode on an executor. Called and awaited on the main thread, which also calls
/// `progress` with values from 0 to 1. Throws `SessionError`; if the factory can't create sessions,
/// before reading the source. The factory and the clock must outlive the task.
QCoro::Task<> transcodeVetted(Transcode transcode, media::ExportSessionFactory &sessions,
                              std::function<void(double)> progress, std::stop_token stop,
                              Clock &clock = Clock::system());

} // namespace corvane::AVExportSession
