#pragma once

#include "platform/JSONRecord.h"

#include <QHash>
#include <QString>

#include <optional>

namespace corvane {

/// Where something was and what it held when it was granted or scanned.
///
/// In a grant the first three fields describe the parent folder of the granted file and
/// `contentHash` the file itself. In a `ScanRoot` they describe the scanned folder, and there is no
/// hash.
struct RootIdentity {
    int device = 0;    ///< `st_dev`; recorded, never compared: it changes with every remount
    quint64 inode = 0; ///< `st_ino`
    std::optional<QString> volumeUUID;
    std::optional<QString> contentHash; ///< an anchor (see `ContentHasher`)

    bool operator==(const RootIdentity &) const = default;

    /// True if both can be the same folder: equal inodes, and equal volume UUIDs where both have
    /// one.
    bool isSameFolder(const RootIdentity &other) const;
};

/// The grants of one project: standardized path to identity. A path with no identity was listed,
/// but its identity was never established; that isn't the same as a path that isn't there.
using AuthorizedPaths = QHash<QString, std::optional<RootIdentity>>;

template <> struct JSONFields<RootIdentity> {
    static constexpr auto table = std::tuple(jsonField("device", &RootIdentity::device),
                                             jsonField("inode", &RootIdentity::inode),
                                             jsonField("volumeUUID", &RootIdentity::volumeUUID),
                                             jsonField("contentHash", &RootIdentity::contentHash));
};

} // namespace corvane
