#include "session/SessionTexts.h"

#include "platform/TextFormat.h"

namespace corvane::SessionTexts {

namespace {

Question changedOnDisk(const QString &projectName) {
    return {.title = QStringLiteral("\"%1\" was changed by another program").arg(projectName),
            .text = QStringLiteral(
                "Its file is no longer the one that was last read or saved here. Your latest "
                "changes are still open, but not saved.\n\n"
                "Reload opens the file as it is now. Your unsaved changes are lost.\n\n"
                "Save a Copy… saves your version as a new file and opens this one as it is now. "
                "Nothing is lost.\n\n"
                "Overwrite saves your version in place of the file. The changes made by the other "
                "program are lost."),
            .choices = {{Question::Answer::Reload, QStringLiteral("Reload")},
                        {Question::Answer::SaveCopy, QStringLiteral("Save a Copy…")},
                        {Question::Answer::Overwrite, QStringLiteral("Overwrite")}},
            .accept = QStringLiteral("Decide Later")};
}

/// A name from a file of another machine.
QString shortName(const QString &name) {
    return inOneLine(name.left(64));
}

QString localTime(const QDateTime &time) {
    return time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
}

QString lossText(const std::optional<QDateTime> &lastSave) {
    return (lastSave ? QStringLiteral("Everything you changed since the last save (%1) will be "
                                      "lost.")
                           .arg(localTime(*lastSave))
                     : QStringLiteral("Everything you changed since you opened the project will be "
                                      "lost.")) +
           QStringLiteral(" The file itself stays as it is.");
}

} // namespace

Question saveFailed(const ProjectStoreError &failure, const QString &projectName) {
    if (failure.kind() == ProjectStoreError::Kind::changedOnDisk) {
        return changedOnDisk(projectName);
    }
    return {.title = QStringLiteral("Project error"),
            .text = failure.description() +
                    QStringLiteral("\n\nYour changes are still open here. Save a copy somewhere "
                                   "else to keep them, or close the project without them."),
            .choices = {
                {Question::Answer::SaveCopy, QStringLiteral("Save a Copy…")},
                {Question::Answer::CloseWithoutSaving, QStringLiteral("Close Without Saving")}}};
}

Question closeWithoutSaving(const std::optional<QDateTime> &lastSave) {
    return {.title = QStringLiteral("Close without saving?"),
            .text = lossText(lastSave),
            .accept = QStringLiteral("Close Without Saving"),
            .cancel = QStringLiteral("Cancel"),
            .isDestructive = true};
}

Question quitWithoutSaving(const std::optional<QDateTime> &lastSave) {
    return {.title = QStringLiteral("Quit without saving?"),
            .text = lossText(lastSave),
            .accept = QStringLiteral("Quit Without Saving"),
            .cancel = QStringLiteral("Cancel"),
            .isDestructive = true};
}

Question openElsewhere(const DocumentLock::Holder &holder) {
    return {.title = openOn(holder),
            .text = openOnSince(holder) +
                    QStringLiteral(" If you both make changes, whoever saves second has to choose "
                                   "whose changes are kept."),
            .accept = QStringLiteral("Edit Anyway"),
            .cancel = QStringLiteral("Close Project")};
}

QString unsavedNotice(const SaveState &state) {
    return state.failure ? QStringLiteral("Unsaved changes") : QString();
}

QString fullnessNotice(const SaveState &state) {
    return state.isNearlyFull()
               ? QStringLiteral("%1 % full").arg(state.fileSize * 100 / ProjectFileIO::kFileLimit)
               : QString();
}

QString nearlyFull(const SaveState &state) {
    return state.isNearlyFull()
               ? QStringLiteral("The project's file is %1 % full. Beyond its limit of 32 MB it "
                                "can't be saved any more. Import further footage into a new "
                                "project.")
                     .arg(state.fileSize * 100 / ProjectFileIO::kFileLimit)
               : QString();
}

QString openOn(const DocumentLock::Holder &holder) {
    return QStringLiteral("Open on %1").arg(shortName(holder.host));
}

QString openOnSince(const DocumentLock::Holder &holder) {
    return QStringLiteral("%1 has had this project open on %2 since %3.")
        .arg(shortName(holder.user), shortName(holder.host), localTime(holder.openedAt));
}

QString backupLine(const std::optional<QString> &backupError) {
    return backupError ? QStringLiteral("Backup warning: ") + *backupError : QString();
}

} // namespace corvane::SessionTexts
