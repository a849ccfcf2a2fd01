#include "session/SelectsCount.h"

#include <algorithm>

namespace corvane {

namespace {

qsizetype selectsOf(const VideoRecord &video) {
    return qsizetype(video.selectedForExport) +
           std::ranges::count_if(video.subclips, &Subclip::selectedForExport);
}

} // namespace

void SelectsCount::update(const QList<VideoItem> &videos) {
    if (videos.isSharedWith(m_videos)) {
        return;
    }
    const qsizetype common = std::min(videos.size(), m_videos.size());
    for (qsizetype index = 0; index < common; ++index) {
        if (!videos.at(index).isSharedWith(m_videos.at(index))) {
            m_count += selectsOf(*videos.at(index)) - selectsOf(*m_videos.at(index));
        }
    }
    for (const VideoItem &added : videos.sliced(common)) {
        m_count += selectsOf(*added);
    }
    for (const VideoItem &removed : m_videos.sliced(common)) {
        m_count -= selectsOf(*removed);
    }
    m_videos = videos;
}

} // namespace corvane
