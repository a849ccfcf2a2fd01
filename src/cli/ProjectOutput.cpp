#include "cli/ProjectOutput.h"

#include "cli/JSONMembers.h"

namespace corvane {

namespace {

void printField(const CommandCall &call, const QString &name, const std::optional<QString> &value) {
    if (value) {
        call.printLine(name.leftJustified(16) + *value);
    }
}

} // namespace

void writeProject(JSONWriter &writer, const Project &project) {
    writer.beginObject();
    writeMembers(writer, project);
    writeMember(writer, "clips", project.videos.size());
    writeMember(writer, "subclips", project.subclipCount());
    writer.endObject();
}

void printProject(const CommandCall &call, const Project &project) {
    printField(call, QStringLiteral("Project"), project.displayName());
    printField(call, QStringLiteral("File"), project.filePath);
    printField(call, QStringLiteral("Id"), project.id);
    printField(call, QStringLiteral("Shoot date"), project.shootDate);
    printField(call, QStringLiteral("Client, series"), project.clientOrSeries);
    printField(call, QStringLiteral("Location"), project.location);
    printField(call, QStringLiteral("Notes"), project.notes);
    printField(call, QStringLiteral("Created"), isoDate::toText(project.createdAt));
    printField(call, QStringLiteral("Updated"), isoDate::toText(project.updatedAt));
    printField(call, QStringLiteral("Clips"), QString::number(project.videos.size()));
    printField(call, QStringLiteral("Subclips"), QString::number(project.subclipCount()));
    printField(call, QStringLiteral("Export runs"), QString::number(project.exportBatches.size()));
}

} // namespace corvane
