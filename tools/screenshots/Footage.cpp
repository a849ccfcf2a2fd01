#include "Footage.h"

#include "platform/Failure.h"

#include <QProcess>
#include <QTemporaryDir>

namespace corvane {

namespace {

class FootageError : public Failure {
  public:
    using Failure::Failure;
};

/// Size of a scene relative to the frame, which pans over it.
constexpr double kSceneScale = 1.14;
/// Frames per second of long clips, so that they are quick to encode. They are not played.
constexpr int kLongClipRate = 1;
constexpr int kLongClip = 60; ///< seconds

void runFFmpeg(const QStringList &arguments) {
    QProcess ffmpeg;
    ffmpeg.setProcessChannelMode(QProcess::MergedChannels);
    ffmpeg.start(QStringLiteral("ffmpeg"),
                 QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-y")} +
                     arguments);
    if (!ffmpeg.waitForFinished(-1) || ffmpeg.exitStatus() != QProcess::NormalExit ||
        ffmpeg.exitCode() != 0) {
        throw FootageError(QStringLiteral("ffmpeg: ") + ffmpeg.errorString() + QLatin1Char('\n') +
                           QString::fromUtf8(ffmpeg.readAll()));
    }
}

void makeClip(const Clip &clip, const QString &file, const QString &stillFile) {
    const QSize size(clip.height * 16 / 9, clip.height);
    if (!paintScene(clip.scene, clip.seed, size * kSceneScale).save(stillFile)) {
        throw FootageError(QStringLiteral("cannot write ") + stillFile);
    }
    const QString filter =
        QStringLiteral("crop=%1:%2:x='(iw-ow)*t/%3':y='(ih-oh)*(0.5+0.4*sin(t/9))',"
                       "noise=alls=5:allf=t,vignette=PI/5,format=yuv420p")
            .arg(QString::number(size.width()), QString::number(size.height()),
                 QString::number(clip.seconds));
    const int rate = clip.seconds > kLongClip ? kLongClipRate : clip.height > 360 ? 10 : 2;
    runFFmpeg({QStringLiteral("-loop"), QStringLiteral("1"), QStringLiteral("-framerate"),
               QString::number(rate), QStringLiteral("-i"), stillFile, QStringLiteral("-vf"),
               filter, QStringLiteral("-t"), QString::number(clip.seconds), QStringLiteral("-c:v"),
               QStringLiteral("libx264"), QStringLiteral("-preset"), QStringLiteral("ultrafast"),
               QStringLiteral("-crf"), QStringLiteral("23"), file});
}

} // namespace

void makeClips(const QList<Clip> &clips, const QDir &folder) {
    const QTemporaryDir stills;
    if (!stills.isValid() || !folder.mkpath(QStringLiteral("."))) {
        throw FootageError(QStringLiteral("cannot create ") + folder.path());
    }
    for (const Clip &clip : clips) {
        makeClip(clip, folder.filePath(QLatin1String(clip.fileName)),
                 stills.filePath(QStringLiteral("scene.bmp")));
    }
}

void stretchFile(const QString &path, qint64 bytes) {
    if (!QFile::resize(path, bytes)) {
        throw FootageError(QStringLiteral("cannot write ") + path);
    }
}

} // namespace corvane
