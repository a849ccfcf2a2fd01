#pragma once

#include <QString>

#include <optional>

namespace corvane {

/// Which names and sizes the files of a volume can have. FAT and exFAT have stricter limits than
/// Linux itself. Thread-safe.
struct VolumeLimits {
    /// The characters of `?:*<>|"\`, control characters and trailing dots and spaces are invalid.
    bool restrictsNames = false;
    std::optional<qint64> maxFileSize; ///< bytes; nullopt if no file of today reaches the limit

    bool operator==(const VolumeLimits &) const = default;

    /// The limits of the volume that contains the folder or, if it doesn't exist, its nearest
    /// existing ancestor. The default limits if they can't be determined. Accesses the disk.
    static VolumeLimits of(const QString &folder);

    bool allowsSize(qint64 bytes) const { return bytes <= maxFileSize.value_or(bytes); }
    /// Returns the name with `suffix` after its stem. Replaces invalid characters by "_" and
    /// shortens the stem if the name is longer than a file name can be, so that the suffix and the
    /// extension are kept.
    QString fittedName(const QString &name, const QString &suffix = {}) const;
};

/// "Big.mov has 5 GB, …": refuses a file before it is copied to a volume that can't hold it.
QString tooLargeText(const QString &name, qint64 bytes, qint64 maxFileSize);

} // namespace corvane
