#pragma once

// Internal to src/media.

#include "media/DisplayFrameConverter.h"
#include "media/FrameSource.h"
#include "media/PlaybackState.h"
#include "media/PlayerReports.h"
#include "media/PlayerRequests.h"

#include <thread>

namespace corvane::media {

/// The thread of a player. It carries out requests; in between it plays or, if paused, reads ahead.
/// It owns the open file and the decoders and communicates only through requests, reports and the
/// sink.
class PlayerThread {
  public:
    /// `notify` is called on this thread when reports are pending.
    PlayerThread(MediaPlayer::Options options, std::function<void()> notify);
    ~PlayerThread();
    Q_DISABLE_COPY_MOVE(PlayerThread)

    PlayerRequests &requests() { return m_requests; }
    PlayerReports &reports() { return m_reports; }

    /// Clears the sink, which from now on receives only frames of this item. Main thread.
    void setShownItem(quint64 item);
    /// Main thread.
    void setSink(std::shared_ptr<FrameSink> sink);

  private:
    using Duration = MonotonicClock::Duration;
    /// When to continue without a request; nullopt to wait for one.
    using Due = std::optional<Duration>;

    void run();
    Due carryOut(const PlayerRequest &request);
    void handle(const PlayerRequest &request);
    void open(const PlayerRequest::Item &item);
    void seek(MediaTime time);
    void step(const PlayerRequest::Step &step);
    VideoFrame frameAfterStep(VideoFrame frame, const PlayerRequest::Step &step);
    void setRate(const PlayerRequest::Rate &rate);
    void showFrameAt(MediaTime time, PlayerRequests::Task task);

    void enter(playback::State state);
    void restart();
    void stopPlayback();
    void endPlayback();
    MediaTime timeAfterEnd() const;
    Due advance();
    Due advance(playback::Paused &);
    Due advance(playback::Starting &);
    Due advance(playback::AwaitingAudio &awaiting);
    Due advance(playback::Running &running);

    void syncToAudio(playback::Running &running, Duration now);
    void moveTo(playback::Running &running, double seconds);
    void skipTo(double seconds);
    bool isAtEnd(const playback::Running &running);
    bool isRangeOver(double position) const;
    double limit() const;
    MediaTime shownTime(const playback::Running &running);
    Duration nextDue(const playback::Running &running);
    std::optional<VideoFrame> nextToPlay();
    double endSeconds() const;
    bool isForward() const { return m_rate.value > 0; }

    void startTask(PlayerRequests::Task task);
    void setFrame(const VideoFrame &frame);
    void show();
    void report(bool isJump);
    void reportMove(quint64 move);

    MonotonicClock &m_clock;
    std::unique_ptr<AudioOutput> m_audioOutput;
    const qsizetype m_frameBytes;
    PlayerRequests m_requests;
    PlayerReports m_reports;

    std::mutex m_sinkMutex; ///< held during calls to the sink that change it
    std::shared_ptr<FrameSink> m_sink;
    quint64 m_shownItem = 0;

    DisplayFrameConverter m_converter;
    std::unique_ptr<FrameSource> m_source; ///< null without decodable video
    std::optional<MediaTime> m_duration;
    quint64 m_item = 0;
    quint64 m_serial = 0;
    quint64 m_reportedMove = 0;
    MediaTime m_time;                  ///< the playhead as of the latest request or report
    std::optional<VideoFrame> m_frame; ///< that `m_time` names
    std::optional<MediaTime> m_shownTime;
    Due m_lastShow;              ///< when a frame was last shown
    Duration m_readAheadFrom{0}; ///< when reading ahead may begin

    PlayerRequest::Rate m_rate; ///< 0 exactly in the state `Paused`
    std::optional<MediaTimeRange> m_range;
    PlayerRequest::Observers m_observers;
    playback::State m_state;

    std::thread m_thread;
};

} // namespace corvane::media
