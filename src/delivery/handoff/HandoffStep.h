#pragma once

#include "delivery/handoff/HandoffRun.h"

#include <QCoroTask>

namespace corvane {

/// Makes one output of one clip. The base class names the output, validates the paths, makes the
/// files and reports progress. Main thread; file access runs on executors. Must outlive the task of
/// `perform`.
class HandoffStep {
  public:
    HandoffStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index);
    virtual ~HandoffStep();
    Q_DISABLE_COPY_MOVE(HandoffStep)

    /// Makes the output or records the failure. Never throws.
    QCoro::Task<> perform();

  protected:
    using Phase = HandoffProgress::Phase;
    /// The part of a step's progress that one operation covers.
    struct ProgressRange {
        double from = 0;
        double to = 1;
    };

    virtual QCoro::Task<> make() = 0;
    virtual QString failureText(const QString &error) const { return error; }

    /// Reserves the name of the output, which the progress shows from then on.
    void takeName(ExportNameParts parts);
    QString mediaPath() const;
    /// The path of the output by the open folder, for readers.
    QString anchoredMediaPath() const;
    const std::optional<RootIdentity> &sourceIdentity() const { return m_sourceRoot.identity; }

    /// Throws unless the source may be read and the output may be written.
    QCoro::Task<> validatePaths();
    /// Copies the source, or transcodes it if there is a preset, to a new file of the folder.
    /// Throws `PathSafety::Violation` if its content is not what was granted.
    QCoro::Task<> makeOutput(Destination destination, std::optional<media::ExportPreset> preset,
                             std::optional<ClipRange> range, ProgressRange progressRange);
    Destination mediaFile() const { return {m_run->folders->media, m_name, Placing::mustBeFree}; }
    /// Returns the name of the HD file; nullopt if it is not wanted, the run is cancelled, or it
    /// failed.
    QCoro::Task<std::optional<QString>> makeHDCopy(std::optional<ClipRange> range,
                                                   ProgressRange progressRange);
    /// Grants the output to the package; without an anchor it is hashed meanwhile.
    void addGrant(const std::optional<QString> &anchor);
    /// Ignores failures: the filmstrip is optional.
    QCoro::Task<> makeFilmstrip(QString videoId);

    /// Adds the clip to the package's document and to the result. Throws `DestinationLost` if the
    /// package is no longer at its path.
    QCoro::Task<> deliver(VideoItem video, std::optional<QString> hdName);
    void reportPhase(Phase phase, double rowProgress);
    bool isFastCopy() const { return m_run->plan.mode == ExportBatch::Mode::fastCopy; }

    std::shared_ptr<HandoffRun> m_run;
    HandoffClip m_clip;
    ImportCopier::SourceRoot m_sourceRoot;
    HandoffProgress m_progress;
    QString m_name; ///< of the output in "media"

  private:
    bool isCancelled() const { return m_run->cancelToken->isRequested(); }
    bool hasHDCopy() const { return m_run->plan.outputMode == HandoffOutputMode::primaryAndHd; }
    void noteSourceChange(const std::exception &error);
};

HandoffRowFailure failedClip(const HandoffClip &clip, const QString &error,
                             bool isCancelled = false);

} // namespace corvane
