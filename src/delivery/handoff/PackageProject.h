#pragma once

#include "delivery/handoff/HandoffPlan.h"
#include "mediacache/MetadataProcessor.h"

/// Builds the documents of a package. Pure functions.
namespace corvane::PackageProject {

/// Absolute paths of the parts of a package.
struct Paths {
    QString folder;
    QString projectFile;
    QString media;
    QString hd;
    QString cacheRoot;

    static Paths of(const QString &packageFolder, const QString &projectName);
};

/// Document of an unfinished package. Its notes say so.
Project stub(const HandoffPlan &plan, const Paths &paths, const QDateTime &now);

/// Document of the finished package, with the id of the stub that it replaces.
Project finished(const HandoffPlan &plan, const Project &stub, const QList<VideoItem> &videos,
                 const QDateTime &now);

/// File names of an output.
struct OutputNames {
    QString media;
    std::optional<QString> hd; ///< nullopt if there is no HD copy
};

/// Name of the sidecar of an output: the output's stem and the sidecar's own extension.
QString sidecarName(const QString &mediaName, const QString &sidecarPath);

/// A whole clip as a clip of the package: keeps the review data, replaces every path.
VideoItem rewrittenClip(const VideoItem &source, const OutputNames &output);

/// An extracted subclip.
struct ExtractedSubclip {
    const VideoRecord &parent;
    const Subclip &subclip;
    ClipRange range; ///< including the handles
    OutputNames output;
    MetadataProcessor::Outcome facts; ///< of the output; its `videoId` is the id of the new clip
    std::optional<qint64> fileSizeBytes;
};

/// An extracted subclip as a clip of the package.
VideoItem clipOf(const ExtractedSubclip &extracted, const QDateTime &now);

/// Returns the id as a UUID in canonical upper-case form, or nullopt if it is not a UUID. Ids from
/// a document are used in paths only in this form.
std::optional<QString> canonicalIdentifier(const QString &id);

} // namespace corvane::PackageProject
