#pragma once

#include "document/Project.h"

namespace corvane::test {

/// A clip with the given id, and that id as its file name.
VideoItem sampleVideo(const QString &id);

Subclip sampleSubclip(const QString &id, const QString &videoId, int creationIndex = 1);

/// A project of clips named clip-0, clip-1, ..., each with so many subclips named clip-0-sub-0, ...
Project sampleProject(int videos, int subclipsPerVideo = 0);

/// A project in which every optional field is present.
Project fullProject();

} // namespace corvane::test
