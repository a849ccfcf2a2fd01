#include "review/SubclipThumbnails.h"

#include "media/FrameGenerator.h"
#include "mediacache/ImageIOHelper.h"
#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "trust/PathSafety.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvane::SubclipThumbnails {

namespace {

/// Not a shared executor: those can be busy for minutes with verifying files.
SerialExecutor &thumbnailExecutor() {
    return sharedExecutor("subclipThumbnails", SerialExecutor::Priority::Utility);
}

} // namespace

void writeFrame(const QString &mediaFile, double seconds, const QString &file) {
    constexpr double kTolerance = 0.1;
    constexpr double kQuality = 0.7;
    media::FrameGenerator generator(mediaFile,
                                    {.maximumSize = {320, 180}, .tolerance = kTolerance});
    ImageIOHelper::writeJPEG(generator.imageAt(media::MediaTime::fromSeconds(seconds)), file,
                             kQuality);
}

void generate(const Subclip &subclip, const QString &media, const QString &projectFolder,
              const Writer &writer) {
    // Rejects paths through links before any folder is created.
    const auto file = PathSafety::subclipThumbnailPath(subclip.id, projectFolder);
    if (!file || !writer || fileSystem().linkStatus(*file)) {
        return;
    }
    try {
        fileSystem().createFolders(paths::parentFolder(*file));
        writer(media, std::max(subclip.inSeconds, 0.0), *file);
    } catch (const std::exception &) {
        return;
    }
}

void generateDetached(const Subclip &subclip, const QString &media, const QString &projectFolder,
                      const Writer &writer, const std::function<void()> &onDone) {
    thumbnailExecutor().post([=] {
        generate(subclip, media, projectFolder, writer);
        if (auto *const application = QCoreApplication::instance()) {
            QMetaObject::invokeMethod(application, onDone, Qt::QueuedConnection);
        }
    });
}

} // namespace corvane::SubclipThumbnails
