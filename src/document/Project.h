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
    /// True if any clip or subclip is selected for export.
    bool hasSelects() const;
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

template <> struct RawValues<SourceImportMode> {
    static constexpr std::array<std::pair<SourceImportMode, std::string_view>, 2> table{{
        {SourceImportMode::inPlace, "in-place"},
        {SourceImportMode::copied, "copied"},
    }};
};

template <> struct RawValues<SidecarType> {
    static constexpr std::array<std::pair<SidecarType, std::string_view>, 4> table{{
        {SidecarType::xml, "xml"},
        {SidecarType::xmp, "xmp"},
        {SidecarType::json, "json"},
        {SidecarType::other, "other"},
    }};
};

template <> struct RawValues<ExportBatch::Mode> {
    static constexpr std::array<std::pair<ExportBatch::Mode, std::string_view>, 2> table{{
        {ExportBatch::Mode::fastCopy, "fast-copy"},
        {ExportBatch::Mode::accurateTranscode, "accurate-transcode"},
    }};
};

template <> struct RawValues<OutputMode> {
    static constexpr std::array<std::pair<OutputMode, std::string_view>, 3> table{{
        {OutputMode::primaryOnly, "primary-only"},
        {OutputMode::primaryAndHd, "primary-and-hd"},
        {OutputMode::hdOnly, "hd-only"},
    }};
};

template <> struct RawValues<ExportNamingOptions::NumberingMode> {
    using Mode = ExportNamingOptions::NumberingMode;
    static constexpr std::array<std::pair<Mode, std::string_view>, 3> table{{
        {Mode::off, "off"},
        {Mode::originalFileNumber, "original-file-number"},
        {Mode::sequential, "sequential"},
    }};
};

template <> struct JSONFields<Subclip> {
    static constexpr auto table = std::tuple(
        jsonField("id", &Subclip::id), jsonField("sourceVideoId", &Subclip::sourceVideoId),
        jsonField("label", &Subclip::label), jsonField("inSeconds", &Subclip::inSeconds),
        jsonField("outSeconds", &Subclip::outSeconds),
        jsonField("selectedForExport", &Subclip::selectedForExport),
        jsonField("rating", &Subclip::rating), jsonField("favorite", &Subclip::favorite),
        jsonField("notes", &Subclip::notes), jsonField("createdAt", &Subclip::createdAt),
        jsonField("creationIndex", &Subclip::creationIndex),
        jsonField("exportedAt", &Subclip::exportedAt));
};

template <> struct JSONFields<VideoRecord> {
    static constexpr auto table = std::tuple(
        jsonField("id", &VideoRecord::id), jsonField("sourcePath", &VideoRecord::sourcePath),
        jsonField("sourceImportMode", &VideoRecord::sourceImportMode),
        jsonField("originalSourcePath", &VideoRecord::originalSourcePath),
        jsonField("fileName", &VideoRecord::fileName),
        jsonField("parentFolder", &VideoRecord::parentFolder),
        jsonField("durationSeconds", &VideoRecord::durationSeconds),
        jsonField("width", &VideoRecord::width), jsonField("height", &VideoRecord::height),
        jsonField("fps", &VideoRecord::fps), jsonField("codec", &VideoRecord::codec),
        jsonField("audioCodec", &VideoRecord::audioCodec),
        jsonField("fileSizeBytes", &VideoRecord::fileSizeBytes),
        jsonField("thumbnailPath", &VideoRecord::thumbnailPath),
        jsonField("filmstripPath", &VideoRecord::filmstripPath),
        jsonField("hdPath", &VideoRecord::hdPath), jsonField("proxyPath", &VideoRecord::proxyPath),
        jsonField("needsProxy", &VideoRecord::needsProxy),
        jsonField("bitRateBps", &VideoRecord::bitRateBps),
        jsonField("pixelFormat", &VideoRecord::pixelFormat),
        jsonField("rating", &VideoRecord::rating), jsonField("rejected", &VideoRecord::rejected),
        jsonField("favorite", &VideoRecord::favorite),
        jsonField("selectedForExport", &VideoRecord::selectedForExport),
        jsonField("reviewed", &VideoRecord::reviewed),
        jsonField("reviewedAt", &VideoRecord::reviewedAt),
        jsonField("missing", &VideoRecord::missing), jsonField("tags", &VideoRecord::tags),
        jsonField("notes", &VideoRecord::notes), jsonField("subclips", &VideoRecord::subclips),
        jsonField("exportedAt", &VideoRecord::exportedAt),
        jsonField("sidecarPath", &VideoRecord::sidecarPath),
        jsonField("sidecarType", &VideoRecord::sidecarType),
        jsonField("cameraMetadata", &VideoRecord::cameraMetadata),
        jsonField("contentHash", &VideoRecord::contentHash),
        jsonField("createdAt", &VideoRecord::createdAt),
        jsonField("updatedAt", &VideoRecord::updatedAt));
};

template <> struct JSONFields<ExportNamingOptions> {
    using Options = ExportNamingOptions;
    static constexpr auto table =
        std::tuple(jsonField("keepOriginalForWholeVideos", &Options::keepOriginalForWholeVideos),
                   jsonField("baseName", &Options::baseName),
                   jsonField("includeShootDate", &Options::includeShootDate),
                   jsonField("includeOriginalFilename", &Options::includeOriginalFilename),
                   jsonField("includeOriginalFileNumber", &Options::includeOriginalFileNumber),
                   jsonField("numberingMode", &Options::numberingMode),
                   jsonField("includeSubclipLabel", &Options::includeSubclipLabel),
                   jsonField("includeSelectType", &Options::includeSelectType));
};

template <> struct JSONFields<ExportBatch> {
    static constexpr auto table = std::tuple(
        jsonField("id", &ExportBatch::id), jsonField("outputFolder", &ExportBatch::outputFolder),
        jsonField("mode", &ExportBatch::mode),
        jsonField("includeWholeVideoSelects", &ExportBatch::includeWholeVideoSelects),
        jsonField("includeSubclipSelects", &ExportBatch::includeSubclipSelects),
        jsonField("subclipHandleSeconds", &ExportBatch::subclipHandleSeconds),
        jsonField("namingOptions", &ExportBatch::namingOptions),
        jsonField("createdAt", &ExportBatch::createdAt),
        jsonField("completedAt", &ExportBatch::completedAt),
        jsonField("succeededCount", &ExportBatch::succeededCount),
        jsonField("failedCount", &ExportBatch::failedCount),
        jsonField("cancelledCount", &ExportBatch::cancelledCount),
        jsonField("cancelled", &ExportBatch::cancelled),
        jsonField("outputMode", &ExportBatch::outputMode));
};

template <> struct JSONFields<Project> {
    static constexpr auto table = std::tuple(
        jsonField("id", &Project::id), jsonField("name", &Project::name),
        jsonField("filePath", &Project::filePath), jsonField("rootFolders", &Project::rootFolders),
        jsonField("videos", &Project::videos), jsonField("exportBatches", &Project::exportBatches),
        jsonField("projectName", &Project::projectName),
        jsonField("shootDate", &Project::shootDate),
        jsonField("clientOrSeries", &Project::clientOrSeries),
        jsonField("location", &Project::location), jsonField("notes", &Project::notes),
        jsonField("createdAt", &Project::createdAt), jsonField("updatedAt", &Project::updatedAt),
        jsonField("schemaVersion", &Project::schemaVersion));
};

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
