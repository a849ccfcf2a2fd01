#include "delivery/handoff/PackageProject.h"

#include "platform/Paths.h"

#include <QUuid>

#include <algorithm>

namespace corvane::PackageProject {

namespace {

const QString kMediaFolder = QStringLiteral("media");

QString inMedia(const QString &name) {
    return QStringLiteral("media/") + name;
}

std::optional<QString> inHD(const std::optional<QString> &name) {
    return name ? std::optional(QStringLiteral("media/HD/") + *name) : std::nullopt;
}

/// The file name of the source, without its folder.
std::optional<QString> bareName(const QString &sourcePath) {
    const QString name = paths::lastComponent(sourcePath);
    return name.isEmpty() || name.contains(QLatin1Char('/')) ? std::nullopt : std::optional(name);
}

QString stubNotes(const std::optional<QString> &notes) {
    const QString text = QStringLiteral(
        "[Corvane stub manifest — incomplete handoff. Rerun the handoff to populate.]");
    return notes && !notes->isEmpty() ? *notes + QStringLiteral("\n\n") + text : text;
}

} // namespace

Paths Paths::of(const QString &packageFolder, const QString &projectName) {
    const QString file = paths::joined(packageFolder, projectName + QStringLiteral(".corvane"));
    const QString media = mediaFolder(file);
    return {.folder = packageFolder,
            .projectFile = file,
            .media = media,
            .hd = paths::joined(media, QStringLiteral("HD")),
            .cacheRoot = corvane::cacheRoot(file)};
}

Project stub(const HandoffPlan &plan, const Paths &paths, const QDateTime &now) {
    return {.id = newIdentifier(),
            .name = plan.projectName,
            .filePath = paths.projectFile,
            .rootFolders = {paths.media},
            .projectName = plan.projectName,
            .notes = stubNotes(plan.notes),
            .createdAt = now,
            .updatedAt = now};
}

Project finished(const HandoffPlan &plan, const Project &stub, const QList<VideoItem> &videos,
                 const QDateTime &now) {
    Project project = stub;
    project.videos = videos;
    project.shootDate = plan.shootDate;
    project.clientOrSeries = plan.clientOrSeries;
    project.location = plan.location;
    project.notes = plan.notes;
    project.createdAt = now;
    project.updatedAt = now;
    return project;
}

QString sidecarName(const QString &mediaName, const QString &sidecarPath) {
    const QString stem = paths::split(mediaName).stem;
    const QString extension = paths::extension(sidecarPath);
    return extension.isEmpty() ? stem : stem + QLatin1Char('.') + extension;
}

VideoItem rewrittenClip(const VideoItem &source, const OutputNames &output) {
    VideoItem item = source;
    VideoRecord &record = item.edit();
    record.sourcePath = inMedia(output.media);
    record.sourceImportMode = SourceImportMode::copied;
    record.originalSourcePath = bareName(source->sourcePath);
    record.parentFolder = kMediaFolder;
    const auto identifier = canonicalIdentifier(source->id);
    record.thumbnailPath = identifier
                               ? std::optional(QStringLiteral("thumbnails/%1.jpg").arg(*identifier))
                               : std::nullopt;
    record.filmstripPath.reset();
    record.hdPath = inHD(output.hd);
    record.proxyPath.reset();
    record.needsProxy.reset();
    record.cameraMetadata.reset();
    if (source->sidecarPath && !source->sidecarPath->isEmpty()) {
        record.sidecarPath = inMedia(sidecarName(output.media, *source->sidecarPath));
    }
    return item;
}

VideoItem clipOf(const ExtractedSubclip &extracted, const QDateTime &now) {
    const VideoRecord &parent = extracted.parent;
    const Subclip &subclip = extracted.subclip;
    const MetadataProcessor::Outcome &facts = extracted.facts;
    const double rangeSeconds = extracted.range.durationSeconds();
    return VideoRecord{
        .id = facts.videoId,
        .sourcePath = inMedia(extracted.output.media),
        .sourceImportMode = SourceImportMode::copied,
        .originalSourcePath = bareName(parent.sourcePath),
        .fileName = extracted.output.media,
        .parentFolder = kMediaFolder,
        .durationSeconds = facts.durationSeconds > 0 ? facts.durationSeconds : rangeSeconds,
        .width = facts.width.or_else([&] { return parent.width; }),
        .height = facts.height.or_else([&] { return parent.height; }),
        .fps = facts.fps.or_else([&] { return parent.fps; }),
        .codec = facts.codec.or_else([&] { return parent.codec; }),
        .audioCodec = facts.audioCodec.or_else([&] { return parent.audioCodec; }),
        .fileSizeBytes = extracted.fileSizeBytes,
        .thumbnailPath = facts.thumbnailRelativePath,
        .hdPath = inHD(extracted.output.hd),
        .bitRateBps = facts.bitRateBps.or_else([&] { return parent.bitRateBps; }),
        .pixelFormat = parent.pixelFormat,
        .rating = subclip.rating > 0 ? subclip.rating : parent.rating,
        .favorite = subclip.favorite,
        .reviewed = true,
        .reviewedAt = now,
        .tags = parent.tags,
        .notes = subclip.notes,
        .exportedAt = now,
        .createdAt = now,
        .updatedAt = now,
    };
}

std::optional<QString> canonicalIdentifier(const QString &id) {
    const QString uuid = QUuid::fromString(id).toString(QUuid::WithoutBraces).toUpper();
    return uuid == id.toUpper() ? std::optional(uuid) : std::nullopt;
}

} // namespace corvane::PackageProject
