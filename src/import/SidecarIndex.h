#pragma once

#include "document/Project.h"

#include <QHash>

#include <array>

namespace corvane {

/// Finds the sidecars of videos among the files of one folder.
///
/// A sidecar has the stem of its video, optionally followed by "M" and two digits: both
/// "C0001.XML" and "C0001M01.XML" are sidecars of "C0001.MP4".
class SidecarIndex {
  public:
    struct Sidecar {
        QString name;
        SidecarType type = SidecarType::other;
    };

    /// True if the extension is that of a sidecar.
    static bool isSidecarName(const QString &name);

    /// Adds a regular file of the folder. The first one added takes precedence within its type.
    void add(const QString &name);
    /// Returns the sidecar of a video, preferring XML to XMP to JSON.
    std::optional<Sidecar> find(const QString &videoStem) const;

  private:
    /// For each type in order of preference, the sidecars by the stem of their video.
    std::array<QHash<QString, QString>, 3> m_byStem;
};

} // namespace corvane
