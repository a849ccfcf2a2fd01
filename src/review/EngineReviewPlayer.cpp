#include "review/EngineReviewPlayer.h"

#include "platform/Tasks.h"

namespace corvane {

EngineReviewPlayer::EngineReviewPlayer(PlayerEngine &engine, QObject *parent)
    : ReviewPlayer(parent), m_engine(engine) {
    connect(&engine, &PlayerEngine::currentTimeChanged, this,
            &EngineReviewPlayer::currentSecondsChanged);
    connect(&engine, &PlayerEngine::durationChanged, this,
            &EngineReviewPlayer::durationSecondsChanged);
    connect(&engine, &PlayerEngine::rateChanged, this, &EngineReviewPlayer::rateChanged);
    connect(&engine, &PlayerEngine::isReadyChanged, this, &EngineReviewPlayer::isReadyChanged);
}

void EngineReviewPlayer::load(const QString &path) {
    detach(m_engine.load(path));
}

} // namespace corvane
