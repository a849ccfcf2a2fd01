#pragma once

#include "review/ClipOrder.h"
#include "review/KeyedListModel.h"
#include "review/MixedSidebarRow.h"
#include "session/ProjectStore.h"

#include <QSet>

namespace corvane {

/// What is highlighted in the list.
struct ReviewHighlights {
    std::optional<QString> selectedVideoId; ///< the clip in the player
    std::optional<QString> activeSubclipId;
    QSet<QString> markedClipIds;
    QSet<QString> markedSubclipIds;

    bool operator==(const ReviewHighlights &) const = default;
};

/// What a bulk action works on.
struct ReviewTargets {
    QStringList clips;
    QList<SubclipKey> subclips;
};

/// The rows of the side pane: the list that the filter asks for, inline subclips included. A row
/// keeps its identity while its clip or subclip is listed, and an edit of one clip tells of the
/// rows that show something else. Main thread.
class ReviewListModel : public KeyedListModel {
    Q_OBJECT

  public:
    enum Role {
        RowIdRole = Qt::UserRole, ///< "clip-" or "sub-" and the id
        IsSubclipRole,
        IsInlineRole, ///< a subclip below its clip
        VideoIdRole,
        SubclipIdRole, ///< empty for a clip
        NameRole,
        TimeRole,   ///< a clip's duration, a subclip's range
        RatingRole, ///< text; empty for what isn't rated
        FavoriteRole,
        SelectedForExportRole,
        ReviewedRole,
        RejectedRole,
        SubclipCountRole, ///< text; empty for a clip without, and for a subclip
        DetailsRole,      ///< the time, and the subclips' count where there is one
        DescriptionRole,  ///< all that the row's marks show, in words
        HasHdRole,
        ThumbnailRole,         ///< a path, or empty
        FallbackThumbnailRole, ///< a subclip's clip's; empty for a clip
        IsSelectedRole,        ///< the clip in the player, or the active subclip
        IsMarkedRole,          ///< in the multi-selection
    };

    using KeyedListModel::KeyedListModel;

    /// Takes the document over as it is now; null where none is open.
    void setProject(const Project *project);
    void setState(const ReviewState &state);
    void setHighlights(ReviewHighlights highlights);
    /// While a subclip's own picture is being made its row names none, so that the clip's shows;
    /// the row is told of its own when that is done.
    void setThumbnailPending(const SubclipKey &key, bool isPending);

    /// How many rows are shown, inline subclips not counted, and how many there would be if nothing
    /// were filtered.
    qsizetype visibleCount() const { return m_visibleCount; }
    qsizetype totalCount() const;

    const ReviewIndex &clips() const { return m_index; }
    /// Which row one is. The row must exist.
    SidebarRowId rowId(qsizetype row) const;
    /// All of them, in the order of display.
    QList<SidebarRowId> orderedRowIds() const;
    /// The first row from this one on that is a clip's; the row itself where none is.
    Q_INVOKABLE int clipRowFrom(int row) const;
    /// The rows that are shown, inline subclips left out.
    ReviewTargets bulkTargets() const;
    /// The clip as it is now, or null.
    const VideoRecord *video(const std::optional<QString> &id) const;
    /// Any of them, wherever their clips stand; ids that are gone are left out.
    QList<SubclipKey> subclipKeys(const QSet<QString> &subclipIds) const;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    bool isInOrderOfSort() const { return !m_state.subclipsView && !m_state.selectedOnly; }
    void relist();
    void relist(const std::vector<ReviewIndex::ChangedClip> &changed);
    bool standsInPlace(const std::vector<Key> &block, int position,
                       const std::vector<int> &ranks) const;
    /// The clips as the list that is shown has them, and where each stands in that.
    const std::vector<int> &listOrder();
    const std::vector<int> &listRanks();
    const std::vector<int> &projectOrder();
    void notify(const ReviewIndex::ChangedClip &changed);
    std::optional<Key> keyOfVideo(const std::optional<QString> &id) const;
    QVariant clipData(const VideoRecord &video, int role) const;
    QVariant subclipData(const Subclip &subclip, const VideoRecord &parent, int role) const;
    QString thumbnail(const VideoRecord &video) const;

    ReviewState m_state;
    ReviewIndex m_index;
    ClipOrder m_order;
    std::vector<int> m_projectOrder; ///< each clip's position at that position
    QString m_projectFolder;
    ReviewHighlights m_highlights;
    QSet<QString> m_pendingThumbnails; ///< ids of subclips
    qsizetype m_visibleCount = 0;
};

} // namespace corvane
