#include "platform/VolumeUUID.h"

#include <QDir>

#include <blkid.h>
#include <cstdlib>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace corvane {

namespace {

template <auto Release> struct Releaser {
    template <typename Resource> void operator()(Resource *resource) const { Release(resource); }
};

/// A text that the C library allocated.
using CText = std::unique_ptr<char, Releaser<::free>>;
using BlockProbe = std::unique_ptr<blkid_struct_probe, Releaser<::blkid_free_probe>>;

/// The number of the block device at a path.
std::optional<dev_t> blockDeviceAt(const QByteArray &path) {
    struct stat raw{};
    const bool isBlockDevice =
        path.startsWith('/') && ::stat(path.constData(), &raw) == 0 && S_ISBLK(raw.st_mode);
    return isBlockDevice ? std::optional(raw.st_rdev) : std::nullopt;
}

std::optional<QString> linkedUUID(dev_t device) {
    const QString links = QStringLiteral("/dev/disk/by-uuid/");
    const QStringList names =
        QDir(links).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (blockDeviceAt((links + name).toUtf8()) == device) {
            return name;
        }
    }
    return std::nullopt;
}

std::optional<QString> probedUUID(const QByteArray &devicePath) {
    const BlockProbe probe(blkid_new_probe_from_filename(devicePath.constData()));
    const char *uuid = nullptr;
    const bool isFound = probe && blkid_probe_enable_superblocks(probe.get(), 1) == 0 &&
                         blkid_probe_set_superblocks_flags(probe.get(), BLKID_SUBLKS_UUID) == 0 &&
                         blkid_do_safeprobe(probe.get()) == 0 &&
                         blkid_probe_lookup_value(probe.get(), "UUID", &uuid, nullptr) == 0;
    return isFound ? std::optional(QString::fromUtf8(uuid)) : std::nullopt;
}

std::optional<QString> cachedUUID(const QByteArray &devicePath) {
    blkid_cache cache = nullptr;
    if (blkid_get_cache(&cache, nullptr) != 0) {
        return std::nullopt;
    }
    const CText uuid(blkid_get_tag_value(cache, "UUID", devicePath.constData()));
    blkid_put_cache(cache);
    return uuid ? std::optional(QString::fromUtf8(uuid.get())) : std::nullopt;
}

} // namespace

std::optional<QString> mountedVolumeUUID(const Mount &mount) {
    QByteArray devicePath = mount.source;
    auto device = blockDeviceAt(devicePath);
    if (!device && major(mount.device) != 0) { // such as "/dev/root", which doesn't exist
        device = mount.device;
        devicePath = CText(blkid_devno_to_devname(*device)).get();
    }
    if (!device) {
        return std::nullopt;
    }
    auto uuid = linkedUUID(*device);
    if (!uuid && !devicePath.isEmpty()) {
        uuid = probedUUID(devicePath);
    }
    if (!uuid && !devicePath.isEmpty()) {
        uuid = cachedUUID(devicePath);
    }
    return uuid;
}

} // namespace corvane
