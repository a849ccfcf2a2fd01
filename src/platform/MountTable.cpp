#include "platform/MountTable.h"

#include <QFile>
#include <QList>

#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace corvane {

namespace {

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

/// The fields are: id, parent, major:minor, root, mount point, options, ..., "-", type, source,
/// options of the file system.
std::optional<Mount> parsedMount(const QByteArray &line) {
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype dash = fields.indexOf("-", 5);
    if (dash < 0 || dash + 2 >= fields.size()) {
        return std::nullopt;
    }
    const QList<QByteArray> device = fields.at(2).split(':');
    return Mount{.id = fields.first().toULongLong(),
                 .device = makedev(device.first().toUInt(), device.last().toUInt()),
                 .root = unescaped(fields.at(3)),
                 .mountPoint = unescaped(fields.at(4)),
                 .type = fields.at(dash + 1),
                 .source = unescaped(fields.at(dash + 2)),
                 .options = fields.value(dash + 3)};
}

/// The part of a path below a folder, with its leading slash; empty for the folder itself. nullopt
/// if the path is elsewhere.
std::optional<QByteArray> pathBelow(const QByteArray &folder, const QByteArray &path) {
    const QByteArray prefix = folder == "/" ? QByteArray() : folder;
    const bool isInside =
        path.startsWith(prefix) && (path.size() == prefix.size() || path.at(prefix.size()) == '/');
    return isInside ? std::optional(path == "/" ? QByteArray() : path.mid(prefix.size()))
                    : std::nullopt;
}

bool isFUSE(const QByteArray &type) {
    return type == "fuse" || type == "fuseblk" || type.startsWith("fuse.");
}

bool isCIFS(const QByteArray &type) {
    return type == "cifs" || type == "smb3";
}

} // namespace

bool Mount::isFAT() const {
    return type == "vfat" || type == "exfat" || type == "msdos";
}

bool Mount::hasStableInodes() const {
    if (isCIFS(type)) {
        return options.split(',').contains("serverino");
    }
    return !isFUSE(type) && !isFAT();
}

std::optional<QString> Mount::share() const {
    // The paths of gvfsd-fuse begin with the name of a share or of a camera.
    const bool isNamed = isCIFS(type) || type == "fuse.gvfsd-fuse" || source.startsWith("//") ||
                         (source.contains(':') && !source.startsWith('/'));
    const bool isShare = isNamed && !hasStableInodes() && source.isValidUtf8();
    return isShare ? std::optional(QString::fromUtf8(source)) : std::nullopt;
}

std::optional<QString> Mount::pathOnVolume(const QByteArray &path) const {
    const auto below = pathBelow(mountPoint, path);
    if (!below || path.isEmpty()) {
        return std::nullopt;
    }
    const QByteArray fullPath = root == "/" && !below->isEmpty() ? *below : root + *below;
    return fullPath.isValidUtf8() ? std::optional(QString::fromUtf8(fullPath)) : std::nullopt;
}

std::optional<Mount> mountWithId(const QByteArray &table, quint64 id) {
    const QByteArray prefix = QByteArray::number(id) + ' ';
    for (const QByteArray &line : table.split('\n')) {
        if (line.startsWith(prefix)) {
            return parsedMount(line);
        }
    }
    return std::nullopt;
}

std::optional<Mount> mountContaining(const QByteArray &table, const QByteArray &path) {
    std::optional<Mount> innermost;
    for (const QByteArray &line : table.split('\n')) {
        const auto mount = parsedMount(line);
        // Of two mounts at the same mount point, the later one hides the other.
        if (mount && pathBelow(mount->mountPoint, path) &&
            (!innermost || mount->mountPoint.size() >= innermost->mountPoint.size())) {
            innermost = mount;
        }
    }
    return innermost;
}

QByteArray pathOfDescriptor(int descriptor) {
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    QByteArray path(PATH_MAX, '\0');
    const ssize_t size = ::readlink(link.constData(), path.data(), size_t(path.size()));
    path.resize(size > 0 && size < path.size() ? size : 0);
    return path;
}

std::optional<Mount> mountOfDescriptor(int descriptor, const QByteArray &path) {
    QFile table(QStringLiteral("/proc/self/mountinfo"));
    if (!table.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    struct statx raw{};
    const bool hasId = ::statx(descriptor, "", AT_EMPTY_PATH, STATX_MNT_ID, &raw) == 0 &&
                       (raw.stx_mask & STATX_MNT_ID);
    return hasId ? mountWithId(table.readAll(), raw.stx_mnt_id)
                 : mountContaining(table.readAll(), path); // before Linux 5.8
}

} // namespace corvane
