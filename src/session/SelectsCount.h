#pragma once

#include "document/Project.h"

namespace corvane {

/// Counts the clips and subclips of a project that are selected for export. An update reads only
/// clips whose shared record is a different one than before.
class SelectsCount {
  public:
    /// Counts those of `videos`, which replace the clips of the previous call.
    void update(const QList<VideoItem> &videos);
    bool isZero() const { return m_count == 0; }

  private:
    QList<VideoItem> m_videos;
    qsizetype m_count = 0;
};

} // namespace corvane
