#pragma once

#include "review/PlayerEngine.h"
#include "review/ReviewPlayer.h"

namespace corvane {

/// The screen's player as the screen state sees it. What was asked of it is what it tells at once,
/// so that keys in quick succession build on each other. The engine must outlive it. Main thread.
class EngineReviewPlayer : public ReviewPlayer {
    Q_OBJECT

  public:
    explicit EngineReviewPlayer(PlayerEngine &engine, QObject *parent = nullptr);

    double currentSeconds() const override { return m_engine.currentSeconds(); }
    double durationSeconds() const override { return m_engine.durationSeconds(); }
    double rate() const override { return m_engine.rate(); }
    double framesPerSecond() const override { return m_engine.fps(); }
    bool isReady() const override { return m_engine.isReady(); }

    void load(const QString &path) override;
    void seek(double seconds) override { m_engine.seek(seconds); }
    void stepFrames(int frames) override { m_engine.stepFrames(frames); }
    void setRate(double rate) override { m_engine.setRate(float(rate)); }
    void pause() override { m_engine.pause(); }
    void playConstrained(double inSeconds, double outSeconds) override {
        m_engine.playConstrained(inSeconds, outSeconds);
    }
    void clearPlaybackConstraint() override { m_engine.clearPlaybackConstraint(); }

  private:
    PlayerEngine &m_engine;
};

} // namespace corvane
