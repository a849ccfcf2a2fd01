#include "platform/MountTable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>

#include <fcntl.h>
#include <sys/stat.h>

namespace corvane {

namespace {

struct MountLine {
    QByteArray mountPoint;
    QByteArray device; ///< a path, or any word for a file system without a device
};

/// Decodes spaces, tabs, newlines and backslashes, which mountinfo writes as a backslash and
/// three octal digits.
QByteArray unescaped(const QByteArray &text) {
    QByteArray out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool isOctal = false;
        const int value = text.at(i) == '\\' ? text.mid(i + 1, 3).toInt(&isOctal, 8) : 0;
        out.append(isOctal ? char(value) : text.at(i));
        i += isOctal ? 3 : 0;
    }
    return out;
}

/// The line of the mount that contains a path relative to `folder`, or `folder` itself if the path
/// is empty. The fields are: id, parent, major:minor, root, mount point, options, ..., "-", type,
/// device, options.
std::optional<MountLine> mountLine(int folder, const char *path) {
    struct statx raw{};
    if (::statx(folder, path, AT_EMPTY_PATH, STATX_MNT_ID, &raw) != 0 ||
        !(raw.stx_mask & STATX_MNT_ID)) {
        return std::nullopt;
    }
    QFile table(QStringLiteral("/proc/self/mountinfo"));
    if (!table.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QByteArray mountId = QByteArray::number(quint64(raw.stx_mnt_id));
    const QList<QByteArray> lines = table.readAll().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> fields = line.split(' ');
        const qsizetype dash = fields.indexOf("-");
        if (fields.first() == mountId && dash >= 5 && dash + 2 < fields.size()) {
            return MountLine{unescaped(fields.at(4)), unescaped(fields.at(dash + 2))};
        }
    }
    return std::nullopt;
}

} // namespace

QString mountPointOf(int descriptor) {
    const auto line = mountLine(descriptor, "");
    return line ? QString::fromUtf8(line->mountPoint) : QString();
}

std::optional<QString> volumeUUIDAt(const QByteArray &path) {
    const auto line = mountLine(AT_FDCWD, path.constData());
    if (!line || !line->device.startsWith('/')) {
        return std::nullopt;
    }
    const QString device = QFileInfo(QString::fromUtf8(line->device)).canonicalFilePath();
    const QDir links(QStringLiteral("/dev/disk/by-uuid"));
    const QFileInfoList entries =
        links.entryInfoList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (!device.isEmpty() && entry.canonicalFilePath() == device) {
            return entry.fileName();
        }
    }
    return std::nullopt;
}

} // namespace corvane
