#pragma once

#include "document/ClipRange.h"
#include "document/SharedRecord.h"
#include "platform/JSONValue.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

/// The records of a project document: plain values with structural equality and hashing. Dates are
/// in UTC with milliseconds, times are seconds from the start of the clip, sizes are bytes. The
/// JSON tables are at the end of this header.
///
/// An optional member is nullopt if the value is unknown or the user hasn't set it.
namespace corvane {

/// The schema version of all documents in memory and of all files that this build writes. Older
/// files are migrated when they are read (see `ProjectMigration`).
constexpr int kCurrentSchemaVersion = 7;

enum class SourceImportMode { inPlace, copied };
enum class SidecarType { xml, xmp, json, other };
enum class OutputMode { primaryOnly, primaryAndHd, hdOnly };

/// A range of a clip that the user marked.
struct Subclip {
    QString id; ///< a UUID; also the name of the subclip's thumbnail
    QString sourceVideoId;
    std::optional<QString> label; ///< trimmed, never empty
    double inSeconds = 0;
    double outSeconds = 0;
    bool selectedForExport = false;
    int rating = 0; ///< 0 to 5
    bool favorite = false;
    std::optional<QString> notes;
    QDateTime createdAt;
    int creationIndex = 0; ///< order of creation within the clip, from 1
    std::optional<QDateTime> exportedAt;

    ClipRange range() const { return {inSeconds, outSeconds}; }
    bool operator==(const Subclip &) const = default;
};

/// A clip: a media file, its metadata and the user's review of it. Stored as a `VideoItem`.
struct VideoRecord {
    QString id;
    QString sourcePath; ///< the media file; see `resolvedAgainstProject`
    SourceImportMode sourceImportMode = SourceImportMode::inPlace;
    std::optional<QString> originalSourcePath; ///< before the import copied the file
    QString fileName;
    QString parentFolder;
    double durationSeconds = 0;
    std::optional<int> width;
    std::optional<int> height;
    std::optional<double> fps;
    std::optional<QString> codec;
    std::optional<QString> audioCodec;
    std::optional<qint64> fileSizeBytes;
    std::optional<QString> thumbnailPath; ///< relative to the cache root, or absolute
    std::optional<QString> filmstripPath; ///< likewise
    std::optional<QString> hdPath;
    std::optional<QString> proxyPath;
    std::optional<bool> needsProxy;
    std::optional<qint64> bitRateBps;
    std::optional<QString> pixelFormat;
    int rating = 0; ///< 0 to 5; 0 is unrated
    bool rejected = false;
    bool favorite = false;
    bool selectedForExport = false;
    bool reviewed = false;
    std::optional<QDateTime> reviewedAt;
    std::optional<bool> missing;
    QList<QString> tags;          ///< in order of entry, without duplicates
    std::optional<QString> notes; ///< never empty after an edit
    QList<Subclip> subclips;
    std::optional<QDateTime> exportedAt;
    std::optional<QString> sidecarPath;
    std::optional<SidecarType> sidecarType;
    std::optional<QMap<QString, JSONValue>> cameraMetadata; ///< preserved unchanged
    /// `ContentHasher::duplicateKey` of the media file. Not an anchor.
    std::optional<QString> contentHash;
    QDateTime createdAt;
    QDateTime updatedAt;

    /// True if the file is known to have audio and no video.
    bool isAudioOnly() const { return audioCodec && !codec && !width; }

    bool operator==(const VideoRecord &) const = default;
};

/// A clip of a project. Copies share storage.
using VideoItem = SharedRecord<VideoRecord>;

/// The user's choices for output names (see `ExportNaming`).
struct ExportNamingOptions {
    enum class NumberingMode { off, originalFileNumber, sequential };

    bool keepOriginalForWholeVideos = false;
    std::optional<QString> baseName;
    bool includeShootDate = false;
    bool includeOriginalFilename = false;
    bool includeOriginalFileNumber = false;
    NumberingMode numberingMode = NumberingMode::off;
    bool includeSubclipLabel = false;
    bool includeSelectType = false;

    bool operator==(const ExportNamingOptions &) const = default;
};

/// The record of a finished export.
struct ExportBatch {
    enum class Mode { fastCopy, accurateTranscode };

    QString id;
    QString outputFolder;
    Mode mode = Mode::fastCopy;
    bool includeWholeVideoSelects = false;
    bool includeSubclipSelects = false;
    double subclipHandleSeconds = 0;
    ExportNamingOptions namingOptions;
    QDateTime createdAt;
    std::optional<QDateTime> completedAt;
    int succeededCount = 0;
    int failedCount = 0; ///< without cancelled rows
    int cancelledCount = 0;
    bool cancelled = false;
    std::optional<OutputMode> outputMode;

    bool operator==(const ExportBatch &) const = default;
};

/// A project document. Copying is cheap: copies share their lists until one is changed.
struct Project {
    QString id;
    QString name;
    QString filePath; ///< the path that was opened, whatever the file says
    QList<QString> rootFolders;
    QList<VideoItem> videos;
    QList<ExportBatch> exportBatches; ///< oldest first
    std::optional<QString> projectName;
    std::optional<QString> shootDate;
    std::optional<QString> clientOrSeries;
    std::optional<QString> location;
    std::optional<QString> notes;
    QDateTime createdAt;
    QDateTime updatedAt;
    int schemaVersion = kCurrentSchemaVersion;

    bool operator==(const Project &) const = default;

    /// The index in `videos`; -1 if there is no such clip.
    qsizetype indexOfVideo(const QString &videoId) const;
    /// The name that the user sees: `projectName` if set, otherwise `name`.
    QString displayName() const { return projectName.value_or(name); }
    qsizetype subclipCount() const; ///< of all clips
};

/// A new random UUID in upper case.
QString newIdentifier();

/// The folder that contains the project file.
QString projectFolder(const QString &projectFile);
/// Makes a path from a document absolute. Documents in handoff packages hold paths relative to the
/// project folder.
QString resolvedAgainstProject(const QString &path, const QString &projectFile);
/// The folder for media that the import copies: "media" in the project folder.
QString mediaFolder(const QString &projectFile);
/// The folder for thumbnails and filmstrips, which can be regenerated: ".corvane-cache" in the
/// project folder.
QString cacheRoot(const QString &projectFile);

template <>
inline constexpr auto rawValues<SourceImportMode> = std::to_array<RawValue<SourceImportMode>>({
    {SourceImportMode::inPlace, "in-place"},
    {SourceImportMode::copied, "copied"},
});

template <>
inline constexpr auto rawValues<SidecarType> = std::to_array<RawValue<SidecarType>>({
    {SidecarType::xml, "xml"},
    {SidecarType::xmp, "xmp"},
    {SidecarType::json, "json"},
    {SidecarType::other, "other"},
});

template <>
inline constexpr auto rawValues<ExportBatch::Mode> = std::to_array<RawValue<ExportBatch::Mode>>({
    {ExportBatch::Mode::fastCopy, "fast-copy"},
    {ExportBatch::Mode::accurateTranscode, "accurate-transcode"},
});

template <>
inline constexpr auto rawValues<OutputMode> = std::to_array<RawValue<OutputMode>>({
    {OutputMode::primaryOnly, "primary-only"},
    {OutputMode::primaryAndHd, "primary-and-hd"},
    {OutputMode::hdOnly, "hd-only"},
});

template <>
inline constexpr auto rawValues<ExportNamingOptions::NumberingMode> =
    std::to_array<RawValue<ExportNamingOptions::NumberingMode>>({
        {ExportNamingOptions::NumberingMode::off, "off"},
        {ExportNamingOptions::NumberingMode::originalFileNumber, "original-file-number"},
        {ExportNamingOptions::NumberingMode::sequential, "sequential"},
    });

CORVANE_JSON_FIELDS(Subclip, id, sourceVideoId, label, inSeconds, outSeconds, selectedForExport,
                    rating, favorite, notes, createdAt, creationIndex, exportedAt);

CORVANE_JSON_FIELDS(VideoRecord, id, sourcePath, sourceImportMode, originalSourcePath, fileName,
                    parentFolder, durationSeconds, width, height, fps, codec, audioCodec,
                    fileSizeBytes, thumbnailPath, filmstripPath, hdPath, proxyPath, needsProxy,
                    bitRateBps, pixelFormat, rating, rejected, favorite, selectedForExport,
                    reviewed, reviewedAt, missing, tags, notes, subclips, exportedAt, sidecarPath,
                    sidecarType, cameraMetadata, contentHash, createdAt, updatedAt);

CORVANE_JSON_FIELDS(ExportNamingOptions, keepOriginalForWholeVideos, baseName, includeShootDate,
                    includeOriginalFilename, includeOriginalFileNumber, numberingMode,
                    includeSubclipLabel, includeSelectType);

CORVANE_JSON_FIELDS(ExportBatch, id, outputFolder, mode, includeWholeVideoSelects,
                    includeSubclipSelects, subclipHandleSeconds, namingOptions, createdAt,
                    completedAt, succeededCount, failedCount, cancelledCount, cancelled,
                    outputMode);

CORVANE_JSON_FIELDS(Project, id, name, filePath, rootFolders, videos, exportBatches, projectName,
                    shootDate, clientOrSeries, location, notes, createdAt, updatedAt,
                    schemaVersion);

template <typename Value> size_t hashOf(const Value &value, size_t seed) {
    if constexpr (std::is_enum_v<Value>) {
        return ::qHash(int(value), seed);
    } else {
        using ::qHash; // hidden by this namespace's overloads
        return qHash(value, seed);
    }
}

template <typename Value> size_t hashOf(const QList<Value> &list, size_t seed) {
    for (const Value &element : list) {
        seed = hashOf(element, seed);
    }
    return ::qHash(list.size(), seed);
}

template <typename Value> size_t hashOf(const std::optional<Value> &value, size_t seed) {
    return value ? hashOf(*value, seed) : ::qHash(0, seed);
}

/// Hashes all fields of a record, each with the previous hash as its seed.
template <JSONRecord Record> size_t qHash(const Record &record, size_t seed) {
    std::apply([&](const auto &...field) { ((seed = hashOf(record.*field.member, seed)), ...); },
               JSONFields<Record>::table);
    return seed;
}

} // namespace corvane
