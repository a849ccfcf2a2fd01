#include "media/PlayerThread.h"

#include "media/MediaAsset.h"

#include <pthread.h>

#include <algorithm>

namespace corvane::media {

namespace {

using Task = PlayerRequests::Task;
using namespace std::chrono_literals;

/// During a drag a frame is shown at least this often, although newer seeks are pending.
constexpr auto kMaxTimeWithoutFrame = 150ms;
/// Reading ahead begins this long after the latest request: a decode in progress would only delay
/// the next seek of the drag.
constexpr auto kReadAheadDelay = 40ms;

/// The duration of a file without decodable video, or nullopt if the file can't be read.
std::optional<MediaTime> readDuration(const QString &path, const std::stop_token &stop) {
    try {
        return MediaAsset::read(path, stop).duration;
    } catch (const MediaError &) {
        return std::nullopt;
    }
}

} // namespace

PlayerThread::PlayerThread(MediaPlayer::Options options, std::function<void()> notify)
    : m_clock(*options.clock),
      m_audioOutput(std::move(options.audioOutput)),
      m_frameBytes(options.frameBytes),
      m_requests(*options.clock),
      m_reports(std::move(notify)) {
    if (m_audioOutput) {
        m_audioOutput->setWake([this] { m_requests.wake(); });
    }
    m_thread = std::thread([this] { run(); });
}

PlayerThread::~PlayerThread() {
    m_requests.add([](PlayerRequest &request) { request.isQuit = true; });
    m_thread.join();
}

void PlayerThread::setShownItem(quint64 item) {
    const std::scoped_lock lock(m_sinkMutex);
    m_shownItem = item;
    if (m_sink) {
        m_sink->clear();
    }
}

void PlayerThread::setSink(std::shared_ptr<FrameSink> sink) {
    const std::scoped_lock lock(m_sinkMutex);
    if (m_sink) {
        m_sink->clear();
    }
    m_sink = std::move(sink);
}

void PlayerThread::run() {
    ::pthread_setname_np(::pthread_self(), "player");
    Due due;
    for (;;) {
        const auto request = m_requests.take(due);
        if (request.isQuit) {
            break;
        }
        due = carryOut(request);
    }
    m_audioOutput.reset();
    m_source.reset();
}

PlayerThread::Due PlayerThread::carryOut(const PlayerRequest &request) {
    try {
        handle(request);
        reportMove(request.move);
        if (!request.isEmpty()) {
            m_readAheadFrom = m_clock.now() + kReadAheadDelay;
        }
        return advance();
    } catch (const Cancelled &) {
        return m_clock.now();
    } catch (const std::exception &) {
        // A `Failure` if the file became unreadable or a frame cannot be decoded, else a fault such
        // as exhausted memory. It ends playback, never the program. The shown frame stays.
        if (m_rate.value != 0) {
            stopPlayback();
        }
        reportMove(request.move);
        return std::nullopt;
    }
}

void PlayerThread::handle(const PlayerRequest &request) {
    if (request.observers) {
        m_observers = *request.observers;
    }
    if (request.range) {
        m_range = request.range->value;
    }
    if (request.rate) {
        setRate(*request.rate);
    }
    m_serial = request.serial;
    if (request.item) {
        open(*request.item);
    }
    if (request.seek) {
        seek(*request.seek);
    } else if (request.item) {
        seek({});
    }
    for (const auto &next : request.steps) {
        step(next);
    }
    if (!request.steps.isEmpty()) {
        show();
        report(true);
    } else if (request.isRedraw) {
        m_shownTime.reset();
        show();
    }
}

void PlayerThread::open(const PlayerRequest::Item &item) {
    m_source.reset();
    m_frame.reset();
    m_duration.reset();
    m_shownTime.reset();
    m_lastShow.reset();
    m_item = item.number;
    if (m_audioOutput) {
        m_audioOutput->setFile(item.path);
    }
    if (item.path.isEmpty()) {
        return;
    }
    const auto stop = m_requests.start(Task::open);
    try {
        m_source = std::make_unique<FrameSource>(item.path, m_frameBytes, stop);
        m_duration = m_source->duration();
    } catch (const MediaError &) { // no decodable video; the file may have audio
        m_duration = readDuration(item.path, stop);
    }
}

void PlayerThread::seek(MediaTime time) {
    m_time = time;
    restart();
    const bool isOverdue = m_lastShow && m_clock.now() - *m_lastShow > kMaxTimeWithoutFrame;
    showFrameAt(time, isOverdue ? Task::seekToShow : Task::seek);
    report(true);
}

void PlayerThread::showFrameAt(MediaTime time, Task task) {
    if (!m_source) {
        return;
    }
    startTask(task);
    if (const auto frame = m_source->at(time)) {
        setFrame(*frame);
        show();
    }
}

void PlayerThread::step(const PlayerRequest::Step &step) {
    if (!m_frame) {
        return;
    }
    startTask(Task::step);
    const MediaTime from = m_frame->time;
    setFrame(frameAfterStep(*m_frame, step));
    // A step forward from within the last frame doesn't move back to its start.
    if (step.frames < 0 || m_frame->time != from) {
        m_time = m_frame->time;
    }
    if (step.range) {
        m_time = std::max(step.range->in, std::min(m_time, step.range->out));
    }
    restart();
}

/// Steps up to the frames that the range's in and out points name. From outside the range the
/// result is the nearer of the two.
VideoFrame PlayerThread::frameAfterStep(VideoFrame frame, const PlayerRequest::Step &step) {
    const bool isForward = step.frames > 0;
    const auto start = [&frame] { return frame.time.seconds(); };
    const double in = step.range ? step.range->in.seconds() : 0;
    for (int left = std::abs(step.frames); left > 0; --left) {
        if (!isForward && step.range && start() <= in + kHalfTick) {
            break;
        }
        const auto next = isForward ? m_source->next(frame) : m_source->previous(frame);
        if (!next || (isForward && step.range &&
                      next->time.seconds() > step.range->out.seconds() + kHalfTick)) {
            break;
        }
        frame = *next;
        m_source->setFocus(frame, isForward ? FrameSource::Direction::forward
                                            : FrameSource::Direction::backward);
    }
    if (step.range && start() > step.range->out.seconds() + kHalfTick) {
        return m_source->at(step.range->out).value_or(frame);
    }
    if (step.range && start() < in - kHalfTick) {
        const auto first = m_source->at(step.range->in);
        return first && first->time > frame.time ? *first : frame;
    }
    return frame;
}

void PlayerThread::setRate(const PlayerRequest::Rate &rate) {
    const bool wasPlaying = m_rate.value != 0;
    m_rate = rate;
    restart();
    if (wasPlaying) {
        report(true);
    }
}

void PlayerThread::startTask(Task task) {
    const auto stop = m_requests.start(task);
    if (m_source) {
        m_source->setStop(stop);
    }
}

void PlayerThread::setFrame(const VideoFrame &frame) {
    const bool isBackward =
        m_rate.value < 0 || (m_rate.value == 0 && m_frame && frame.time < m_frame->time);
    m_frame = frame;
    m_source->setFocus(frame, isBackward ? FrameSource::Direction::backward
                                         : FrameSource::Direction::forward);
}

void PlayerThread::show() {
    if (!m_frame || m_shownTime == m_frame->time) {
        return;
    }
    std::shared_ptr<FrameSink> sink;
    {
        const std::scoped_lock lock(m_sinkMutex);
        sink = m_sink;
    }
    if (sink) {
        auto frame = m_converter.convert(*m_frame, m_source->quarterTurns(), sink->wantedSize());
        frame.item = m_item;
        const std::scoped_lock lock(m_sinkMutex);
        if (m_item == m_shownItem && sink == m_sink) {
            sink->show(std::move(frame));
        }
    }
    m_shownTime = m_frame->time;
    m_lastShow = m_clock.now();
}

void PlayerThread::report(bool isJump) {
    m_reports.add([&](PlayerReport &report) {
        const bool wasJump = report.time && report.time->isJump;
        report.time = {m_time, m_serial, isJump || wasJump};
    });
}

void PlayerThread::reportMove(quint64 move) {
    if (std::exchange(m_reportedMove, move) != move) {
        m_reports.add([move](PlayerReport &report) { report.move = move; });
    }
}

} // namespace corvane::media
