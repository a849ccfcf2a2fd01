#pragma once

#include "document/Project.h"

#include <QHash>

#include <array>

namespace corvane {

/// The sidecars of one folder by the videos that they can belong to.
///
/// A sidecar belongs to a video of its own stem, or of its stem less "M" and two digits: both
/// "C0001.XML" and "C0001M01.XML" are sidecars of "C0001.MP4".
class SidecarIndex {
  public:
    struct Sidecar {
        QString name;
        SidecarType type = SidecarType::other;
    };

    /// True for a name that can be a sidecar's at all.
    static bool isSidecarName(const QString &name);

    /// Adds a regular file of the folder. Of several that fit one video the first one added stays.
    void add(const QString &name);
    /// The sidecar of a video: an XML file before an XMP file before a JSON file.
    std::optional<Sidecar> find(const QString &videoStem) const;

  private:
    /// The kinds in order of priority, each with its sidecars by the stem of the video.
    std::array<QHash<QString, QString>, 3> m_byStem;
};

} // namespace corvane
