#pragma once

#include "review/KeyedListModel.h"
#include "review/ReviewIndex.h"

#include <QRectF>
#include <QSet>

namespace corvane {

/// The subclips of the clip in the player, for the drawer's list and for the bars under the
/// scrubber: by `creationIndex`, a row for each, which keeps its identity. Main thread.
class SubclipListModel : public KeyedListModel {
    Q_OBJECT

  public:
    enum Role {
        SubclipIdRole = Qt::UserRole,
        InSecondsRole,
        OutSecondsRole,
        NameRole,
        LabelRole, ///< what editing the name begins with; may be empty
        RangeRole,
        LengthRole,
        RatingRole, ///< a number from 0 to 5
        FavoriteRole,
        SelectedForExportRole,
        ThumbnailRole,         ///< a path, or empty
        FallbackThumbnailRole, ///< the clip's
        IsActiveRole,
    };

    using KeyedListModel::KeyedListModel;

    /// Takes over the clip as it is now; null for none. The folder is the project's.
    void setClip(const ReviewIndex::IndexedClip *clip, const QString &projectFolder);
    void setActiveSubclipId(const std::optional<QString> &id);
    /// While a subclip's own picture is being made its row names none, so that the clip's shows;
    /// the row is told of its own when that is done.
    void setThumbnailPending(const QString &subclipId, bool isPending);

    /// The bar of a range in a row of bars of that width, or an empty rectangle.
    Q_INVOKABLE static QRectF bar(double inSeconds, double outSeconds, double duration,
                                  double width);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

  private:
    QString m_projectFolder;
    std::optional<QString> m_thumbnailPath; ///< of the clip, as stored
    QHash<Key, Subclip> m_subclips;
    std::optional<QString> m_activeSubclipId;
    QSet<QString> m_pendingThumbnails; ///< ids of subclips
};

} // namespace corvane
