#include "shell/ProjectHeader.h"

namespace corvane {

namespace {

const auto kNoSelectsHelp = QStringLiteral("Mark clips with the S flag in Review first");

} // namespace

ProjectHeader::ProjectHeader(ProjectStore &store, QObject *parent)
    : QObject(parent), m_store(store) {
    connect(&m_store, &ProjectStore::projectChanged, this, &ProjectHeader::updateState);
    connect(&m_store, &ProjectStore::statusMessageChanged, this, &ProjectHeader::updateState);
    updateState();
}

void ProjectHeader::updateState() {
    State state;
    if (const auto &project = m_store.project()) {
        state = {.projectName = project->displayName(),
                 .statusMessage = m_store.statusMessage().value_or(QString()),
                 .hasSelects = project->hasSelects()};
    }
    if (std::exchange(m_state, state) != state) {
        Q_EMIT changed();
    }
}

QString ProjectHeader::exportHelp() const {
    return hasSelects() ? QStringLiteral("Export selects (Cmd-E)") : kNoSelectsHelp;
}

QString ProjectHeader::handoffHelp() const {
    return hasSelects() ? QStringLiteral("Bundle selects + media into a portable .corvane package "
                                         "(Shift-Cmd-E)")
                        : kNoSelectsHelp;
}

} // namespace corvane
