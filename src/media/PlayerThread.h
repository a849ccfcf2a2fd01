#pragma once

// For the source files of this floor only.

#include "media/DisplayFrameConverter.h"
#include "media/FrameSource.h"
#include "media/PlayerReports.h"
#include "media/PlayerRequests.h"
#include "media/PlayheadMotion.h"

#include <thread>

namespace corvane::media {

/// The thread behind a player: it carries out requests, and between them it plays or reads ahead.
/// It owns the open file and all that decodes. Requests and reports are its only way in and out,
/// but for the sink.
class PlayerThread {
  public:
    /// `announce` says, on this thread, that there are reports.
    PlayerThread(MediaPlayer::Options options, std::function<void()> announce);
    ~PlayerThread();
    Q_DISABLE_COPY_MOVE(PlayerThread)

    PlayerRequests &requests() { return m_requests; }
    PlayerReports &reports() { return m_reports; }

    /// From now on only pictures of this item come to the sink, which is cleared. Main thread.
    void setShownItem(quint64 item);
    /// Main thread.
    void setSink(std::shared_ptr<FrameSink> sink);

  private:
    using Duration = MonotonicClock::Duration;
    using Due = std::optional<Duration>;

    void work();
    Due run(const PlayerRequest &request);

    void handle(const PlayerRequest &request);
    void open(const PlayerRequest::Item &item);
    void goTo(MediaTime time);
    void step(const PlayerRequest::Step &step);
    VideoFrame walk(VideoFrame frame, const PlayerRequest::Step &step);
    void applyRate(const PlayerRequest::Rate &rate);

    Due fillIdly();
    Due play();
    void startClock(Duration now);
    bool waitsForSound(Duration now);
    void followSound(Duration now);
    void moveTo(double seconds);
    void catchUp();
    bool holdAtBoundary(double from, double to);
    bool isAtEnd();
    void endPlayback();
    Duration nextDue(Duration now);

    void begin(PlayerRequests::Work work);
    void take(const VideoFrame &frame);
    void show();
    void report(bool isJump);
    MediaTime timeShown();
    std::optional<VideoFrame> neighbour(bool isForward);
    double endSeconds() const;

    MonotonicClock &m_clock;
    std::unique_ptr<AudioOutput> m_sound;
    const qsizetype m_frameBytes;
    PlayerRequests m_requests;
    PlayerReports m_reports;

    std::mutex m_showMutex; ///< held while the sink is told anything
    std::shared_ptr<FrameSink> m_sink;
    quint64 m_shownItem = 0;

    DisplayFrameConverter m_converter;
    std::unique_ptr<FrameSource> m_source; ///< nothing for a file without pictures
    std::optional<MediaTime> m_duration;
    quint64 m_item = 0;
    quint64 m_serial = 0;
    MediaTime m_time;                  ///< the playhead, as of the latest request or report
    std::optional<VideoFrame> m_frame; ///< that it names
    Due m_shownAt;                     ///< when a picture was last shown
    std::optional<MediaTime> m_shownTime;

    Duration m_fillFrom{0}; ///< when reading ahead may begin

    PlayerRequest::Rate m_rate;
    PlayerRequest::Observers m_observers;
    PlayheadMotion m_motion;
    bool m_isClockSet = false;
    bool m_isStarting = false; ///< nothing has been reported since the clock was set
    bool m_isHeld = false;     ///< at a boundary
    double m_position = 0;     ///< of the playhead, in seconds, while it plays
    Due m_soundDeadline;       ///< while the sound is awaited
    Duration m_soundCheck{0};
    Duration m_nextReport{0};

    std::thread m_thread;
};

} // namespace corvane::media
