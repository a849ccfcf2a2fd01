#pragma once

#include "trust/MediaSourceAuthorization.h"

/// Three one-time migrations of the registry of grants, which avoid asking the user about every
/// clip of earlier versions. They run at start-up, in order:
///
/// 1. Rekey. Older versions keyed grants by the project's id, which a copy of the project file has
///    too. These paths become pending, not granted.
/// 2. Grandfather projects. The clips of projects that are older than the registry are granted as
///    they are. This is the only unverified grant. It must run before a project is opened: opening
///    adds a project to the recent ones, and so would grant its clips.
/// 3. Grandfather hashes. Older anchors cover samples of a file. If they match, they are replaced
///    by full anchors.
namespace corvane {

/// A grant with an anchor in an older format.
struct LegacyMigrationCandidate {
    QString projectKey;
    QString path;
    RootIdentity identity;
    QString legacyHash; ///< the anchor in `identity`
};

/// The result of verifying the file of a candidate.
struct LegacyMigrationOutcome {
    struct Result {
        enum class Kind {
            upgraded,   ///< the older anchor matched
            mismatched, ///< the contents differ, and the folder is the granted one
            unreadable, ///< not verifiable now; tried again at the next start
            skip,       ///< the stored text is not an anchor
        };
        Kind kind = Kind::skip;
        RootIdentity identity; ///< with the full anchor; only for `upgraded`
    };

    QString projectKey;
    QString path;
    QString legacyHash;
    Result result;
};

/// How the third migration runs, which may take hours.
enum class ContentHashMigration {
    InBackground, ///< not awaited
    Awaited,
    Skipped,
};

/// Runs the migrations. `registry` and `io` must outlive them. Does not throw.
QCoro::Task<> migrateAuthorizations(MediaSourceAuthorization &registry, ProjectFileIO &io,
                                    QList<ProjectSummary> summaries, ContentHashMigration hashes);

} // namespace corvane
