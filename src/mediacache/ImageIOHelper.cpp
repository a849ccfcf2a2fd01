#include "mediacache/ImageIOHelper.h"

#include "media/MediaError.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"

#include <QUuid>

#include <memory>

namespace corvane::ImageIOHelper {

namespace {

std::unique_ptr<TemporaryFile> createDestination(const OpenFolder &folder, const QString &path) {
    const QString name = QStringLiteral(".tmp-%1.jpg")
                             .arg(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
    try {
        return std::make_unique<TemporaryFile>(folder, name);
    } catch (const FileError &) {
        throw WriteError(WriteError::Case::destinationCreateFailed, path);
    }
}

void finalize(TemporaryFile &file, const media::RGBImage &image, double quality,
              const QString &path) {
    try {
        const QByteArray bytes = image.encodedJPEG(quality);
        file.write(bytes.constData(), bytes.size());
        file.finish();
    } catch (const Failure &) {
        throw WriteError(WriteError::Case::finalizeFailed, path);
    }
}

} // namespace

WriteError::WriteError(Case reason, const QString &path)
    : Failure((reason == Case::finalizeFailed
                   ? QStringLiteral("Image encoder failed to finalize %1.")
                   : QStringLiteral("Could not open image destination at %1."))
                  .arg(path)),
      m_reason(reason),
      m_path(path) {}

void writeJPEG(const media::RGBImage &image, const QString &path, double quality) {
    const QString folder = paths::parentFolder(path);
    fileSystem().createFolders(folder);
    writeJPEG(image, OpenFolder::at(folder), paths::lastComponent(path), quality);
}

void writeJPEG(const media::RGBImage &image, const OpenFolder &folder, const QString &name,
               double quality) {
    const QString path = paths::joined(folder.path(), name);
    const std::unique_ptr<TemporaryFile> file = createDestination(folder, path);
    finalize(*file, image, quality, path);
    file->commit(name);
}

} // namespace corvane::ImageIOHelper
