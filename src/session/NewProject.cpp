#include "session/NewProject.h"

namespace corvane {

namespace {

std::optional<QString> nulloptIfBlank(const QString &text) {
    const QString trimmed = text.trimmed();
    return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed);
}

} // namespace

Project makeProject(const NewProject &fields, const QString &file, const QDateTime &now) {
    return {.id = newIdentifier(),
            .name = fields.name,
            .filePath = file,
            .projectName = fields.name,
            .shootDate = nulloptIfBlank(fields.shootDate),
            .clientOrSeries = nulloptIfBlank(fields.clientOrSeries),
            .location = nulloptIfBlank(fields.location),
            .notes = nulloptIfBlank(fields.notes),
            .createdAt = now,
            .updatedAt = now};
}

} // namespace corvane
