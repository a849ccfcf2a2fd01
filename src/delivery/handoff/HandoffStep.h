#pragma once

#include "delivery/handoff/HandoffRun.h"

#include <QCoroTask>

namespace corvane {

/// What every output of a handoff needs: a name, a vetted source, a transfer, and progress. A step
/// makes one output of one clip. Main thread; it leaves it for everything that touches a file. It
/// must live until its task is done.
class HandoffStep {
  public:
    HandoffStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index);
    virtual ~HandoffStep();
    Q_DISABLE_COPY_MOVE(HandoffStep)

    /// Makes the output, or records why there is none. Never throws.
    QCoro::Task<> perform();

  protected:
    using Phase = HandoffProgress::Phase;

    virtual QCoro::Task<> make() = 0;
    /// What a failure of this step is told as.
    virtual QString failureText(const QString &error) const { return error; }

    /// Takes a name for the output in the package; the progress tells it from here on.
    void takeName(ExportNameParts parts);
    QString mediaPath() const;

    /// Throws unless the source may be read and the output may be written.
    QCoro::Task<> vet();
    /// The transfers read the source through its grant and throw what was found against it. Their
    /// progress goes from one fraction of the step to another.
    struct Share {
        double from = 0;
        double to = 1;
    };
    QCoro::Task<> copyBytes(Share share);
    QCoro::Task<> transcode(media::ExportPreset preset, std::optional<ClipRange> range,
                            Share share);
    /// Gives the HD file's name; nothing where none was wanted, the run is cancelled, or it failed:
    /// the output stands without it.
    QCoro::Task<std::optional<QString>> makeHDCopy(std::optional<ClipRange> range, Share share);

    /// Of the output; one that can't be made is missed by nobody.
    QCoro::Task<> makeFilmstrip(QString videoId);

    /// What a step leaves behind: a clip of the new project and a row of the result.
    void deliver(const VideoItem &video, const std::optional<QString> &hdName);
    void reportPhase(Phase phase, double rowProgress);
    bool isCancelled() const { return m_run->cancelToken->isRequested(); }
    bool wantsHDCopy() const { return m_run->plan.outputMode == HandoffOutputMode::primaryAndHd; }
    std::optional<RootIdentity> sourceIdentity() const;

    std::shared_ptr<HandoffRun> m_run;
    HandoffClip m_clip;
    HandoffProgress m_progress;
    QString m_name; ///< of the output in "media"

  private:
    QCoro::Task<> transcodeTo(QString destination, media::ExportPreset preset,
                              std::optional<ClipRange> range, Share share);
    void vetNow() const;
    void vetOutput(const QString &path) const;
};

/// The failure of a clip; with `cancelled` it is none of the clip's own.
HandoffRowFailure failedClip(const HandoffClip &clip, const QString &error, bool cancelled = false);

} // namespace corvane
