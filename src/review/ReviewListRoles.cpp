// The roles of the side pane's list.

#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"
#include "review/ReviewListModel.h"
#include "trust/PathSafety.h"

namespace corvane {

namespace {

/// A clip, or a subclip and its clip.
struct ListedRow {
    const VideoRecord &video;
    const Subclip *subclip; ///< nullptr for a clip
};

/// A role's value for a key: that of `value` for the key's row, or invalid if the row was removed
/// from the project, but not yet from the list.
template <class Value> auto ofRow(const ReviewListModel *model, const Value &value) {
    return [model, value](const ReviewListModel::Key &key) -> QVariant {
        const ReviewIndex &index = model->reviewIndex();
        const ReviewIndex::Entry entry = index.entry(key);
        if (!entry.exists()) {
            return {};
        }
        return value(ListedRow{*index.clip(entry.clip).video,
                               entry.isSubclip() ? &index.subclip(entry) : nullptr});
    };
}

/// A role with the value of a field that clips and subclips have.
template <class Value>
auto ofEither(const ReviewListModel *model, Value VideoRecord::*ofClip, Value Subclip::*ofSubclip) {
    return ofRow(model, [=](const ListedRow &row) {
        return row.subclip ? row.subclip->*ofSubclip : row.video.*ofClip;
    });
}

/// A role with the value of a field of a clip; false for a subclip.
auto ofClip(const ReviewListModel *model, bool VideoRecord::*field) {
    return ofRow(model, [=](const ListedRow &row) { return !row.subclip && row.video.*field; });
}

QString nameOfRow(const ListedRow &row) {
    return inOneLine(row.subclip ? ReviewFormats::displayName(*row.subclip) : row.video.fileName);
}

QString timeOfRow(const ListedRow &row) {
    return row.subclip ? ReviewFormats::subclipRange(*row.subclip)
                       : formattedDuration(row.video.durationSeconds);
}

QString detailsOfRow(const ListedRow &row) {
    return row.subclip ? timeOfRow(row) : ReviewFormats::details(row.video);
}

QString descriptionOfRow(const ListedRow &row) {
    return row.subclip ? ReviewFormats::description(*row.subclip)
                       : ReviewFormats::description(row.video);
}

QString ratingOfRow(const ListedRow &row) {
    return ReviewFormats::rating(row.subclip ? row.subclip->rating : row.video.rating);
}

QString subclipCountOfRow(const ListedRow &row) {
    return row.subclip ? QString() : ReviewFormats::subclipCount(row.video.subclips.size());
}

QString idOfRow(const ListedRow &row) {
    return SidebarRowId{row.video.id, row.subclip ? std::optional(row.subclip->id) : std::nullopt}
        .identity();
}

bool hasHd(const ListedRow &row) {
    return !row.subclip && row.video.hdPath;
}

} // namespace

ReviewListModel::ReviewListModel(QObject *parent)
    : KeyListModel(
          {{RowIdRole, "rowId", ofRow(this, idOfRow)},
           {IsSubclipRole, "isSubclip",
            ofRow(this, [](const ListedRow &row) { return row.subclip != nullptr; })},
           {IsInlineRole, "isInline",
            ofRow(this,
                  [this](const ListedRow &row) { return row.subclip && showsInlineSubclips(); })},
           {NameRole, "name", ofRow(this, nameOfRow)},
           {TimeRole, "time", ofRow(this, timeOfRow)},
           {RatingRole, "rating", ofRow(this, ratingOfRow)},
           {FavoriteRole, "favorite", ofEither(this, &VideoRecord::favorite, &Subclip::favorite)},
           {SelectedForExportRole, "selectedForExport",
            ofEither(this, &VideoRecord::selectedForExport, &Subclip::selectedForExport)},
           {ReviewedRole, "reviewed", ofClip(this, &VideoRecord::reviewed)},
           {RejectedRole, "rejected", ofClip(this, &VideoRecord::rejected)},
           {SubclipCountRole, "subclipCount", ofRow(this, subclipCountOfRow)},
           {DetailsRole, "details", ofRow(this, detailsOfRow)},
           {DescriptionRole, "description", ofRow(this, descriptionOfRow)},
           {HasHdRole, "hasHd", ofRow(this, hasHd)},
           {IsAudioOnlyRole, "isAudioOnly",
            ofRow(this, [](const ListedRow &row) { return row.video.isAudioOnly(); })},
           {ThumbnailRole, "thumbnail",
            ofRow(this,
                  [this](const ListedRow &row) {
                      return row.subclip ? subclipThumbnail(*row.subclip)
                                         : clipThumbnail(row.video);
                  })},
           {FallbackThumbnailRole, "fallbackThumbnail",
            ofRow(this,
                  [this](const ListedRow &row) {
                      return row.subclip ? clipThumbnail(row.video) : QString();
                  })},
           {ThumbnailRootRole, "thumbnailRoot",
            ofRow(this, [this](const ListedRow &) { return m_projectFolder; })},
           {IsSelectedRole, "isSelected",
            ofRow(this,
                  [this](const ListedRow &row) {
                      return row.subclip ? m_highlights.activeSubclipId == row.subclip->id
                                         : m_highlights.selectedVideoId == row.video.id;
                  })},
           {IsMarkedRole, "isMarked",
            ofRow(this,
                  [this](const ListedRow &row) {
                      return row.subclip ? m_highlights.markedSubclipIds.contains(row.subclip->id)
                                         : m_highlights.markedClipIds.contains(row.video.id);
                  })}},
          parent) {}

QString ReviewListModel::clipThumbnail(const VideoRecord &video) const {
    return PathSafety::cachePath(video.thumbnailPath.value_or(QString()), m_projectFolder)
        .value_or(QString());
}

QString ReviewListModel::subclipThumbnail(const Subclip &subclip) const {
    return m_pendingThumbnails.contains(subclip.id)
               ? QString()
               : PathSafety::cachePath(PathSafety::subclipThumbnailName(subclip.id),
                                       m_projectFolder)
                     .value_or(QString());
}

} // namespace corvane
