#pragma once

#include "document/Project.h"

#include <functional>

/// Thumbnails of subclips in a project's cache. An existing thumbnail is never overwritten.
namespace corvane::SubclipThumbnails {

/// Writes the frame of a media file at a time to a JPEG file, or throws. Called off the main
/// thread.
using Writer = std::function<void(const QString &media, double seconds, const QString &file)>;
/// The writer for media files. The image fits in 320 by 180 pixels and may be up to 0.1 s off.
void writeFrame(const QString &mediaFile, double seconds, const QString &file);

/// Creates the thumbnail unless it exists. Ignores failures: the row then shows the thumbnail of
/// the clip. Blocks for as long as the writer does. Any thread.
void generate(const Subclip &subclip, const QString &media, const QString &projectFolder,
              const Writer &writer);

/// The same on a background thread. Calls `onDone` on the main thread afterwards, also on failure.
void generateDetached(const Subclip &subclip, const QString &media, const QString &projectFolder,
                      const Writer &writer, const std::function<void()> &onDone);

} // namespace corvane::SubclipThumbnails
