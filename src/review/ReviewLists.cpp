#include "review/ReviewLists.h"

#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane::ReviewLists {

namespace {

void appendPassing(QList<MixedSidebarRow> &rows, const ReviewFilter &filter,
                   const VideoItem &video) {
    const QList<Subclip> subclips = inCreationOrder(video->subclips);
    for (const Subclip &subclip : subclips) {
        if (filter.passes(subclip, *video)) {
            rows.append({video, subclip});
        }
    }
}

} // namespace

QList<Subclip> inCreationOrder(QList<Subclip> subclips) {
    if (!std::ranges::is_sorted(std::as_const(subclips), {}, &Subclip::creationIndex)) {
        std::ranges::stable_sort(subclips, {}, &Subclip::creationIndex);
    }
    return subclips;
}

QList<VideoItem> visibleVideos(const ReviewState &state, const Project &project) {
    return state.sorted(state.visibleVideos(project.videos));
}

QList<MixedSidebarRow> visibleSubclips(const ReviewState &state, const Project &project) {
    const ReviewFilter filter(state);
    QList<MixedSidebarRow> rows;
    for (const VideoItem &video : project.videos) {
        appendPassing(rows, filter, video);
    }
    return rows;
}

QList<MixedSidebarRow> mixedRows(const ReviewState &state, const Project &project) {
    const ReviewFilter filter(state);
    QList<MixedSidebarRow> rows;
    for (const VideoItem &video : project.videos) {
        if (filter.passes(*video)) {
            rows.append({video, {}});
        }
        appendPassing(rows, filter, video);
    }
    return rows;
}

QList<MixedSidebarRow> shownRows(const ReviewState &state, const Project &project) {
    if (state.subclipsView) {
        return visibleSubclips(state, project);
    }
    if (state.selectedOnly) {
        return mixedRows(state, project);
    }
    QList<MixedSidebarRow> rows;
    const QList<VideoItem> videos = visibleVideos(state, project);
    for (const VideoItem &video : videos) {
        rows.append({video, {}});
    }
    return rows;
}

QList<SidebarRowId> orderedRowIds(const ReviewState &state, const Project &project) {
    const bool showsInline = !state.subclipsView && !state.selectedOnly;
    QList<SidebarRowId> ids;
    const QList<MixedSidebarRow> rows = shownRows(state, project);
    for (const MixedSidebarRow &row : rows) {
        ids.append(SidebarRowId::of(row));
        if (showsInline) {
            const QList<Subclip> subclips = inCreationOrder(row.video->subclips);
            for (const Subclip &subclip : subclips) {
                ids.append({row.video->id, subclip.id});
            }
        }
    }
    return ids;
}

qsizetype visibleCount(const ReviewState &state, const Project &project) {
    return shownRows(state, project).size();
}

qsizetype totalCount(const ReviewState &state, const Project &project) {
    if (state.subclipsView) {
        return project.subclipCount();
    }
    return project.videos.size() + (state.selectedOnly ? project.subclipCount() : 0);
}

QString countLabel(const ReviewState &state, qsizetype visible, qsizetype total) {
    if (total == 0) {
        return QStringLiteral("No clips yet");
    }
    if (state.filtersAreDefault()) {
        return counted(total, QStringLiteral("clip"));
    }
    return QStringLiteral("%1 of %2 visible").arg(visible).arg(total);
}

} // namespace corvane::ReviewLists
