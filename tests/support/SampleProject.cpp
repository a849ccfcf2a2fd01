#include "support/SampleProject.h"

namespace corvane::test {

namespace {

QDateTime sampleDate() {
    return QDateTime::fromMSecsSinceEpoch(1772357412345, Qt::UTC);
}

} // namespace

VideoItem sampleVideo(const QString &id) {
    return VideoRecord{.id = id,
                       .sourcePath = QStringLiteral("/footage/") + id,
                       .fileName = id,
                       .parentFolder = QStringLiteral("/footage"),
                       .durationSeconds = 12.5,
                       .createdAt = sampleDate(),
                       .updatedAt = sampleDate()};
}

Subclip sampleSubclip(const QString &id, const QString &videoId, int creationIndex) {
    return {.id = id,
            .sourceVideoId = videoId,
            .inSeconds = 1.25 * creationIndex,
            .outSeconds = 1.25 * creationIndex + 1,
            .createdAt = sampleDate(),
            .creationIndex = creationIndex};
}

Project sampleProject(int videos, int subclipsPerVideo) {
    Project project{.id = QStringLiteral("8D7C8C0E-2B6C-4F52-9A35-0D9C6A1F1B11"),
                    .name = QStringLiteral("Harbor"),
                    .createdAt = sampleDate(),
                    .updatedAt = sampleDate()};
    for (int v = 0; v < videos; ++v) {
        VideoItem video = sampleVideo(QStringLiteral("clip-%1").arg(v));
        for (int s = 0; s < subclipsPerVideo; ++s) {
            video.edit().subclips.append(
                sampleSubclip(QStringLiteral("%1-sub-%2").arg(video->id).arg(s), video->id, s + 1));
        }
        project.videos.append(video);
    }
    return project;
}

Project fullProject() {
    const auto text = [](const char *value) { return QString::fromUtf8(value); };
    Project project = sampleProject(2, 2);
    project.rootFolders = {text("/footage")};
    project.projectName = text("Hafen \"Süd\"\n\\ 🎬 a/b");
    project.shootDate = text("2026-03-01");
    project.clientOrSeries = text("Client");
    project.location = text("Location");
    project.notes = text("Notes");
    VideoRecord &video = project.videos[0].edit();
    video.sourceImportMode = SourceImportMode::copied;
    video.originalSourcePath = text("/card/A.mov");
    video.width = 3840;
    video.height = 2160;
    video.fps = 23.976023976023978;
    video.codec = text("avc1");
    video.audioCodec = text("mp4a");
    video.fileSizeBytes = qint64(5) << 32;
    video.thumbnailPath = text("thumbnails/x.jpg");
    video.filmstripPath = text("x/filmstrip");
    video.hdPath = text("/hd");
    video.proxyPath = text("/proxy");
    video.needsProxy = false;
    video.bitRateBps = 50'000'000;
    video.pixelFormat = text("420v");
    video.rating = 5;
    video.reviewed = true;
    video.reviewedAt = sampleDate();
    video.missing = true;
    video.tags = {text("a"), text("A")};
    video.notes = text("note");
    video.subclips[0].label = text("Wide");
    video.subclips[0].notes = text("n");
    video.subclips[0].exportedAt = sampleDate();
    video.exportedAt = sampleDate();
    video.sidecarPath = text("/footage/x.xml");
    video.sidecarType = SidecarType::xml;
    video.cameraMetadata = {
        {text("iso"), 800},
        {text("gain"), 0.1},
        {text("big"), std::numeric_limits<qint64>::max()},
        {text("none"), nullptr},
        {text("on"), true},
        {text("list"), JSONValue::Array{1, JSONValue::Array{}, text("x"), JSONValue::Object{}}},
        {text("nested"), JSONValue::Object{{text("deep"), JSONValue::Array{nullptr, false}}}}};
    video.contentHash = QString(64, QLatin1Char('a'));
    project.exportBatches.append({.id = text("batch"),
                                  .outputFolder = text("/out"),
                                  .mode = ExportBatch::Mode::accurateTranscode,
                                  .includeWholeVideoSelects = true,
                                  .subclipHandleSeconds = 0.5,
                                  .namingOptions = {.baseName = text("Base")},
                                  .createdAt = sampleDate(),
                                  .completedAt = sampleDate(),
                                  .succeededCount = 3,
                                  .cancelled = true,
                                  .outputMode = OutputMode::primaryAndHd});
    return project;
}

} // namespace corvane::test
