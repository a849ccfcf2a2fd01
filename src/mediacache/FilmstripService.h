#pragma once

#include "platform/Failure.h"

#include <QCoroTask>
#include <QStringList>

#include <stop_token>

/// Creates filmstrips: rows of small frames of a clip, cached as files in the project's cache.
namespace corvane::FilmstripService {

/// The clip cannot have a filmstrip.
class Error : public Failure {
  public:
    enum class Case { assetHasNoDuration, noVideoTrack };

    explicit Error(Case reason);
    Case reason() const noexcept { return m_reason; }

  private:
    Case m_reason;
};

constexpr int kFrameCount = 15;

/// The paths of all frames: "<cache root>/<video id>/filmstrip/frame-00.jpg" and so on.
QStringList framePaths(const QString &videoId, const QString &cacheRoot);

/// The times of the frames in seconds: the middles of equal parts of the clip without its first and
/// last hundredth.
QList<double> frameSeconds(double durationSeconds);

/// Returns the paths of the frames. Creates all frames if any is missing; a frame that cannot be
/// created is left out. Works on an executor of its own.
///
/// Throws `Error`, `media::MediaError` if the clip cannot be opened, `FileError` if the folder
/// cannot be created, and `Cancelled`, which keeps the frames created so far. Main thread.
QCoro::Task<QStringList> generate(QString videoId, QString path, QString cacheRoot,
                                  std::stop_token stop = {});

} // namespace corvane::FilmstripService
