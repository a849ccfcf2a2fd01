#pragma once

#include "lists/ListModel.h"
#include "review/list/ClipOrder.h"
#include "review/list/MixedSidebarRow.h"
#include "session/ProjectStore.h"

#include <QSet>

namespace corvane {

/// The highlighted rows of the list.
struct ReviewHighlights {
    std::optional<QString> selectedVideoId; ///< the clip in the player
    std::optional<QString> activeSubclipId;
    QSet<QString> markedClipIds;
    QSet<QString> markedSubclipIds;

    bool operator==(const ReviewHighlights &) const = default;
};

/// The clips and subclips that a bulk action edits.
struct ReviewTargets {
    QStringList clips;
    QList<SubclipKey> subclips;
};

/// The rows of the side pane: the list that the filter selects, including inline subclips. An edit
/// of one clip reports only the rows that changed. Main thread only.
class ReviewListModel : public KeyListModel {
    Q_OBJECT

  public:
    enum Role {
        RowIdRole = Qt::UserRole, ///< `SidebarRowId::identity`
        IsSubclipRole,
        IsInlineRole, ///< a subclip shown below its clip
        NameRole,
        TimeRole,   ///< the duration of a clip, the range of a subclip
        RatingRole, ///< text; empty if unrated
        FavoriteRole,
        SelectedForExportRole,
        ReviewedRole,
        RejectedRole,
        SubclipCountRole, ///< text; empty for zero and for a subclip
        DetailsRole,      ///< the time, and the number of subclips if there are any
        DescriptionRole,  ///< everything the row shows, in words
        HasHdRole,
        IsAudioOnlyRole,       ///< of the clip, or of a subclip's clip
        ThumbnailRole,         ///< a path, or empty
        FallbackThumbnailRole, ///< the thumbnail of a subclip's clip; empty for a clip
        ThumbnailRootRole,     ///< folder below which a thumbnail may not be reached by a link
        IsSelectedRole,        ///< the clip in the player, or the active subclip
        IsMarkedRole,          ///< part of the multi-selection
    };

    explicit ReviewListModel(QObject *parent = nullptr);

    /// Shows the current state of the project, or an empty list for nullptr.
    void setProject(const Project *project);
    void setState(const ReviewState &state);
    void setHighlights(ReviewHighlights highlights);
    /// Hides the thumbnail of a subclip while it is created, so that the clip's shows instead.
    void setThumbnailPending(const SubclipKey &key, bool isPending);

    /// Number of rows, not counting inline subclips.
    qsizetype visibleCount() const { return m_visibleCount; }
    /// The same without any filter.
    qsizetype totalCount() const;

    const ReviewIndex &reviewIndex() const { return m_index; }
    /// The row must exist.
    SidebarRowId rowId(qsizetype row) const;
    QList<SidebarRowId> orderedRowIds() const;
    /// The first row of a clip from `row` on; `row` if there is none.
    Q_INVOKABLE int clipRowFrom(int row) const;
    /// All rows except inline subclips.
    ReviewTargets bulkTargets() const;
    /// The clip with that id, listed or not, or nullptr. Valid until the next `setProject`.
    const VideoRecord *video(const std::optional<QString> &id) const;
    /// The same for a subclip.
    const Subclip *subclip(const SubclipKey &key) const;
    /// Finds subclips by id in all clips. Unknown ids are ignored.
    QList<SubclipKey> subclipKeys(const QSet<QString> &subclipIds) const;

  private:
    bool showsInlineSubclips() const {
        return m_state.shownList() == ReviewState::ShownList::visibleVideos;
    }
    void relist();
    void relist(const std::vector<ReviewIndex::ChangedClip> &changed);
    bool isInPlace(const QList<Key> &block, int clip, const std::vector<int> &ranks) const;
    void notify(const ReviewIndex::ChangedClip &changed);
    QString clipThumbnail(const VideoRecord &video) const;
    QString subclipThumbnail(const Subclip &subclip) const;

    ReviewState m_state;
    ReviewIndex m_index;
    ClipOrder m_order;
    QString m_projectFolder;
    ReviewHighlights m_highlights;
    QSet<QString> m_pendingThumbnails; ///< ids of subclips
    qsizetype m_visibleCount = 0;
};

} // namespace corvane
