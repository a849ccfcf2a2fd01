#include "cli/CliSession.h"

namespace corvane {

template <> struct JSONFields<ProjectStore::MediaConfirmation> {
    using State = ProjectStore::MediaConfirmation;
    static constexpr auto table = std::tuple(
        jsonField("legacyPackageMediaNeedsAuthorization",
                  &State::legacyPackageMediaNeedsAuthorization),
        jsonField("contentMismatchNeedsConfirmation", &State::contentMismatchNeedsConfirmation),
        jsonField("contentMismatchPendingPaths", &State::contentMismatchPendingPaths),
        jsonField("legacyProjectIdMediaNeedsConfirmation",
                  &State::legacyProjectIdMediaNeedsConfirmation),
        jsonField("legacyProjectIdMediaPendingPaths", &State::legacyProjectIdMediaPendingPaths),
        jsonField("unresolvedMediaNeedsConfirmation", &State::unresolvedMediaNeedsConfirmation),
        jsonField("unresolvedMediaPendingPaths", &State::unresolvedMediaPendingPaths));
};

namespace {

void printFlag(const Invocation &call, const QString &meaning, bool isRaised,
               const QStringList &paths) {
    call.printLine(QStringLiteral("%1 %2")
                       .arg(isRaised ? QStringLiteral("yes") : QStringLiteral("no"), -4)
                       .arg(meaning));
    for (const QString &path : paths) {
        call.printLine(QStringLiteral("       ") + path);
    }
}

void printConfirmation(const Invocation &call, const ProjectStore::MediaConfirmation &state) {
    printFlag(call, QStringLiteral("The media folder isn't authorized."),
              state.legacyPackageMediaNeedsAuthorization, {});
    printFlag(call, QStringLiteral("Files changed since they were authorized."),
              state.contentMismatchNeedsConfirmation, state.contentMismatchPendingPaths);
    printFlag(call, QStringLiteral("Files were authorized by an older version."),
              state.legacyProjectIdMediaNeedsConfirmation, state.legacyProjectIdMediaPendingPaths);
    printFlag(call, QStringLiteral("Files have no confirmed identity."),
              state.unresolvedMediaNeedsConfirmation, state.unresolvedMediaPendingPaths);
}

int runMedia(const Invocation &call) {
    CliSession session(call.console());
    session.open(call.path(0));
    const ProjectStore::MediaConfirmation &state = session.store().mediaConfirmation();
    if (call.wantsJSON()) {
        call.printJSON([&](JSONWriter &writer) {
            JSONCodec<ProjectStore::MediaConfirmation>::encode(writer, state);
        });
    } else {
        printConfirmation(call, state);
    }
    return kAllDone;
}

} // namespace

Command mediaCommand() {
    return {.name = QStringLiteral("media"),
            .synopsis = QStringLiteral("PROJECT"),
            .summary = QStringLiteral("Tells which media wait for a confirmation."),
            .fewestArguments = 1,
            .mostArguments = 1,
            .run = runMedia};
}

} // namespace corvane
