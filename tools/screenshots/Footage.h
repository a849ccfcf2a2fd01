#pragma once

#include "Scenery.h"

#include <QDir>

namespace corvane {

/// A clip to generate.
struct Clip {
    const char *fileName;
    Scene scene;
    int seed;
    int seconds;
    int height = 360; ///< pixels; the aspect ratio is 16:9
};

/// Encodes each clip into the folder with the `ffmpeg` command: a slow pan over a painted scene,
/// with film grain. Throws `Failure`.
void makeClips(const QList<Clip> &clips, const QDir &folder);

/// Grows a file to `bytes` with a sparse end, which takes no disk space. Throws `Failure`.
void stretchFile(const QString &path, qint64 bytes);

} // namespace corvane
