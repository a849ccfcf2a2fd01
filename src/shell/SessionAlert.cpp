#include "shell/SessionAlert.h"

#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "session/ProjectName.h"

#include <QPointer>

namespace corvane {

namespace {

QVariantMap alertSubject(const SessionTexts::Question &question) {
    QVariantList choices;
    for (const auto &choice : question.choices) {
        choices.append(QVariantMap{{QStringLiteral("answer"), int(choice.answer)},
                                   {QStringLiteral("label"), choice.label}});
    }
    return {{QStringLiteral("title"), question.title},
            {QStringLiteral("text"), question.text},
            {QStringLiteral("choices"), choices},
            {QStringLiteral("acceptText"), question.accept},
            {QStringLiteral("cancelText"), question.cancel},
            {QStringLiteral("destructive"), question.isDestructive}};
}

} // namespace

SessionAlert::SessionAlert(ProjectStore &store, ProjectPresence &presence, AppRequests &requests,
                           FilePanels &panels, QObject *parent)
    : QObject(parent), m_store(store), m_presence(presence), m_panels(panels) {
    connect(&m_store, &ProjectStore::lastErrorChanged, this, &SessionAlert::updateFailure);
    connect(&m_presence, &ProjectPresence::otherHolderChanged, this, &SessionAlert::updateHolder);
    connect(&requests, &AppRequests::saveCopyRequested, this, &SessionAlert::askForCopy);
    connect(&requests, &AppRequests::closeWithoutSavingRequested, this,
            [this] { show(Kind::CloseWithoutSaving); });
}

QVariant SessionAlert::subject() const {
    if (!m_store.project()) {
        return {};
    }
    switch (m_kind) {
    case Kind::SaveFailed:
        if (m_store.lastError()) {
            return alertSubject(
                SessionTexts::saveFailed(*m_store.lastError(), m_store.project()->displayName()));
        }
        break;
    case Kind::CloseWithoutSaving:
        return alertSubject(SessionTexts::closeWithoutSaving(m_store.lastSavedAt()));
    case Kind::QuitWithoutSaving:
        return alertSubject(SessionTexts::quitWithoutSaving(m_store.lastSavedAt()));
    case Kind::OpenElsewhere:
        if (m_presence.otherHolder()) {
            return alertSubject(SessionTexts::openElsewhere(*m_presence.otherHolder()));
        }
        break;
    case Kind::None:
        break;
    }
    return {};
}

void SessionAlert::updateFailure() {
    const auto &error = m_store.lastError();
    if (error && error->isSaveFailure()) {
        show(Kind::SaveFailed);
    } else if (m_kind == Kind::SaveFailed) {
        show(Kind::None);
    }
}

/// Asks once for each opened project.
void SessionAlert::updateHolder() {
    const bool isHeld = m_presence.otherHolder().has_value();
    if (!isHeld) {
        m_hasAskedAboutHolder = false;
    } else if (!std::exchange(m_hasAskedAboutHolder, true) && m_kind == Kind::None) {
        show(Kind::OpenElsewhere);
    }
    if (m_kind == Kind::OpenElsewhere && !isHeld) {
        show(Kind::None);
    }
}

void SessionAlert::show(Kind kind) {
    m_kind = kind;
    Q_EMIT changed();
}

SessionAlert::Kind SessionAlert::close() {
    const Kind kind = m_kind;
    show(Kind::None);
    if (kind == Kind::SaveFailed) {
        m_store.clearLastError();
    }
    return kind;
}

bool SessionAlert::confirmQuit() {
    if (!m_store.isDirty() || !m_store.saveState().failure) {
        return true;
    }
    show(Kind::QuitWithoutSaving);
    return false;
}

void SessionAlert::accept() {
    const Kind kind = close();
    if (kind == Kind::CloseWithoutSaving) {
        detach(m_store.closeProject(ProjectStore::UnsavedEdits::Discard));
    } else if (kind == Kind::QuitWithoutSaving) {
        Q_EMIT quitConfirmed();
    }
}

void SessionAlert::cancel() {
    if (close() == Kind::OpenElsewhere) {
        detach(m_store.closeProject());
    }
}

void SessionAlert::choose(int answer) {
    const auto file = m_store.fileURL();
    if (close() != Kind::SaveFailed || !file) {
        return;
    }
    switch (Answer(answer)) {
    case Answer::SaveCopy:
        askForCopy();
        break;
    case Answer::CloseWithoutSaving:
        show(Kind::CloseWithoutSaving);
        break;
    case Answer::Reload:
        detach(m_store.openProject(*file, ProjectStore::UnsavedEdits::Discard));
        break;
    case Answer::Overwrite:
        detach(m_store.saveNow(ProjectStore::ForeignChanges::Overwrite));
        break;
    }
}

void SessionAlert::askForCopy() {
    if (!m_store.fileURL()) {
        return;
    }
    const QString stem = paths::split(paths::lastComponent(*m_store.fileURL())).stem;
    const auto &failure = m_store.saveState().failure;
    const bool isConflict = failure && failure->kind() == ProjectStoreError::Kind::changedOnDisk;
    m_panels.save({.message = QStringLiteral("Choose where to save the copy."),
                   .proposedName = projectName::fileName(stem + QStringLiteral(" copy")),
                   .choosesProjectFile = true},
                  [self = QPointer(this), isConflict](const QString &chosen) {
                      if (self) {
                          detach(self->saveCopy(projectName::withExtension(chosen), isConflict));
                      }
                  });
}

/// After a conflict, continues with the file as the other program left it: the user's version is in
/// the copy, unless it was edited meanwhile.
QCoro::Task<> SessionAlert::saveCopy(QString file, bool isConflict) {
    const QPointer self(this);
    const auto copied = m_store.project();
    const bool isSaved = co_await m_store.saveCopy(file);
    if (self && isSaved && isConflict && copied && m_store.project() == copied) {
        co_await m_store.openProject(copied->filePath, ProjectStore::UnsavedEdits::Discard);
    }
}

} // namespace corvane
