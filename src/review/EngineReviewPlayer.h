#pragma once

#include "review/PlayerEngine.h"
#include "review/ReviewPlayer.h"

namespace corvane {

/// Adapts a `PlayerEngine` to `ReviewPlayer`. Position and rate change as soon as they are
/// requested, so that quick key presses add up. Main thread only. The engine must outlive it.
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
