#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "platform/Tasks.h"
#include "session/MediaConfirmationBanner.h"

#include <algorithm>

namespace corvane {

CORVANE_JSON_FIELDS(MediaConfirmation, legacyPackageMediaNeedsAuthorization,
                    contentMismatchNeedsConfirmation, contentMismatchPendingPaths,
                    legacyProjectIdMediaNeedsConfirmation, legacyProjectIdMediaPendingPaths,
                    unresolvedMediaNeedsConfirmation, unresolvedMediaPendingPaths);

template <>
inline constexpr auto rawValues<MediaConfirmationBanner::Kind> =
    std::to_array<RawValue<MediaConfirmationBanner::Kind>>({
        {MediaConfirmationBanner::Kind::legacyPackage, "legacy-package"},
        {MediaConfirmationBanner::Kind::legacyProjectId, "carried-over"},
        {MediaConfirmationBanner::Kind::unresolved, "unresolved"},
        {MediaConfirmationBanner::Kind::contentMismatch, "changed"},
    });

namespace {

using Kind = MediaConfirmationBanner::Kind;

QList<Kind> kindsToConfirm(const CommandCall &call) {
    QList<Kind> kinds;
    for (const QString &text : call.values("confirm")) {
        kinds.append(argumentValues::choice<Kind>(text, QStringLiteral("--confirm")));
    }
    return kinds;
}

bool isPending(const ProjectStore &store, Kind kind) {
    const auto banners = mediaConfirmationBanners(store.mediaConfirmation());
    return std::ranges::find(banners, kind, &MediaConfirmationBanner::kind) != banners.end();
}

/// Confirms the pending media of this kind. Returns false if some of them cannot be read and stay
/// pending.
bool confirm(ProjectStore &store, Kind kind, const CommandCall &call) {
    if (!isPending(store, kind)) {
        call.printNotice(QStringLiteral("Nothing waits for \"--confirm %1\".").arg(rawValue(kind)));
        return true;
    }
    waitUntilDone(answerBanner(store, kind));
    waitUntilDone(store.refreshMediaConfirmationState());
    if (!isPending(store, kind)) {
        return true;
    }
    call.printNotice(QStringLiteral("Some of these files can't be read and were not confirmed."));
    return false;
}

void printBanner(const CommandCall &call, const MediaConfirmationBanner &banner) {
    call.printLine(banner.message);
    for (const QString &path : banner.paths) {
        call.printLine(QStringLiteral("    ") + path);
    }
    call.printLine(QStringLiteral("    To confirm: --confirm %1").arg(rawValue(banner.kind)));
}

void printBanners(const CommandCall &call, const MediaConfirmation &state) {
    const auto banners = mediaConfirmationBanners(state);
    if (banners.isEmpty()) {
        call.printLine(QStringLiteral("No media wait for a confirmation."));
    }
    for (const MediaConfirmationBanner &banner : banners) {
        printBanner(call, banner);
    }
}

int runMedia(const CommandCall &call) {
    const QList<Kind> kinds = kindsToConfirm(call);
    CliSession session(call, ContentHashMigration::Awaited);
    ProjectStore &store = session.store();
    bool isDone = true;
    for (const Kind kind : kinds) {
        isDone = confirm(store, kind, call) && isDone;
    }
    const MediaConfirmation &state = store.mediaConfirmation();
    call.printResult([&](JSONWriter &writer) { writeMembers(writer, state); },
                     [&] { printBanners(call, state); });
    if (const auto &notice = store.authorization().unsavedNotice()) {
        call.printNotice(*notice);
        isDone = false;
    }
    return isDone ? kAllDone : kRefused;
}

} // namespace

CliCommand mediaCommand() {
    return {.name = QStringLiteral("media"),
            .synopsis = QStringLiteral("PROJECT"),
            .summary = QStringLiteral("Tells which media wait for a confirmation, and confirms."),
            .options = {valueOption("confirm", "WHICH",
                                    "Confirm media: legacy-package, carried-over, unresolved or "
                                    "changed. May be given more than once.")},
            .run = runMedia};
}

} // namespace corvane
