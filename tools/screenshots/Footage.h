#pragma once

#include "Scenery.h"

#include <QDir>

/// The clips of the pictures, made by the `ffmpeg` command out of painted scenes.
namespace corvane {

struct Clip {
    const char *fileName;
    Scene scene;
    int seed;
    int seconds;
    int height = 360; ///< of its picture, which is 16 by 9
};

/// Makes each clip in the folder: a slow move of the camera, with a grain. Throws a failure that
/// says what is wrong.
void makeClips(const QList<Clip> &clips, const QDir &folder);

/// As if a file of that size had been filmed: it ends in nothing, which takes no room on the disk.
void stretchFile(const QString &path, qint64 bytes);

} // namespace corvane
