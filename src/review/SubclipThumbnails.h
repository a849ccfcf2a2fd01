#pragma once

#include "document/Project.h"

#include <functional>

/// The pictures of subclips in a project's cache, each made once and never overwritten.
namespace corvane::SubclipThumbnails {

/// Writes the picture of a media file at a time as a JPEG file of that path, or throws. Called off
/// the main thread.
using Writer = std::function<void(const QString &media, double seconds, const QString &file)>;

/// Makes the subclip's thumbnail unless it is there. Every failure is silent: the row then keeps
/// its clip's picture. Any thread; takes as long as the writer.
void generate(const Subclip &subclip, const QString &media, const QString &projectFolder,
              const Writer &writer);

/// The same on a thread of its own, with nobody waiting. `onDone` is called on the main thread
/// afterwards, whatever came of it.
void generateDetached(const Subclip &subclip, const QString &media, const QString &projectFolder,
                      const Writer &writer, const std::function<void()> &onDone);

} // namespace corvane::SubclipThumbnails
