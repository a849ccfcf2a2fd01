// The roles of the side pane's list.

#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"
#include "review/ReviewListModel.h"
#include "trust/PathSafety.h"

namespace corvane {

ReviewListModel::ReviewListModel(QObject *parent)
    : KeyListModel({{RowIdRole, "rowId", {}},
                    {IsSubclipRole, "isSubclip", {}},
                    {IsInlineRole, "isInline", {}},
                    {VideoIdRole, "videoId", {}},
                    {SubclipIdRole, "subclipId", {}},
                    {NameRole, "name", {}},
                    {TimeRole, "time", {}},
                    {RatingRole, "rating", {}},
                    {FavoriteRole, "favorite", {}},
                    {SelectedForExportRole, "selectedForExport", {}},
                    {ReviewedRole, "reviewed", {}},
                    {RejectedRole, "rejected", {}},
                    {SubclipCountRole, "subclipCount", {}},
                    {DetailsRole, "details", {}},
                    {DescriptionRole, "description", {}},
                    {HasHdRole, "hasHd", {}},
                    {ThumbnailRole, "thumbnail", {}},
                    {FallbackThumbnailRole, "fallbackThumbnail", {}},
                    {IsSelectedRole, "isSelected", {}},
                    {IsMarkedRole, "isMarked", {}}},
                   parent) {}

QVariant ReviewListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const ReviewIndex::Entry entry = m_index.entry(row(index.row()));
    if (!entry.exists()) {
        return {}; // removed from the project, but not yet from the list
    }
    const VideoRecord &video = *m_index.clip(entry.clip).video;
    return entry.isSubclip() ? subclipData(m_index.subclip(entry), video, role)
                             : clipData(video, role);
}

QVariant ReviewListModel::clipData(const VideoRecord &video, int role) const {
    switch (role) {
    case RowIdRole:
        return SidebarRowId{video.id, {}}.identity();
    case IsSubclipRole:
    case IsInlineRole:
        return false;
    case VideoIdRole:
        return video.id;
    case SubclipIdRole:
    case FallbackThumbnailRole:
        return QString();
    case NameRole:
        return inOneLine(video.fileName);
    case TimeRole:
        return formattedDuration(video.durationSeconds);
    case RatingRole:
        return ReviewFormats::rating(video.rating);
    case FavoriteRole:
        return video.favorite;
    case SelectedForExportRole:
        return video.selectedForExport;
    case ReviewedRole:
        return video.reviewed;
    case RejectedRole:
        return video.rejected;
    case SubclipCountRole:
        return ReviewFormats::subclipCount(video.subclips.size());
    case DetailsRole:
        return ReviewFormats::details(video);
    case DescriptionRole:
        return ReviewFormats::description(video);
    case HasHdRole:
        return video.hdPath.has_value();
    case ThumbnailRole:
        return thumbnail(video);
    case IsSelectedRole:
        return m_highlights.selectedVideoId == video.id;
    case IsMarkedRole:
        return m_highlights.markedClipIds.contains(video.id);
    default:
        return {};
    }
}

QVariant ReviewListModel::subclipData(const Subclip &subclip, const VideoRecord &parent,
                                      int role) const {
    switch (role) {
    case RowIdRole:
        return SidebarRowId{parent.id, subclip.id}.identity();
    case IsSubclipRole:
        return true;
    case IsInlineRole:
        return showsInlineSubclips();
    case VideoIdRole:
        return parent.id;
    case SubclipIdRole:
        return subclip.id;
    case NameRole:
        return inOneLine(ReviewFormats::displayName(subclip));
    case TimeRole:
    case DetailsRole:
        return ReviewFormats::subclipRange(subclip);
    case DescriptionRole:
        return ReviewFormats::description(subclip);
    case RatingRole:
        return ReviewFormats::rating(subclip.rating);
    case FavoriteRole:
        return subclip.favorite;
    case SelectedForExportRole:
        return subclip.selectedForExport;
    case ReviewedRole:
    case RejectedRole:
    case HasHdRole:
        return false;
    case SubclipCountRole:
        return QString();
    case ThumbnailRole:
        return m_pendingThumbnails.contains(subclip.id)
                   ? QString()
                   : PathSafety::subclipThumbnailPath(subclip.id, m_projectFolder)
                         .value_or(QString());
    case FallbackThumbnailRole:
        return thumbnail(parent);
    case IsSelectedRole:
        return m_highlights.activeSubclipId == subclip.id;
    case IsMarkedRole:
        return m_highlights.markedSubclipIds.contains(subclip.id);
    default:
        return {};
    }
}

QString ReviewListModel::thumbnail(const VideoRecord &video) const {
    return PathSafety::resolveCachePath(video.thumbnailPath.value_or(QString()), m_projectFolder)
        .value_or(QString());
}

} // namespace corvane
