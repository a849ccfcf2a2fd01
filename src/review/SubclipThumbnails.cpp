#include "review/SubclipThumbnails.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "trust/PathSafety.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvane::SubclipThumbnails {

namespace {

/// Its own: verifying files can keep the common one busy for minutes.
SerialExecutor &thumbnailExecutor() {
    static SerialExecutor executor(QStringLiteral("subclipThumbnails"),
                                   SerialExecutor::Priority::Utility);
    return executor;
}

} // namespace

void generate(const Subclip &subclip, const QString &media, const QString &projectFolder,
              const Writer &writer) {
    // First the path: no folder is made through a link.
    const auto file = PathSafety::subclipThumbnailPath(subclip.id, projectFolder);
    if (!file || !writer || fileSystem().linkStatus(*file)) {
        return;
    }
    try {
        fileSystem().createFolders(paths::parentFolder(*file));
        writer(media, std::max(subclip.inSeconds, 0.0), *file);
    } catch (const std::exception &) {
        return; // no picture, and no word of it
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
