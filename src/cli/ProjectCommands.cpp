#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "platform/FileSystem.h"
#include "session/ProjectName.h"

namespace corvane {

namespace {

void printField(const CommandCall &call, const QString &name, const std::optional<QString> &value) {
    if (value) {
        call.printLine(name.leftJustified(16) + *value);
    }
}

/// Writes the members of the document and the numbers of its clips and subclips.
void writeProject(JSONWriter &writer, const Project &project) {
    writeMembers(writer, project);
    writeMember(writer, "clips", project.videos.size());
    writeMember(writer, "subclips", project.subclipCount());
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

/// Validates a project name by the rules of the setup screen.
QString projectNameOf(const CommandCall &call) {
    const QString name = call.value("name").value_or(QString()).trimmed();
    if (name.isEmpty()) {
        throw UsageError(QStringLiteral("--name is missing."));
    }
    if (!projectName::isValid(name)) {
        throw UsageError(
            QStringLiteral("--name takes a name without \"/\" that doesn't begin with \".\", not "
                           "\"%1\".")
                .arg(name));
    }
    return name;
}

int runCreate(const CommandCall &call) {
    const NewProject fields{.name = projectNameOf(call),
                            .shootDate = call.value("shoot-date").value_or(QString()),
                            .clientOrSeries = call.value("client").value_or(QString()),
                            .location = call.value("location").value_or(QString()),
                            .notes = call.value("notes").value_or(QString())};
    const QString file = projectName::withExtension(call.path(0));
    CliSession session(call.console());
    if (fileSystem().linkStatus(file)) {
        throw Failure(QStringLiteral("%1 already exists. Nothing was changed.").arg(file));
    }
    session.create(fields, file);
    call.printResult([&](JSONWriter &writer) { writeProject(writer, session.project()); },
                     [&] {
                         call.printLine(session.store().statusMessage().value_or(QString()));
                         call.printLine(file);
                     });
    return kAllDone;
}

int runInfo(const CommandCall &call) {
    CliSession session(call);
    call.printResult([&](JSONWriter &writer) { writeProject(writer, session.project()); },
                     [&] { printProject(call, session.project()); });
    return kAllDone;
}

} // namespace

CliCommand createCommand() {
    return {.name = QStringLiteral("create"),
            .synopsis = QStringLiteral("PROJECT --name NAME"),
            .summary = QStringLiteral("Creates a project."),
            .options = {valueOption("name", "NAME", "The project's name."),
                        valueOption("shoot-date", "D", "The date of the shoot, as 2026-03-01."),
                        valueOption("client", "T", "The client or series."),
                        valueOption("location", "T", "Where it was shot."),
                        valueOption("notes", "T", "Notes.")},
            .run = runCreate};
}

CliCommand infoCommand() {
    return {.name = QStringLiteral("info"),
            .synopsis = QStringLiteral("PROJECT"),
            .summary = QStringLiteral("Shows what a project is."),
            .run = runInfo};
}

} // namespace corvane
