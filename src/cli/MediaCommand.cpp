#include "cli/ArgumentValues.h"
#include "cli/CliSession.h"
#include "cli/JSONMembers.h"
#include "cli/ProgressLine.h"
#include "platform/InterruptWatcher.h"
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

/// Returns the question about media of this kind, or nullopt if there are none.
std::optional<MediaConfirmationBanner> question(const ProjectStore &store, Kind kind) {
    const auto banners = mediaConfirmationBanners(store.mediaConfirmation());
    const auto found = std::ranges::find(banners, kind, &MediaConfirmationBanner::kind);
    return found == banners.end() ? std::nullopt : std::optional(*found);
}

/// Confirms the pending media of this kind. Returns false if some of them cannot be read and stay
/// pending.
bool confirm(ProjectStore &store, Kind kind, const CommandCall &call) {
    if (!question(store, kind)) {
        call.printNotice(QStringLiteral("Nothing waits for \"--confirm %1\".").arg(rawValue(kind)));
        return true;
    }
    bool isCancelled = false;
    {
        const InterruptWatcher watcher([&] {
            isCancelled = true;
            store.cancelAnswers();
        });
        ProgressLine line(call.console());
        const QObject context;
        QObject::connect(&store, &ProjectStore::mediaProgressChanged, &context, [&] {
            if (const auto &progress = store.mediaProgress()) {
                line.show(progress->fraction, progress->text);
            }
        });
        waitUntilDone(answerBanner(store, kind));
    }
    waitUntilDone(store.refreshMediaConfirmationState());
    const auto rest = question(store, kind);
    if (rest) {
        const qsizetype count = std::max<qsizetype>(rest->paths.size(), 1);
        call.printNotice(isCancelled ? cancelledAnswerText(count) : unconfirmedText(count));
    }
    return !rest && !isCancelled;
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
    isDone = session.printNotices(call) && isDone;
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
