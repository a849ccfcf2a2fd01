#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "cli/TextTable.h"
#include "platform/FileSystem.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

/// A project whose file was moved or deleted keeps its grants until it is forgotten.
bool isMissing(const ProjectGrants &project) {
    return !fileSystem().linkStatus(project.projectKey);
}

void writeProjects(JSONWriter &writer, const MediaSourceAuthorization &registry,
                   const QList<ProjectGrants> &projects, const QStringList &forgotten) {
    writeRows(writer, "projects", projects, [&](const ProjectGrants &project) {
        writeMember(writer, "project", project.projectKey);
        writeMember(writer, "granted", project.grantedCount);
        writeMember(writer, "pending", project.pendingCount);
        writeMember(writer, "mediaFolder", project.hasMediaFolder);
        writeMember(writer, "missing", isMissing(project));
    });
    writeMember(writer, "forgotten", forgotten);
    writeMember(writer, "file", registry.filePath());
    writeMember(writer, "bytes", registry.fileBytes());
    writeMember(writer, "limit", MediaSourceAuthorization::kFileLimit);
}

void printProjects(const CommandCall &call, const MediaSourceAuthorization &registry,
                   const QList<ProjectGrants> &projects) {
    TextTable table(
        {QStringLiteral("GRANTED"), QStringLiteral("PENDING"), QStringLiteral("PROJECT")});
    for (const ProjectGrants &project : projects) {
        const QString note = isMissing(project) ? QStringLiteral(" (missing)") : QString();
        table.addRow({QString::number(project.grantedCount), QString::number(project.pendingCount),
                      project.projectKey + note});
    }
    table.print(call);
    call.printLine(QStringLiteral("%1, %2% of 8 MB used")
                       .arg(counted(projects.size(), QStringLiteral("project")))
                       .arg(registry.fileBytes() * 100 / MediaSourceAuthorization::kFileLimit));
}

int runGrants(const CommandCall &call) {
    const QStringList named = call.pathValues("forget");
    CliSession session(call.console());
    MediaSourceAuthorization &registry = session.store().authorization();
    QStringList forgotten;
    for (const QString &project : named) {
        if (waitUntilDone(registry.forget(project))) {
            forgotten.append(project);
        } else {
            call.printNotice(QStringLiteral("No grants are stored for %1.").arg(project));
        }
    }
    const QList<ProjectGrants> projects = waitUntilDone(registry.projects());
    call.printResult(
        [&](JSONWriter &writer) { writeProjects(writer, registry, projects, forgotten); },
        [&] { printProjects(call, registry, projects); });
    const bool isSaved = session.printNotices(call);
    return isSaved && forgotten.size() == named.size() ? kAllDone : kRefused;
}

} // namespace

CliCommand grantsCommand() {
    return {.name = QStringLiteral("grants"),
            .summary = QStringLiteral("Lists the projects that may read media, and forgets some."),
            .options = {valueOption("forget", "PROJECT",
                                    "Forget all grants of this project file. May be given more "
                                    "than once.")},
            .run = runGrants};
}

} // namespace corvane
