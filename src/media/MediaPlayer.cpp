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
          // The destructor joins the thread, and QObject drops calls queued to a deleted object.
          QMetaObject::invokeMethod(this, [this] { handleReports(); }, Qt::QueuedConnection);
      })) {}

MediaPlayer::~MediaPlayer() = default;

void MediaPlayer::setSink(std::shared_ptr<FrameSink> sink) {
    m_thread->setSink(std::move(sink));
    redraw();
}

void MediaPlayer::redraw() {
    m_thread->requests().add([](PlayerRequest &request) { request.isRedraw = true; });
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
        request.range = PlayerRequest::Range{};
        request.serial = m_serial;
    });
    updateRate(0);
    updateTime({}, true);
}

void MediaPlayer::setRate(float rate) {
    const float clamped = std::isfinite(rate) ? std::clamp(rate, -kFastestRate, kFastestRate) : 0;
    ++m_rateSerial;
    m_move += m_rate != 0 && clamped == 0;
    m_thread->requests().add([&](PlayerRequest &request) {
        request.rate = {clamped, m_rateSerial};
        request.move = m_move;
    });
    updateRate(clamped);
}

void MediaPlayer::setRange(std::optional<MediaTimeRange> range) {
    m_thread->requests().add(
        [&](PlayerRequest &request) { request.range = PlayerRequest::Range{range}; });
}

void MediaPlayer::updateRate(float rate) {
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
    updateTime(time, true);
}

void MediaPlayer::stepFrames(int frames, std::optional<MediaTimeRange> range) {
    ++m_move;
    m_thread->requests().add([&](PlayerRequest &request) {
        request.steps.append({frames, range});
        request.move = m_move;
    });
}

MediaPlayer::Token MediaPlayer::addPeriodicTimeObserver(std::chrono::nanoseconds interval,
                                                        std::function<void(MediaTime)> call) {
    m_periodicObservers[++m_lastToken] = {interval, std::move(call), std::nullopt};
    sendObservers();
    return m_lastToken;
}

void MediaPlayer::removeTimeObserver(Token token) {
    if (m_periodicObservers.erase(token) > 0) {
        sendObservers();
    }
}

void MediaPlayer::sendObservers() {
    PlayerRequest::Observers observers;
    for (const auto &[token, observer] : m_periodicObservers) {
        observers.period =
            std::min(observers.period.value_or(observer.interval), observer.interval);
    }
    m_thread->requests().add([&](PlayerRequest &request) { request.observers = observers; });
}

void MediaPlayer::handleReports() {
    const QPointer alive(this);
    const auto report = m_thread->reports().take();
    if (report.time && report.time->serial == m_serial) {
        updateTime(report.time->time, report.time->isJump);
    }
    if (alive && report.endedRate == m_rateSerial) {
        updateRate(0);
    }
    if (alive && report.move) {
        updateSettled(*report.move);
    }
}

void MediaPlayer::updateSettled(quint64 move) {
    const bool wasSettled = isSettled();
    m_settledMove = move;
    if (!wasSettled && isSettled()) {
        Q_EMIT settled();
    }
}

/// The observers may add and remove observers, and may delete the player.
void MediaPlayer::updateTime(MediaTime time, bool isJump) {
    const QPointer alive(this);
    m_time = time;
    const auto now = m_clock.now();
    QList<std::function<void(MediaTime)>> calls;
    for (auto &[token, observer] : m_periodicObservers) {
        // Tolerates reports that come a little early.
        if (isJump || !observer.lastCall ||
            now - *observer.lastCall >= observer.interval * 9 / 10) {
            observer.lastCall = now;
            calls.append(observer.call);
        }
    }
    for (const auto &call : calls) {
        if (alive) {
            call(time);
        }
    }
}

} // namespace corvane::media
