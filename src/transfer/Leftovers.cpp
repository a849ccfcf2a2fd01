#include "transfer/Leftovers.h"

#include <QDir>
#include <QRegularExpression>

namespace corvane::Leftovers {

namespace {

/// So old that no running process is still writing it, whatever the clock of a shared volume.
constexpr std::chrono::hours kAge{24};

bool isTemporaryName(const QString &name) {
    static const QRegularExpression form(QRegularExpression::anchoredPattern(
        QStringLiteral("(\\.tmp|\\.?cv-transcode-src)\\.[0-9]+\\."
                       "[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\..*")));
    return form.match(name).hasMatch();
}

} // namespace

void removeFrom(const OpenFolder &folder, const QDateTime &now) {
    const FileTime newest{std::chrono::milliseconds(now.toMSecsSinceEpoch()) - kAge};
    try {
        for (const DirectoryEntry &entry : fileSystem().list(folder.anchoredPath())) {
            if (!entry.hasValidName || !isTemporaryName(entry.name)) {
                continue;
            }
            const auto status = fileSystem().linkStatusAt(folder.descriptor(), entry.name);
            if (status && status->type == FileType::Regular && status->modified < newest) {
                fileSystem().removeAt(folder.descriptor(), entry.name);
            }
        }
    } catch (const FileError &) {
        // They do no harm, and the next run tries again.
    }
}

void removeFromTemporaryFolder(const QDateTime &now) {
    try {
        removeFrom(OpenFolder::at(QDir::tempPath()), now);
    } catch (const FileError &) {
        // A run that needs the folder reports it.
    }
}

} // namespace corvane::Leftovers
