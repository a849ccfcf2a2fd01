#include "review/SubclipListModel.h"

#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"
#include "review/ScrubberGeometry.h"
#include "trust/PathSafety.h"

namespace corvane {

namespace {

QString nameOf(const SubclipRow &row) {
    return inOneLine(ReviewFormats::displayName(row.subclip));
}

/// A role with the value of a field of the subclip.
template <class Value> auto field(Value Subclip::*member) {
    return [member](const SubclipRow &row) { return QVariant(row.subclip.*member); };
}

} // namespace

SubclipListModel::SubclipListModel(QObject *parent)
    : ListModel({{SubclipIdRole, "subclipId", &SubclipRow::id},
                 {InSecondsRole, "inSeconds", field(&Subclip::inSeconds)},
                 {OutSecondsRole, "outSeconds", field(&Subclip::outSeconds)},
                 {NameRole, "name", nameOf},
                 {LabelRole, "label",
                  [](const SubclipRow &row) { return row.subclip.label.value_or(QString()); }},
                 {RangeRole, "range",
                  [](const SubclipRow &row) { return ReviewFormats::subclipRange(row.subclip); }},
                 {LengthRole, "length",
                  [](const SubclipRow &row) { return ReviewFormats::subclipLength(row.subclip); }},
                 {RatingRole, "rating", field(&Subclip::rating)},
                 {FavoriteRole, "favorite", field(&Subclip::favorite)},
                 {SelectedForExportRole, "selectedForExport", field(&Subclip::selectedForExport)},
                 {ThumbnailRole, "thumbnail",
                  [this](const SubclipRow &row) {
                      return row.isThumbnailPending
                                 ? QString()
                                 : PathSafety::cachePath(PathSafety::subclipThumbnailName(row.id),
                                                         m_projectFolder)
                                       .value_or(QString());
                  }},
                 {FallbackThumbnailRole, "fallbackThumbnail",
                  [this](const SubclipRow &row) {
                      return PathSafety::cachePath(row.clipThumbnailPath.value_or(QString()),
                                                   m_projectFolder)
                          .value_or(QString());
                  }},
                 {IsAudioOnlyRole, "isAudioOnly", &SubclipRow::isAudioOnly},
                 {ThumbnailRootRole, "thumbnailRoot",
                  [this](const SubclipRow &) { return m_projectFolder; }},
                 {IsActiveRole, "isActive", &SubclipRow::isActive}},
                parent) {}

void SubclipListModel::setClip(const ReviewIndex::IndexedClip *clip, const QString &projectFolder) {
    m_projectFolder = projectFolder;
    QList<SubclipRow> subclips;
    for (const auto &indexed : clip ? clip->subclips : std::vector<ReviewIndex::IndexedSubclip>()) {
        const Subclip &subclip = clip->video->subclips.at(indexed.index);
        subclips.append({.id = subclip.id,
                         .subclip = subclip,
                         .clipThumbnailPath = clip->video->thumbnailPath,
                         .isAudioOnly = clip->video->isAudioOnly(),
                         .isActive = subclip.id == m_activeSubclipId,
                         .isThumbnailPending = m_pendingThumbnails.contains(subclip.id)});
    }
    setRows(std::move(subclips));
}

void SubclipListModel::setActiveSubclipId(const std::optional<QString> &id) {
    m_activeSubclipId = id;
    updateFlags();
}

void SubclipListModel::setThumbnailPending(const QString &subclipId, bool isPending) {
    if (isPending) {
        m_pendingThumbnails.insert(subclipId);
    } else {
        m_pendingThumbnails.remove(subclipId);
    }
    updateFlags();
}

void SubclipListModel::updateFlags() {
    for (int index = 0; index < count(); ++index) {
        SubclipRow row = rows().at(index);
        row.isActive = row.id == m_activeSubclipId;
        row.isThumbnailPending = m_pendingThumbnails.contains(row.id);
        setRow(index, std::move(row));
    }
}

QRectF SubclipListModel::bar(double inSeconds, double outSeconds, double duration, double width) {
    return ScrubberGeometry::bar(inSeconds, outSeconds, duration, width).value_or(QRectF());
}

} // namespace corvane
