#pragma once

#include "document/DocumentLock.h"
#include "session/SaveState.h"

/// Sentences about the open project's file, for the screens and the command line.
namespace corvane::SessionTexts {

/// The texts of an alert. Return presses the accept button, Esc the cancel button.
struct Question {
    enum class Answer { SaveCopy, CloseWithoutSaving, Reload, Overwrite };
    struct Choice {
        Answer answer;
        QString label;
    };

    QString title;
    QString text;
    QList<Choice> choices = {}; ///< further buttons
    QString accept = QStringLiteral("OK");
    QString cancel = {}; ///< empty: no such button
    bool isDestructive = false;
};

/// Offers the ways out of a failed save.
Question saveFailed(const ProjectStoreError &failure, const QString &projectName);
// Ask before unsaved edits are discarded. `lastSave` is nullopt if there was none since opening.
Question closeWithoutSaving(const std::optional<QDateTime> &lastSave);
Question quitWithoutSaving(const std::optional<QDateTime> &lastSave);
Question openElsewhere(const DocumentLock::Holder &holder);

/// "Unsaved changes"; empty if the last save succeeded.
QString unsavedNotice(const SaveState &state);
/// "83 % full"; empty while the project's file is well below the largest size.
QString fullnessNotice(const SaveState &state);
/// A sentence about the same; empty likewise.
QString nearlyFull(const SaveState &state);
/// "Open on STUDIO-2"
QString openOn(const DocumentLock::Holder &holder);
/// A sentence about the same.
QString openOnSince(const DocumentLock::Holder &holder);

/// A failed backup before a run, which goes on; empty if there was no failure.
QString backupLine(const std::optional<QString> &backupError);

} // namespace corvane::SessionTexts
