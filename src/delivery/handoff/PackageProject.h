#pragma once

#include "delivery/ExportPlanning.h"
#include "delivery/handoff/HandoffPlan.h"
#include "mediacache/MetadataProcessor.h"

/// The documents of a package. Pure work on records; any thread.
namespace corvane::PackageProject {

/// Where a package's parts lie.
struct Places {
    QString folder;
    QString projectFile;
    QString media;
    QString hd;
    QString cacheRoot;

    static Places of(const QString &packageFolder, const QString &projectName);
};

/// The document that stands in a package while it is being made: it says that it is unfinished.
Project stub(const HandoffPlan &plan, const Places &places, const QDateTime &now);

/// The document of the finished package. It keeps the identity of the stub that it takes the place
/// of.
Project finished(const HandoffPlan &plan, const Project &stub, const QList<VideoItem> &videos,
                 const QDateTime &now);

/// What an output came out as: file names, without folders.
struct OutputNames {
    QString media;
    std::optional<QString> hd;
};

/// The name that a sidecar has beside an output: the output's stem and the sidecar's own extension.
QString sidecarName(const QString &mediaName, const QString &sidecarPath);

/// The clip as the package's document has it: all that the user said of it, and no folder of the
/// machine that it comes from.
VideoItem rewrittenClip(const VideoItem &source, const OutputNames &output);

/// An extracted subclip as a clip of its own.
struct ExtractedSubclip {
    const VideoRecord &parent;
    const Subclip &subclip;
    ClipRange range; ///< as it was cut, handles included
    OutputNames output;
    MetadataProcessor::Outcome facts; ///< of the output; its `videoId` becomes the clip's id
    std::optional<qint64> fileSizeBytes;
};
VideoItem clipOf(const ExtractedSubclip &extracted, const QDateTime &now);

/// The id as a UUID in its canonical upper-case form; nothing for a text that is none. An id from a
/// document only becomes part of a path in this form.
std::optional<QString> canonicalIdentifier(const QString &id);

} // namespace corvane::PackageProject
