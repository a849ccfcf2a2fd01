#include "platform/VolumeLimits.h"

#include "platform/FileSystem.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane {

namespace {

/// The longest file name of Linux.
constexpr qsizetype kMaxNameBytes = 255;
/// Kept free for the extension, so that a sidecar or an HD copy can have the stem of its clip.
constexpr qsizetype kExtensionRoom = 8;
/// A longer text after the last dot isn't an extension and may be shortened.
constexpr qsizetype kMaxExtensionBytes = 64;
constexpr qint64 kMaxFATFileSize = (qint64(1) << 32) - 1;

bool isInvalidOnFAT(QChar character) {
    return character.unicode() < 32 || QStringLiteral("?:*<>|\"\\").contains(character);
}

/// Removes characters from the end until the text has at most `maxBytes` bytes in UTF-8.
QString shortened(QString text, qsizetype maxBytes) {
    while (!text.isEmpty() && text.toUtf8().size() > maxBytes) {
        const bool isPair = text.size() > 1 && text.back().isLowSurrogate();
        text.chop(isPair ? 2 : 1);
    }
    return text;
}

QString withoutInvalidCharacters(QString name) {
    std::ranges::replace_if(name, isInvalidOnFAT, QChar(u'_'));
    while (name.endsWith(QLatin1Char('.')) || name.endsWith(QLatin1Char(' '))) {
        name.chop(1);
    }
    return name.isEmpty() ? QStringLiteral("_") : name;
}

/// The path of the folder or of its nearest existing ancestor.
QString existingFolder(QString folder) {
    while (!fileSystem().targetStatus(folder) && folder != paths::parentFolder(folder)) {
        folder = paths::parentFolder(folder);
    }
    return folder;
}

std::optional<Mount> mountOf(const QString &folder) {
    try {
        return fileSystem().mountedPath(fileSystem().openFolder(existingFolder(folder))).mount;
    } catch (const FileError &) {
        return std::nullopt; // the run will report why the folder can't be used
    }
}

} // namespace

VolumeLimits VolumeLimits::of(const QString &folder) {
    const auto mount = mountOf(folder);
    if (!mount) {
        return {};
    }
    VolumeLimits limits;
    // FUSE mounts of exFAT and NTFS have the type "fuseblk".
    limits.restrictsNames = mount->isFAT() || mount->type == "fuseblk";
    if (mount->isFAT() && mount->type != "exfat") {
        limits.maxFileSize = kMaxFATFileSize;
    }
    return limits;
}

QString VolumeLimits::fittedName(const QString &name, const QString &suffix) const {
    auto [stem, extension] = paths::split(restrictsNames ? withoutInvalidCharacters(name) : name);
    const bool mayBeTooLong = (stem.size() + suffix.size() + extension.size()) * 3 > kMaxNameBytes;
    if (mayBeTooLong && extension.toUtf8().size() > kMaxExtensionBytes) {
        stem += extension;
        extension.clear();
    }
    if (mayBeTooLong) {
        const qsizetype room = std::max(extension.toUtf8().size(), kExtensionRoom);
        stem = shortened(stem, kMaxNameBytes - suffix.toUtf8().size() - room);
    }
    return stem + suffix + extension;
}

QString tooLargeText(const QString &name, qint64 bytes, qint64 maxFileSize) {
    return QStringLiteral(
               "%1 has %2, and the drive can't hold files of more than %3. Nothing of it "
               "was copied. Pick a folder on a drive with another format, such as "
               "exFAT, then try again.")
        .arg(name, formattedByteCount(quint64(bytes)), formattedByteCount(quint64(maxFileSize)));
}

} // namespace corvane
