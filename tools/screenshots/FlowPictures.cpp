#include "Set.h"

#include "platform/Tasks.h"

namespace corvane {

namespace {

constexpr int kCustom = 2; ///< the places of choices in their rows
constexpr int kWithHD = 1;
constexpr int kSequential = 2;

/// The review as it is seen behind every sheet.
bool showReview(Set &set) {
    set.widenSidePane(300);
    return set.show(Shoot::kMain, 17.2) && set.isDrawn();
}

bool scanCard(Set &set) {
    if (!showReview(set)) {
        return false;
    }
    ImportSheet &import = *set.screen().importing();
    set.review().requestImport();
    import.addSources({Shoot::shared().freshCard()});
    import.scan();
    if (!waitUntil([&] { return import.stage() == ImportSheet::Stage::Results; })) {
        return false;
    }
    import.setMode(1);
    return true;
}

bool importResults(Set &set) {
    if (!scanCard(set)) {
        return false;
    }
    set.screen().importing()->toggleRow(set.screen().importing()->rowsObject()->count() - 1);
    return true;
}

bool importRunning(Set &set) {
    if (!scanCard(set)) {
        return false;
    }
    ImportSheet &import = *set.screen().importing();
    import.beginImport();
    return waitUntil(
        [&] { return import.figure().startsWith(QLatin1Char('4')) && import.fraction() > 0.05; });
}

void chooseExport(ExportScreenState &exporting) {
    exporting.chooseOutput(kWithHD);
    exporting.chooseHandle(2);
    NamingFields &naming = *exporting.naming();
    naming.setPreset(kCustom);
    naming.setBaseName(QStringLiteral("Tidewater"));
    naming.setIncludeShootDate(true);
    naming.setIncludeOriginalFilename(false);
    naming.setIncludeOriginalFileNumber(false);
    naming.setKeepOriginalForWholeVideos(false);
    naming.setNumbering(kSequential);
    naming.setIncludeSubclipLabel(true);
    naming.setIncludeSelectType(true);
}

bool exportConfigure(Set &set) {
    if (!showReview(set)) {
        return false;
    }
    set.review().requestExport();
    chooseExport(*set.screen().exporting());
    return waitUntil([&] { return set.screen().exporting()->canStart(); });
}

bool exportRunning(Set &set) {
    if (!exportConfigure(set)) {
        return false;
    }
    ExportScreenState &exporting = *set.screen().exporting();
    exporting.start();
    return waitUntil([&] { return exporting.fraction() > 0.3 && !exporting.details().isEmpty(); });
}

/// Two files have changed since they were imported.
bool exportDone(Set &set) {
    const QString media = Shoot::shared().projectFolder() + QStringLiteral("/media/");
    QFile changed(media + QStringLiteral("DJI_0042.MP4"));
    if (!changed.open(QFile::Append) || changed.write("changed") < 0 ||
        !QFile::remove(media + QStringLiteral("GX010233.MP4")) || !exportConfigure(set)) {
        return false;
    }
    changed.close();
    ExportScreenState &exporting = *set.screen().exporting();
    exporting.setNewOnly(false);
    exporting.start();
    return waitUntil([&] { return exporting.stage() == DeliveryScreenState::Stage::Done; });
}

bool handoffConfigure(Set &set) {
    if (!showReview(set)) {
        return false;
    }
    const QString folder = Shoot::shared().path("deliveries");
    QDir().mkpath(folder);
    set.panels().answer = folder;
    set.review().requestHandoff();
    set.screen().handoff()->chooseFolder();
    set.screen().handoff()->chooseOutput(kWithHD);
    set.screen().handoff()->chooseHandle(1);
    return waitUntil([&] { return set.screen().handoff()->canStart(); });
}

bool handoffDone(Set &set) {
    if (!handoffConfigure(set)) {
        return false;
    }
    HandoffScreenState &handoff = *set.screen().handoff();
    handoff.chooseOutput(0);
    handoff.start();
    return waitUntil([&] { return handoff.stage() == DeliveryScreenState::Stage::Done; });
}

/// Three files that are others than the granted ones, and a media folder that came from elsewhere.
bool banners(Set &set) {
    ProjectStore &store = set.app().store();
    const QString file = *store.fileURL();
    Project project = *store.project();
    VideoRecord added = *store.video(Shoot::clip(set.app(), "A003_C001_0612.MOV"));
    added.id = newIdentifier();
    added.fileName = QStringLiteral("A003_C009_0612.MOV");
    const QString media = mediaFolder(file) + QLatin1Char('/') + added.fileName;
    if (!QDir().mkpath(mediaFolder(file)) || !QFile::copy(added.sourcePath, media)) {
        return false;
    }
    added.sourcePath = media;
    project.videos.append(VideoItem(added));
    store.updateProject(project);
    QStringList changed;
    for (const char *const name : {"DJI_0042.MP4", "DJI_0043.MP4", "GX010236.MP4"}) {
        changed.append(store.video(Shoot::clip(set.app(), name))->sourcePath);
    }
    waitUntilDone(store.authorization().markPending({}, changed, file));
    waitUntilDone(store.refreshMediaConfirmationState());
    return set.screen().banners()->places().size() > 0 && showReview(set);
}

} // namespace

QList<ScreenPicture> flowPictures() {
    return {
        Set::picture("import-results", importResults),
        Set::picture("handoff-done", handoffDone),
        Set::picture("handoff-configure", handoffConfigure),
        Set::picture("export-configure", exportConfigure),
        Set::picture("export-configure-1280x800", exportConfigure, {1280, 800}),
        Set::picture("export-running", exportRunning),
        Set::picture("export-done", exportDone),
        Set::picture("review-banners", banners, {1440, 900}, "Tidewater Day 3.corvane"),
        Set::picture("import-running", importRunning),
    };
}

} // namespace corvane
