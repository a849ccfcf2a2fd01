#pragma once

#include "document/Project.h"

/// Migration of older project documents. The schema migration works on parsed JSON before it is
/// decoded, so that the records support the current schema only. The file on disk changes at the
/// next save.
namespace corvane::ProjectMigration {

/// Thrown for a document with a newer version than this build supports.
class MigrationError : public Failure {
  public:
    static MigrationError unknownFutureSchema(qint64 version);

  private:
    using Failure::Failure;
};

/// The schema version of a document; 1 if the key is missing or not an integer.
qint64 schemaVersion(JSONView document);

/// Migrates a document to the current schema by adding missing members. Existing members keep their
/// values. Throws `MigrationError` before any change.
void migrate(JSONValue::Object &object);

/// True if the user has rated, flagged, selected or marked the clip.
bool hasReviewMarks(const VideoRecord &video);

/// Sets `reviewed` and `reviewedAt` (to `now`) of clips that have review marks but aren't reviewed.
/// Returns whether any clip changed. Leaves `updatedAt` unchanged.
bool migrateReviewedFlags(Project &project, const QDateTime &now);

} // namespace corvane::ProjectMigration
