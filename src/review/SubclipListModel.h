#pragma once

#include "lists/ListModel.h"
#include "review/list/ReviewIndex.h"

#include <QRectF>
#include <QSet>

namespace corvane {

struct SubclipRow {
    QString id;
    Subclip subclip;
    std::optional<QString> clipThumbnailPath; ///< as stored in the project
    bool isAudioOnly = false;                 ///< the clip
    bool isActive = false;
    bool isThumbnailPending = false;

    bool operator==(const SubclipRow &) const = default;
};

/// The subclips of the clip in the player, by `creationIndex`: for the list in the drawer and the
/// bars below the scrubber. Main thread only.
class SubclipListModel : public ListModel<SubclipRow> {
    Q_OBJECT

  public:
    enum Role {
        SubclipIdRole = Qt::UserRole,
        InSecondsRole,
        OutSecondsRole,
        NameRole,
        LabelRole, ///< initial text for editing the name; may be empty
        RangeRole,
        LengthRole,
        RatingRole, ///< 0 to 5
        FavoriteRole,
        SelectedForExportRole,
        ThumbnailRole,         ///< a path, or empty
        FallbackThumbnailRole, ///< the thumbnail of the clip
        IsAudioOnlyRole,
        ThumbnailRootRole, ///< folder below which a thumbnail may not be reached by a link
        IsActiveRole,
    };

    explicit SubclipListModel(QObject *parent = nullptr);

    /// Shows the current state of the clip; nullptr for an empty list.
    void setClip(const ReviewIndex::IndexedClip *clip, const QString &projectFolder);
    void setActiveSubclipId(const std::optional<QString> &id);
    /// Hides the thumbnail of a subclip while it is created, so that the clip's shows instead.
    void setThumbnailPending(const QString &subclipId, bool isPending);

    /// Geometry of a range's bar among bars of that width, see `ScrubberGeometry::bar`. Empty if
    /// the duration is unknown.
    Q_INVOKABLE static QRectF bar(double inSeconds, double outSeconds, double duration,
                                  double width);

  private:
    void updateFlags();

    QString m_projectFolder;
    std::optional<QString> m_activeSubclipId;
    QSet<QString> m_pendingThumbnails; ///< ids of subclips
};

} // namespace corvane
