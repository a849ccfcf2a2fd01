#pragma once

#include "platform/Failure.h"

#include <QCoroTask>
#include <QStringList>

#include <stop_token>

/// Makes the row of small frames that a clip's scrubber shows. They are files in the project's
/// cache, and a second request is only a look at them.
namespace corvane::FilmstripService {

/// A clip of which no filmstrip can be made.
class Error : public Failure {
  public:
    enum class Case { assetHasNoDuration, noVideoTrack };

    explicit Error(Case reason);
    Case reason() const noexcept { return m_reason; }

  private:
    Case m_reason;
};

constexpr int kFrameCount = 15;

/// "<cache root>/<video id>/filmstrip/frame-00.jpg" and the following, in order.
QStringList framePaths(const QString &videoId, const QString &cacheRoot);

/// When each frame of a clip of so many seconds is taken: in the middles of equal parts of it, its
/// first and last hundredth left out.
QList<double> frameSeconds(double durationSeconds);

/// Gives the frames' paths, once all are there that can be made. Frames are only made where one is
/// missing; one that fails is passed over, and its path left out. The work is done on an executor
/// of its own.
///
/// Throws `Error`, `media::MediaError` where the clip can't be opened, `FileError` where the folder
/// can't be had, and `Cancelled` before the next frame once `stop` asks for it; frames made so far
/// stay. Main thread.
QCoro::Task<QStringList> generate(QString videoId, QString path, QString cacheRoot,
                                  std::stop_token stop = {});

} // namespace corvane::FilmstripService
