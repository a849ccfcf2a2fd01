#include "media/MediaPlayer.h"

#include "media/PlayerThread.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace corvane::media {

FrameSink::~FrameSink() = default;

MediaPlayer::MediaPlayer(Options options, QObject *parent)
    : QObject(parent),
      m_clock(*options.clock),
      m_thread(std::make_unique<PlayerThread>(std::move(options), [this] {
          // The thread ends before this object does, and a queued call ends with it.
          QMetaObject::invokeMethod(this, [this] { takeReports(); }, Qt::QueuedConnection);
      })) {}

MediaPlayer::~MediaPlayer() = default;

void MediaPlayer::setSink(std::shared_ptr<FrameSink> sink) {
    m_thread->setSink(std::move(sink));
    redraw();
}

void MediaPlayer::redraw() {
    m_thread->requests().add([](PlayerRequest &request) { request.redraw = true; });
}

void MediaPlayer::replaceCurrentItem(const QString &path) {
    ++m_item;
    ++m_serial;
    ++m_rateSerial;
    m_thread->setShownItem(m_item);
    m_thread->requests().add([&](PlayerRequest &request) {
        request.item = {m_item, path};
        request.seek.reset();
        request.steps.clear();
        request.rate = {0, m_rateSerial};
        request.serial = m_serial;
    });
    storeRate(0);
    takeTime({}, true);
}

void MediaPlayer::setRate(float rate) {
    const float kept = std::isfinite(rate) ? std::clamp(rate, -kFastestRate, kFastestRate) : 0;
    ++m_rateSerial;
    m_thread->requests().add([&](PlayerRequest &request) { request.rate = {kept, m_rateSerial}; });
    storeRate(kept);
}

void MediaPlayer::storeRate(float rate) {
    if (m_rate != rate) {
        m_rate = rate;
        Q_EMIT rateChanged(rate);
    }
}

void MediaPlayer::seek(MediaTime time) {
    ++m_serial;
    m_thread->requests().add([&](PlayerRequest &request) {
        request.seek = time;
        request.steps.clear();
        request.serial = m_serial;
    });
    takeTime(time, true);
}

void MediaPlayer::stepFrames(int frames, std::optional<MediaTimeRange> range) {
    m_thread->requests().add(
        [&](PlayerRequest &request) { request.steps.append({frames, range}); });
}

MediaPlayer::Token MediaPlayer::addPeriodicTimeObserver(std::chrono::nanoseconds interval,
                                                        std::function<void(MediaTime)> call) {
    m_periodicObservers[++m_lastToken] = {interval, std::move(call), std::nullopt};
    sendObservers();
    return m_lastToken;
}

MediaPlayer::Token MediaPlayer::addBoundaryTimeObserver(MediaTime time,
                                                        std::function<void()> call) {
    m_boundaryObservers[++m_lastToken] = {time, std::move(call)};
    sendObservers();
    return m_lastToken;
}

void MediaPlayer::removeTimeObserver(Token token) {
    if (m_periodicObservers.erase(token) + m_boundaryObservers.erase(token) > 0) {
        sendObservers();
    }
}

void MediaPlayer::sendObservers() {
    PlayerRequest::Observers observers;
    for (const auto &[token, observer] : m_boundaryObservers) {
        observers.boundaries.append({token, observer.first});
    }
    for (const auto &[token, observer] : m_periodicObservers) {
        observers.period =
            std::min(observers.period.value_or(observer.interval), observer.interval);
    }
    m_thread->requests().add([&](PlayerRequest &request) { request.observers = observers; });
}

void MediaPlayer::takeReports() {
    const QPointer alive(this);
    const auto report = m_thread->reports().take();
    if (report.time && report.time->serial == m_serial) {
        takeTime(report.time->time, report.time->isJump);
    }
    if (alive && !report.boundaries.isEmpty()) {
        callBoundaries(report.boundaries);
    }
    if (alive && report.endedRate == m_rateSerial) {
        storeRate(0);
    }
}

/// An observer may add and remove observers, and end the player.
void MediaPlayer::takeTime(MediaTime time, bool isJump) {
    const QPointer alive(this);
    m_time = time;
    const auto now = m_clock.now();
    QList<std::function<void(MediaTime)>> calls;
    for (auto &[token, observer] : m_periodicObservers) {
        // A report a little early counts: the thread's own pace is the shortest interval.
        if (isJump || !observer.called || now - *observer.called >= observer.interval * 9 / 10) {
            observer.called = now;
            calls.append(observer.call);
        }
    }
    for (const auto &call : calls) {
        if (alive) {
            call(time);
        }
    }
}

void MediaPlayer::callBoundaries(const QList<Token> &tokens) {
    const QPointer alive(this);
    for (const auto token : tokens) {
        const auto observer = m_boundaryObservers.find(token);
        if (observer != m_boundaryObservers.end()) {
            const auto call = observer->second.second;
            call();
        }
        if (!alive) {
            return;
        }
    }
    m_thread->requests().add([](PlayerRequest &request) { request.goOn = true; });
}

} // namespace corvane::media
