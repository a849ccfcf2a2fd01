#pragma once

#include "trust/MediaSourceAuthorization.h"

/// The three one-shot migrations that bring an older registry of grants along without asking about
/// every clip and without trusting what can't be proved. They run once at start-up, in this order:
///
/// 1. rekey: older versions kept grants by a project's id, which a copied project file takes with
///    it. What they recorded becomes pending, not granted.
/// 2. grandfather projects: projects that are older than the registry have their clips granted as
///    they are. This is the only moment at which anything is taken on trust. It must run before a
///    project is opened, or whatever was opened first would be among the recent ones by then.
/// 3. grandfather hashes: the older anchors cover samples of a file; they are replaced by full ones
///    where they still prove it.
namespace corvane {

/// A grant by an anchor of an older form.
struct LegacyMigrationCandidate {
    QString projectKey;
    QString path;
    RootIdentity identity;
    QString legacyHash; ///< the anchor in `identity`
};

/// What reading the file of a candidate came to.
struct LegacyMigrationOutcome {
    struct Result {
        enum class Kind {
            upgraded,   ///< the old anchor proved the file
            mismatched, ///< other contents in the granted folder
            unreadable, ///< nothing can be said now; to be tried again at the next start
            skip,       ///< the text is no anchor, and never will be
        };
        Kind kind = Kind::skip;
        RootIdentity identity; ///< the candidate's with a full anchor; only with `upgraded`
    };

    QString projectKey;
    QString path;
    QString legacyHash;
    Result result;
};

/// What becomes of the third migration, which may read for hours.
enum class ContentHashMigration {
    InBackground, ///< the start-up goes on without it
    Awaited,
    Skipped,
};

/// Runs the migrations; what is handed in must outlive them. Throws nothing.
QCoro::Task<> migrateAuthorizations(MediaSourceAuthorization &registry, ProjectFileIO &io,
                                    QList<ProjectSummary> summaries, ContentHashMigration hashes);

} // namespace corvane
