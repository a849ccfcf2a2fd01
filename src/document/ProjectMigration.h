#pragma once

#include "document/Project.h"

/// Raises an older project document to the current schema before it is decoded, so that the records
/// only know the current form. It works on the parsed JSON; the file on disk changes with the next
/// save.
namespace corvane::ProjectMigration {

/// The document is of a version that this build doesn't know.
class MigrationError : public Failure {
  public:
    static MigrationError unknownFutureSchema(qint64 version);

    qint64 version() const { return m_version; }

  private:
    MigrationError(QString description, qint64 version)
        : Failure(std::move(description)), m_version(version) {}

    qint64 m_version;
};

/// The version that a document states: 1 where the key is missing or no whole number.
qint64 schemaVersion(JSONView document);

/// Changes the object in place, or throws `MigrationError` before any change. What is there already
/// is never replaced.
void migrate(JSONValue::Object &object);

/// True if the clip shows that somebody has looked at it: a rating, a flag or a subclip.
bool hasReviewMarks(const VideoRecord &video);

/// Marks clips as reviewed that show it and aren't marked, as of `now`. Tells whether any changed.
/// The project's `updatedAt` stays.
bool migrateReviewedFlags(Project &project, const QDateTime &now);

} // namespace corvane::ProjectMigration
