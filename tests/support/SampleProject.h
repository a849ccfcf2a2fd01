#pragma once

#include "document/Project.h"

namespace corvane::test {

/// A clip whose id is also its file name.
VideoItem sampleVideo(const QString &id);

Subclip sampleSubclip(const QString &id, const QString &videoId, int creationIndex = 1);

/// A project with clips clip-0, clip-1, ..., each with subclips clip-0-sub-0, ...
Project sampleProject(int videos, int subclipsPerVideo = 0);

/// A project in which every optional field is set. Its JSON is a seed of the document fuzzer and
/// pins every key on disk.
Project fullProject();
QByteArray fullProjectText();

} // namespace corvane::test
