#include "media/PlayerThread.h"

#include "media/MediaAsset.h"

#include <pthread.h>

#include <algorithm>

namespace corvane::media {

namespace {

using Work = PlayerRequests::Work;
using namespace std::chrono_literals;

/// While the pointer drags, a picture is let come through at least this often.
constexpr auto kLongestBlindDrag = 150ms;
/// Reading ahead begins when nothing more has been asked for this long: what it is amid would only
/// hold up the next seek of a drag.
constexpr auto kQuietBeforeFill = 40ms;

} // namespace

PlayerThread::PlayerThread(MediaPlayer::Options options, std::function<void()> announce)
    : m_clock(*options.clock),
      m_sound(std::move(options.audioOutput)),
      m_frameBytes(options.frameBytes),
      m_requests(*options.clock),
      m_reports(std::move(announce)) {
    if (m_sound) {
        m_sound->setWake([this] { m_requests.wake(); });
    }
    m_thread = std::thread([this] { work(); });
}

PlayerThread::~PlayerThread() {
    m_requests.add([](PlayerRequest &request) { request.quit = true; });
    m_thread.join();
}

void PlayerThread::setShownItem(quint64 item) {
    const std::scoped_lock lock(m_showMutex);
    m_shownItem = item;
    if (m_sink) {
        m_sink->clear();
    }
}

void PlayerThread::setSink(std::shared_ptr<FrameSink> sink) {
    const std::scoped_lock lock(m_showMutex);
    if (m_sink) {
        m_sink->clear();
    }
    m_sink = std::move(sink);
}

void PlayerThread::work() {
    ::pthread_setname_np(::pthread_self(), "player");
    Due due;
    for (;;) {
        const auto request = m_requests.take(due);
        if (request.quit) {
            break;
        }
        due = run(request);
    }
    m_sound.reset();
    m_source.reset();
}

/// Gives when there is something to do without a request.
PlayerThread::Due PlayerThread::run(const PlayerRequest &request) {
    try {
        handle(request);
        m_fillFrom = request.isEmpty() ? m_fillFrom : m_clock.now() + kQuietBeforeFill;
        return m_rate.value != 0 ? play() : fillIdly();
    } catch (const Cancelled &) {
        return m_clock.now();
    } catch (const std::exception &) {
        // The file turned unreadable on the way. What is shown stays; playing it is over.
        if (m_rate.value != 0) {
            endPlayback();
        }
        return std::nullopt;
    }
}

void PlayerThread::handle(const PlayerRequest &request) {
    if (request.observers) {
        m_observers = *request.observers;
    }
    if (request.goOn && m_isHeld) {
        m_isHeld = false;
        m_isClockSet = false;
    }
    if (request.rate) {
        applyRate(*request.rate);
    }
    m_serial = request.serial;
    if (request.item) {
        open(*request.item);
    }
    if (request.seek) {
        goTo(*request.seek);
    } else if (request.item) {
        goTo({});
    }
    for (const auto &next : request.steps) {
        step(next);
    }
    if (!request.steps.isEmpty()) {
        show();
        report(true);
    } else if (request.redraw) {
        m_shownTime.reset();
        show();
    }
}

void PlayerThread::open(const PlayerRequest::Item &item) {
    m_source.reset();
    m_frame.reset();
    m_duration.reset();
    m_shownTime.reset();
    m_shownAt.reset();
    m_item = item.number;
    if (m_sound) {
        m_sound->setFile(item.path);
    }
    if (item.path.isEmpty()) {
        return;
    }
    const auto stop = m_requests.begin(Work::open);
    try {
        m_source = std::make_unique<FrameSource>(item.path, m_frameBytes, stop);
        m_duration = m_source->duration();
    } catch (const MediaError &) {
        try {
            m_duration = MediaAsset::read(item.path, stop).duration;
        } catch (const MediaError &) {
            m_duration.reset(); // it can't be read: there is nothing to play
        }
    }
}

void PlayerThread::goTo(MediaTime time) {
    m_time = time;
    m_isHeld = false;
    m_isClockSet = false;
    if (m_source) {
        const bool isOverdue = m_shownAt && m_clock.now() - *m_shownAt > kLongestBlindDrag;
        begin(isOverdue ? Work::seekToShow : Work::seek);
        if (const auto frame = m_source->at(time)) {
            take(*frame);
            show();
        }
    }
    report(true);
}

void PlayerThread::step(const PlayerRequest::Step &step) {
    if (!m_frame) {
        return;
    }
    begin(Work::step);
    const MediaTime from = m_frame->time;
    take(walk(*m_frame, step));
    if (step.frames < 0 || m_frame->time != from) { // at the end a step on doesn't lead back
        m_time = m_frame->time;
    }
    if (step.range) {
        m_time = std::max(step.range->in, std::min(m_time, step.range->out));
    }
    m_isHeld = false;
    m_isClockSet = false;
}

/// In a range the ends are the frames that its in and out name; from outside it leads to the
/// nearer.
VideoFrame PlayerThread::walk(VideoFrame frame, const PlayerRequest::Step &step) {
    const bool isForward = step.frames > 0;
    const auto begins = [&frame] { return frame.time.seconds(); };
    const double in = step.range ? step.range->in.seconds() : 0;
    for (int left = std::abs(step.frames); left > 0; --left) {
        if (!isForward && step.range && begins() <= in + kHalfTick) {
            break;
        }
        const auto next = isForward ? m_source->after(frame) : m_source->before(frame);
        if (!next || (isForward && step.range &&
                      next->time.seconds() > step.range->out.seconds() + kHalfTick)) {
            break;
        }
        frame = *next;
        m_source->setFocus(frame, isForward ? FrameSource::Direction::forward
                                            : FrameSource::Direction::backward);
    }
    if (step.range && begins() > step.range->out.seconds() + kHalfTick) {
        return m_source->at(step.range->out).value_or(frame);
    }
    if (step.range && begins() < in - kHalfTick) {
        const auto first = m_source->at(step.range->in);
        return first && first->time > frame.time ? *first : frame;
    }
    return frame;
}

void PlayerThread::applyRate(const PlayerRequest::Rate &rate) {
    const bool wasPlaying = m_rate.value != 0;
    m_rate = rate;
    m_isHeld = false;
    m_isClockSet = false;
    if (rate.value == 0 && m_sound) {
        m_sound->pause();
    }
    if (wasPlaying) {
        report(true);
    }
}

PlayerThread::Due PlayerThread::fillIdly() {
    if (!m_source) {
        return std::nullopt;
    }
    if (m_clock.now() < m_fillFrom) {
        return m_fillFrom;
    }
    begin(Work::fill);
    return m_source->fill(true) ? Due(m_clock.now()) : std::nullopt;
}

void PlayerThread::begin(Work work) {
    const auto stop = m_requests.begin(work);
    if (m_source) {
        m_source->setStop(stop);
    }
}

void PlayerThread::take(const VideoFrame &frame) {
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
        const std::scoped_lock lock(m_showMutex);
        sink = m_sink;
    }
    if (sink) {
        auto picture = m_converter.convert(*m_frame, m_source->quarterTurns(), sink->wantedSize());
        picture.item = m_item;
        const std::scoped_lock lock(m_showMutex);
        if (m_item == m_shownItem && sink == m_sink) {
            sink->show(std::move(picture));
        }
    }
    m_shownTime = m_frame->time;
    m_shownAt = m_clock.now();
}

void PlayerThread::report(bool isJump) {
    m_reports.add([&](PlayerReport &report) {
        const bool wasJump = report.time && report.time->isJump;
        report.time = {m_time, m_serial, isJump || wasJump};
    });
}

} // namespace corvane::media
