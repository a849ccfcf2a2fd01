#include "review/SubclipListModel.h"

#include "platform/TextFormat.h"
#include "review/ReviewFormats.h"
#include "review/ScrubberGeometry.h"
#include "trust/PathSafety.h"

namespace corvane {

void SubclipListModel::setClip(const ReviewIndex::IndexedClip *clip, const QString &projectFolder) {
    const QHash<Key, Subclip> before = m_subclips;
    std::vector<Key> keys;
    m_projectFolder = projectFolder;
    m_thumbnailPath = clip ? clip->video->thumbnailPath : std::nullopt;
    for (const auto &subclip : clip ? clip->subclips : std::vector<ReviewIndex::IndexedSubclip>()) {
        m_subclips.insert(subclip.key, clip->video->subclips.at(subclip.place));
        keys.push_back(subclip.key);
    }
    setKeys(keys);
    m_subclips.removeIf([&](const auto &entry) { return rowOf(entry.key()) < 0; });
    for (const Key key : keys) {
        const auto known = before.constFind(key);
        if (known != before.cend() && *known != m_subclips.value(key)) {
            notifyRow(key);
        }
    }
}

void SubclipListModel::setActiveSubclipId(const std::optional<QString> &id) {
    const auto before = std::exchange(m_activeSubclipId, id);
    if (before == id) {
        return;
    }
    for (const Key key : keys()) {
        const QString subclipId = m_subclips.value(key).id;
        if (subclipId == before || subclipId == id) {
            notifyRow(key, {IsActiveRole});
        }
    }
}

void SubclipListModel::setThumbnailPending(const QString &subclipId, bool isPending) {
    if (isPending) {
        m_pendingThumbnails.insert(subclipId);
    } else {
        m_pendingThumbnails.remove(subclipId);
    }
    for (const Key key : keys()) {
        if (m_subclips.value(key).id == subclipId) {
            notifyRow(key, {ThumbnailRole});
        }
    }
}

QRectF SubclipListModel::bar(double inSeconds, double outSeconds, double duration, double width) {
    return ScrubberGeometry::bar(inSeconds, outSeconds, duration, width).value_or(QRectF());
}

QVariant SubclipListModel::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)) {
        return {};
    }
    const Subclip subclip = m_subclips.value(keyAt(index.row()));
    switch (role) {
    case SubclipIdRole:
        return subclip.id;
    case InSecondsRole:
        return subclip.inSeconds;
    case OutSecondsRole:
        return subclip.outSeconds;
    case NameRole:
    case Qt::DisplayRole:
        return inOneLine(ReviewFormats::displayName(subclip));
    case LabelRole:
        return subclip.label.value_or(QString());
    case RangeRole:
        return ReviewFormats::subclipRange(subclip);
    case LengthRole:
        return ReviewFormats::subclipLength(subclip);
    case RatingRole:
        return subclip.rating;
    case FavoriteRole:
        return subclip.favorite;
    case SelectedForExportRole:
        return subclip.selectedForExport;
    case ThumbnailRole:
        return m_pendingThumbnails.contains(subclip.id)
                   ? QString()
                   : PathSafety::subclipThumbnailPath(subclip.id, m_projectFolder)
                         .value_or(QString());
    case FallbackThumbnailRole:
        return PathSafety::resolveCachePath(m_thumbnailPath.value_or(QString()), m_projectFolder)
            .value_or(QString());
    case IsActiveRole:
        return subclip.id == m_activeSubclipId;
    default:
        return {};
    }
}

QHash<int, QByteArray> SubclipListModel::roleNames() const {
    return {{SubclipIdRole, "subclipId"},   {InSecondsRole, "inSeconds"},
            {OutSecondsRole, "outSeconds"}, {NameRole, "name"},
            {LabelRole, "label"},           {RangeRole, "range"},
            {LengthRole, "length"},         {RatingRole, "rating"},
            {FavoriteRole, "favorite"},     {SelectedForExportRole, "selectedForExport"},
            {ThumbnailRole, "thumbnail"},   {FallbackThumbnailRole, "fallbackThumbnail"},
            {IsActiveRole, "isActive"}};
}

} // namespace corvane
