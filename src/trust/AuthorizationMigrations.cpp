#include "trust/AuthorizationMigrations.h"

#include "platform/ApplicationFolders.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "trust/AuthorizationFile.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <QUuid>

namespace corvane {

namespace {

using Outcome = LegacyMigrationOutcome;

const QString kRekeyGuard =
    QStringLiteral("Corvane.MediaSourceAuthorization.didRekeyLegacyProjectIdEntriesV1");
const QString kProjectsGuard =
    QStringLiteral("Corvane.MediaSourceAuthorization.didGrandfatherLegacyProjectsV1");
const QString kContentHashGuard =
    QStringLiteral("Corvane.MediaSourceAuthorization.didGrandfatherContentHashV3");

/// Returns nullopt unless the text is a UUID without braces, in either case.
std::optional<QUuid> uuidOf(const QString &text) {
    const QUuid uuid = QUuid::fromString(text);
    const bool isPlain = uuid.toString(QUuid::WithoutBraces) == text.toLower();
    return isPlain ? std::optional(uuid) : std::nullopt;
}

/// Maps each id to its project file. Ids of several projects are left out: none of these projects
/// may inherit the grants.
QHash<QUuid, QString> filesOfUniqueIds(const QList<ProjectSummary> &summaries) {
    QHash<QUuid, QStringList> filesById;
    for (const ProjectSummary &summary : summaries) {
        if (const auto id = uuidOf(summary.id)) {
            filesById[*id].append(summary.filePath);
        }
    }
    QHash<QUuid, QString> unique;
    for (const auto &[id, files] : filesById.asKeyValueRange()) {
        if (files.size() == 1) {
            unique.insert(id, files.first());
        }
    }
    return unique;
}

/// True if another folder has the path of the granted one, as when another volume is mounted there.
/// A different file in it does not show that the granted file changed.
bool hasOtherFolder(const LegacyMigrationCandidate &candidate) {
    const auto folder = PathSafety::folderIdentity(paths::parentFolder(candidate.path));
    return folder && !candidate.identity.isSameFolder(*folder);
}

/// Reads the entire file.
Outcome::Result upgrade(const LegacyMigrationCandidate &candidate) {
    using Upgrade = ContentHasher::AnchorUpgrade::Result;
    using Kind = Outcome::Result::Kind;
    try {
        const auto upgrade =
            ContentHasher::upgradeLegacyAnchor(candidate.legacyHash, candidate.path);
        switch (upgrade.result) {
        case Upgrade::upgraded: {
            RootIdentity identity = candidate.identity;
            identity.contentHash = upgrade.anchor;
            return {Kind::upgraded, identity};
        }
        case Upgrade::mismatch:
            return {hasOtherFolder(candidate) ? Kind::unreadable : Kind::mismatched, {}};
        case Upgrade::notVerifiable:
            break;
        }
        return {Kind::skip, {}};
    } catch (const ContentHasher::HashError &) {
        return {Kind::unreadable, {}};
    }
}

/// Returns nullopt if the project can't be read.
QCoro::Task<std::optional<Project>> loadIfReadable(ProjectFileIO &io, QString file) {
    try {
        co_return co_await io.load(file);
    } catch (const std::exception &) {
        co_return std::nullopt;
    }
}

} // namespace

QSettings &MediaSourceAuthorization::userDefaults() {
    if (!m_userDefaults) {
        m_userDefaults = applicationFolders::userDefaults();
    }
    return *m_userDefaults;
}

bool MediaSourceAuthorization::isMigrated(const QString &guard) {
    return userDefaults().value(guard).toBool();
}

/// Writes to disk at once, so that a crash doesn't repeat the migration.
void MediaSourceAuthorization::setMigrated(const QString &guard) {
    userDefaults().setValue(guard, true);
    userDefaults().sync();
}

QCoro::Task<void>
MediaSourceAuthorization::rekeyLegacyProjectIdEntries(QList<ProjectSummary> summaries) {
    if (isMigrated(kRekeyGuard)) {
        co_return;
    }
    co_await m_executor.run([this, summaries] { rekey(summaries); });
    setMigrated(kRekeyGuard);
}

void MediaSourceAuthorization::rekey(const QList<ProjectSummary> &summaries) {
    const QHash<QUuid, QString> files = filesOfUniqueIds(summaries);
    QStringList oldKeys = m_tables->authorizedPaths.keys();
    oldKeys.removeIf([](const QString &key) { return key.startsWith(QLatin1Char('/')); });
    for (const QString &key : std::as_const(oldKeys)) {
        const AuthorizedPaths table = m_tables->authorizedPaths.take(key);
        const auto id = uuidOf(key);
        if (id && files.contains(*id)) {
            addPending(projectKey(files.value(*id)),
                       QSet<QString>(table.keyBegin(), table.keyEnd()));
        }
    }
    if (!oldKeys.isEmpty()) {
        persist();
    }
}

QCoro::Task<void>
MediaSourceAuthorization::grandfatherLegacyProjects(QList<ProjectSummary> summaries,
                                                    ProjectFileIO &io) {
    if (isMigrated(kProjectsGuard)) {
        co_return;
    }
    for (const ProjectSummary &summary : summaries) {
        const auto project = co_await loadIfReadable(io, summary.filePath);
        QStringList paths;
        for (const VideoItem &video : project ? project->videos : QList<VideoItem>()) {
            paths.append(resolvedAgainstProject(video->sourcePath, summary.filePath));
        }
        co_await authorize(paths, summary.filePath);
    }
    setMigrated(kProjectsGuard);
}

/// Stores the outcomes after each project, so that an interrupted migration continues with the
/// remaining projects at the next start.
QCoro::Task<void> MediaSourceAuthorization::grandfatherContentHashes() {
    if (isMigrated(kContentHashGuard)) {
        co_return;
    }
    const auto candidates = co_await m_executor.run([this] { return legacyCandidates(); });
    bool isComplete = true;
    for (const QList<LegacyMigrationCandidate> &projectCandidates : candidates) {
        QList<LegacyMigrationOutcome> outcomes;
        for (const LegacyMigrationCandidate &candidate : projectCandidates) {
            const auto result =
                co_await utilityExecutor().run([candidate] { return upgrade(candidate); });
            outcomes.append({candidate.projectKey, candidate.path, candidate.legacyHash, result});
        }
        const QString key = projectCandidates.first().projectKey;
        const MigrationStep step =
            co_await m_executor.run([this, key, outcomes] { return apply(key, outcomes); });
        isComplete = isComplete && step.isComplete;
        if (!step.mismatched.isEmpty() && m_listeners->contentMismatch) {
            m_listeners->contentMismatch({key, step.mismatched});
        }
    }
    if (isComplete) {
        setMigrated(kContentHashGuard);
    }
}

QHash<QString, QList<LegacyMigrationCandidate>> MediaSourceAuthorization::legacyCandidates() const {
    QHash<QString, QList<LegacyMigrationCandidate>> candidates;
    for (const auto &[key, table] : std::as_const(m_tables->authorizedPaths).asKeyValueRange()) {
        for (const auto &[path, identity] : table.asKeyValueRange()) {
            if (identity && identity->contentHash &&
                !identity->contentHash->startsWith(QStringLiteral("3:"))) {
                candidates[key].append({key, path, *identity, *identity->contentHash});
            }
        }
    }
    return candidates;
}

/// Skips entries that changed while the files were read: a later grant wins.
MediaSourceAuthorization::MigrationStep
MediaSourceAuthorization::apply(const QString &key, const QList<LegacyMigrationOutcome> &outcomes) {
    using Kind = Outcome::Result::Kind;
    MigrationStep step;
    bool hasUpgrades = false;
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    for (const Outcome &outcome : outcomes) {
        const std::optional<RootIdentity> entry = table.value(outcome.path);
        if (!entry || entry->contentHash != outcome.legacyHash) {
            continue;
        }
        if (outcome.result.kind == Kind::upgraded) {
            table.insert(outcome.path, outcome.result.identity);
            hasUpgrades = true;
        } else if (outcome.result.kind == Kind::mismatched) {
            table.remove(outcome.path);
            step.mismatched.insert(outcome.path);
        } else if (outcome.result.kind == Kind::unreadable) {
            step.isComplete = false;
        }
    }
    if (!step.mismatched.isEmpty()) {
        addPending(key, step.mismatched);
        m_tables->contentMismatchPaths[key].unite(step.mismatched);
    }
    if (hasUpgrades || !step.mismatched.isEmpty()) {
        persist();
    }
    return step;
}

QCoro::Task<> migrateAuthorizations(MediaSourceAuthorization &registry, ProjectFileIO &io,
                                    QList<ProjectSummary> summaries, ContentHashMigration hashes) {
    co_await registry.rekeyLegacyProjectIdEntries(summaries);
    co_await registry.grandfatherLegacyProjects(summaries, io);
    if (hashes == ContentHashMigration::InBackground) {
        detach(registry.grandfatherContentHashes());
    } else if (hashes == ContentHashMigration::Awaited) {
        co_await registry.grandfatherContentHashes();
    }
}

} // namespace corvane
