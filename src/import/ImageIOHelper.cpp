#include "import/ImageIOHelper.h"

#include "media/MediaError.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <QUuid>

#include <memory>

namespace corvane::ImageIOHelper {

namespace {

QString writeErrorText(WriteError::Case reason, const QString &url) {
    switch (reason) {
    case WriteError::Case::destinationCreateFailed:
        return QStringLiteral("Could not open image destination at %1.").arg(url);
    case WriteError::Case::finalizeFailed:
        return QStringLiteral("Image encoder failed to finalize %1.").arg(url);
    }
    Q_UNREACHABLE();
}

std::unique_ptr<TemporaryFile> createDestination(const QString &url) {
    const QString name = QStringLiteral(".tmp-%1.jpg")
                             .arg(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
    try {
        return std::make_unique<TemporaryFile>(paths::joined(paths::parentFolder(url), name));
    } catch (const FileError &) {
        throw WriteError(WriteError::Case::destinationCreateFailed, url);
    }
}

void finalize(TemporaryFile &file, const media::StillImage &image, double quality,
              const QString &url) {
    try {
        const QByteArray bytes = image.encodedJPEG(quality);
        file.write(bytes.constData(), bytes.size());
        file.finish();
    } catch (const Failure &) {
        throw WriteError(WriteError::Case::finalizeFailed, url);
    }
}

} // namespace

WriteError::WriteError(Case reason, const QString &url)
    : Failure(writeErrorText(reason, url)), m_reason(reason), m_url(url) {}

void writeJPEG(const media::StillImage &image, const QString &url, double quality) {
    fileSystem().createFolders(paths::parentFolder(url));
    const std::unique_ptr<TemporaryFile> file = createDestination(url);
    finalize(*file, image, quality, url);
    file->place(url);
}

} // namespace corvane::ImageIOHelper
