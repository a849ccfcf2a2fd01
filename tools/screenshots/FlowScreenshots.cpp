#include "ProjectWindow.h"

#include "platform/Tasks.h"

namespace corvane {

namespace {

// Indices of choices.
constexpr int kCustom = 2;
constexpr int kWithHD = 1;
constexpr int kSequential = 2;

/// Shows the review that is visible behind every sheet.
bool showReview(ProjectWindow &projectWindow) {
    projectWindow.resizeSidePane(300);
    return projectWindow.show(SampleShoot::kMainClip, 17.2) && projectWindow.waitUntilDrawn();
}

bool scanCard(ProjectWindow &projectWindow) {
    if (!showReview(projectWindow)) {
        return false;
    }
    ImportSheet &import = *projectWindow.screen().importing();
    projectWindow.screen().requestImport();
    import.sources()->add({SampleShoot::shared().cardWithNewClips()});
    import.scan();
    if (!waitUntil([&] { return import.stage() == ImportViewModel::Stage::results; })) {
        return false;
    }
    import.setMode(1);
    return true;
}

bool importResults(ProjectWindow &projectWindow) {
    if (!scanCard(projectWindow)) {
        return false;
    }
    projectWindow.screen().importing()->toggleRow(
        projectWindow.screen().importing()->rows()->count() - 1);
    return true;
}

bool importRunning(ProjectWindow &projectWindow) {
    if (!scanCard(projectWindow)) {
        return false;
    }
    ImportSheet &import = *projectWindow.screen().importing();
    import.beginImport();
    return waitUntil([&] {
        return import.run().figure.startsWith(QLatin1Char('4')) && import.run().fraction > 0.05;
    });
}

void chooseExport(ExportSheet &exporting) {
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

bool exportConfigure(ProjectWindow &projectWindow) {
    if (!showReview(projectWindow)) {
        return false;
    }
    projectWindow.screen().requestExport();
    chooseExport(*projectWindow.screen().exporting());
    return waitUntil([&] { return projectWindow.screen().exporting()->canStart(); });
}

bool exportRunning(ProjectWindow &projectWindow) {
    if (!exportConfigure(projectWindow)) {
        return false;
    }
    ExportSheet &exporting = *projectWindow.screen().exporting();
    exporting.start();
    return waitUntil(
        [&] { return exporting.run().fraction > 0.3 && !exporting.run().details.isEmpty(); });
}

/// Results with two failed rows: one file was modified and one deleted after the import.
bool exportDone(ProjectWindow &projectWindow) {
    const QString media = SampleShoot::shared().projectFolder() + QStringLiteral("/media/");
    QFile changed(media + QStringLiteral("DJI_0042.MP4"));
    if (!changed.open(QFile::Append) || changed.write("changed") < 0 ||
        !QFile::remove(media + QStringLiteral("GX010233.MP4")) || !exportConfigure(projectWindow)) {
        return false;
    }
    changed.close();
    ExportSheet &exporting = *projectWindow.screen().exporting();
    exporting.setNewOnly(false);
    exporting.start();
    return waitUntil([&] { return exporting.stage() == DeliveryFlow::Stage::done; });
}

bool handoffConfigure(ProjectWindow &projectWindow) {
    if (!showReview(projectWindow)) {
        return false;
    }
    const QString folder = SampleShoot::shared().path("deliveries");
    QDir().mkpath(folder);
    projectWindow.panels().answer = folder;
    projectWindow.screen().requestHandoff();
    projectWindow.screen().handoff()->chooseFolder();
    projectWindow.screen().handoff()->chooseOutput(kWithHD);
    projectWindow.screen().handoff()->chooseHandle(1);
    return waitUntil([&] { return projectWindow.screen().handoff()->canStart(); });
}

bool handoffDone(ProjectWindow &projectWindow) {
    if (!handoffConfigure(projectWindow)) {
        return false;
    }
    HandoffSheet &handoff = *projectWindow.screen().handoff();
    handoff.chooseOutput(0);
    handoff.start();
    return waitUntil([&] { return handoff.stage() == DeliveryFlow::Stage::done; });
}

/// Banners about three replaced files and about media that were not imported on this machine.
bool banners(ProjectWindow &projectWindow) {
    ProjectStore &store = projectWindow.app().store();
    const QString file = *store.fileURL();
    Project project = *store.project();
    VideoRecord added = *store.video(SampleShoot::clip(projectWindow.app(), "A003_C001_0612.MOV"));
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
        changed.append(store.video(SampleShoot::clip(projectWindow.app(), name))->sourcePath);
    }
    waitUntilDone(store.authorization().markPending({}, changed, file));
    waitUntilDone(store.refreshMediaConfirmationState());
    return projectWindow.screen().banners()->banners().size() > 0 && showReview(projectWindow);
}

} // namespace

QList<Screenshot> flowScreenshots() {
    return {
        ProjectWindow::screenshot("import-results", importResults),
        ProjectWindow::screenshot("handoff-done", handoffDone),
        ProjectWindow::screenshot("handoff-configure", handoffConfigure),
        ProjectWindow::screenshot("export-configure", exportConfigure),
        ProjectWindow::screenshot("export-configure-1280x800", exportConfigure, {1280, 800}),
        ProjectWindow::screenshot("export-running", exportRunning),
        ProjectWindow::screenshot("export-done", exportDone),
        ProjectWindow::screenshot("review-banners", banners, {1440, 900},
                                  "Tidewater Day 3.corvane"),
        ProjectWindow::screenshot("import-running", importRunning),
    };
}

} // namespace corvane
