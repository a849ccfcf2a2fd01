#include "review/SubclipThumbnails.h"

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
    static SerialExecutor executor(QStringLiteral("subclipThumbnails"),
                                   SerialExecutor::Priority::Utility);
    return executor;
}

} // namespace

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
