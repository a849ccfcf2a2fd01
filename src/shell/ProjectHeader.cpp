#include "shell/ProjectHeader.h"

#include "session/SessionTexts.h"

namespace corvane {

namespace {

const auto kNoSelectsHelp = QStringLiteral("Mark clips with the S flag in Review first");

} // namespace

ProjectHeader::ProjectHeader(ProjectStore &store, ProjectPresence &presence, QObject *parent)
    : QObject(parent), m_store(store), m_presence(presence) {
    connect(&m_store, &ProjectStore::projectChanged, this, &ProjectHeader::updateState);
    connect(&m_store, &ProjectStore::statusMessageChanged, this, &ProjectHeader::updateState);
    connect(&m_store, &ProjectStore::saveStateChanged, this, &ProjectHeader::updateState);
    connect(&m_presence, &ProjectPresence::otherHolderChanged, this, &ProjectHeader::updateState);
    updateState();
}

void ProjectHeader::updateState() {
    State state;
    if (const auto &project = m_store.project()) {
        state = {.projectName = project->displayName(),
                 .statusMessage = m_store.statusMessage().value_or(QString()),
                 .hasSelects = m_store.hasSelects()};
        addNotices(state);
    }
    if (std::exchange(m_state, state) != state) {
        Q_EMIT changed();
    }
}

void ProjectHeader::addNotices(State &state) const {
    QStringList notices{SessionTexts::unsavedNotice(m_store.saveState()),
                        SessionTexts::fullnessNotice(m_store.saveState())};
    QStringList sentences{SessionTexts::nearlyFull(m_store.saveState())};
    if (const auto &failure = m_store.saveState().failure) {
        sentences.prepend(failure->description());
    }
    if (const auto &holder = m_presence.otherHolder()) {
        notices.append(SessionTexts::openOn(*holder));
        sentences.append(SessionTexts::openOnSince(*holder));
    }
    notices.removeAll(QString());
    sentences.removeAll(QString());
    state.notice = notices.join(QStringLiteral(" · "));
    state.noticeHelp = sentences.join(QLatin1Char('\n'));
}

QString ProjectHeader::exportHelp() const {
    return hasSelects() ? QStringLiteral("Export selects (Ctrl+E)") : kNoSelectsHelp;
}

QString ProjectHeader::handoffHelp() const {
    return hasSelects() ? QStringLiteral("Bundle selects + media into a portable .corvane package "
                                         "(Ctrl+Shift+E)")
                        : kNoSelectsHelp;
}

} // namespace corvane
