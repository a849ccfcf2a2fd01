#include "cli/CliSession.h"
#include "cli/ProjectOutput.h"

#include "platform/FileSystem.h"
#include "session/ProjectName.h"

namespace corvane {

namespace {

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
    if (call.isJSON()) {
        call.printJSON([&](JSONWriter &writer) { writeProject(writer, session.project()); });
    } else {
        call.printLine(session.store().statusMessage().value_or(QString()));
        call.printLine(file);
    }
    return kAllDone;
}

int runInfo(const CommandCall &call) {
    CliSession session(call.console());
    session.open(call.path(0));
    if (call.isJSON()) {
        call.printJSON([&](JSONWriter &writer) { writeProject(writer, session.project()); });
    } else {
        printProject(call, session.project());
    }
    return kAllDone;
}

} // namespace

Command createCommand() {
    return {.name = QStringLiteral("create"),
            .synopsis = QStringLiteral("PROJECT --name NAME"),
            .summary = QStringLiteral("Creates a project."),
            .options = {valueOption("name", "NAME", "The project's name."),
                        valueOption("shoot-date", "D", "The date of the shoot, as 2026-03-01."),
                        valueOption("client", "T", "The client or series."),
                        valueOption("location", "T", "Where it was shot."),
                        valueOption("notes", "T", "Notes.")},
            .fewestArguments = 1,
            .mostArguments = 1,
            .run = runCreate};
}

Command infoCommand() {
    return {.name = QStringLiteral("info"),
            .synopsis = QStringLiteral("PROJECT"),
            .summary = QStringLiteral("Shows what a project is."),
            .fewestArguments = 1,
            .mostArguments = 1,
            .run = runInfo};
}

} // namespace corvane
