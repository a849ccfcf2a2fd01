#include "review/ReviewListModel.h"

#include "review/ReviewListing.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace corvane {

namespace {

/// More changed clips than this, and making the list anew is as quick.
constexpr size_t kMostSplices = 8;

bool showsTheSame(VideoRecord left, VideoRecord right) {
    const bool hasSameCount = left.subclips.size() == right.subclips.size();
    left.subclips.clear();
    right.subclips.clear();
    return hasSameCount && left == right;
}

} // namespace

void ReviewListModel::setProject(const Project *project) {
    m_projectFolder = project ? projectFolder(project->filePath) : QString();
    const ReviewIndex::Change change =
        m_index.update(project ? project->videos : QList<VideoItem>());
    m_order.update(m_index, change);
    if (change.clipsMoved || change.changed.size() > kMostSplices) {
        relist();
        notifyRows({}); // a view asks again for what it shows alone
        return;
    }
    if (!change.changed.empty()) {
        relist(change.changed);
    }
    for (const ReviewIndex::ChangedClip &changed : change.changed) {
        notify(changed);
    }
}

void ReviewListModel::setState(const ReviewState &state) {
    if (m_state != state) {
        const bool wasInOrderOfSort = isInOrderOfSort();
        m_state = state;
        relist();
        if (wasInOrderOfSort != isInOrderOfSort()) {
            notifyRows({IsInlineRole}); // of the subclips that are listed as before
        }
    }
}

void ReviewListModel::relist() {
    ReviewListing::Rows rows = ReviewListing(m_state, m_index).rows(listOrder());
    m_visibleCount = rows.visibleCount;
    setKeys(std::move(rows.keys));
}

/// The rows of the clips that changed are taken out and put in again where they belong now.
void ReviewListModel::relist(const std::vector<ReviewIndex::ChangedClip> &changed) {
    const std::vector<int> &ranks = listRanks();
    const ReviewListing listing(m_state, m_index);
    std::vector<std::pair<int, std::vector<Key>>> blocks;
    for (const ReviewIndex::ChangedClip &clip : changed) {
        std::vector<Key> block;
        listing.appendRows(block, clip.position);
        // Where several changed, a neighbour may be on its way itself and can't be gone by.
        if (changed.size() > 1 || !standsInPlace(block, clip.position, ranks)) {
            blocks.emplace_back(clip.position, std::move(block));
        }
    }
    if (blocks.empty()) {
        return;
    }
    std::vector<Key> rows = keys();
    std::erase_if(rows, [&](Key key) {
        const ReviewIndex::Place place = m_index.place(key);
        const bool goes = !place.exists() || std::ranges::any_of(blocks, [&](const auto &block) {
            return block.first == place.clip;
        });
        m_visibleCount -= goes && place.exists() && !place.isSubclip();
        return goes;
    });
    for (const auto &[position, block] : blocks) {
        const auto rankOf = [&](Key key) { return ranks[size_t(m_index.place(key).clip)]; };
        const auto behind = std::ranges::lower_bound(rows, ranks[size_t(position)], {}, rankOf);
        rows.insert(behind, block.begin(), block.end());
        m_visibleCount += !block.empty();
    }
    if (!isInOrderOfSort()) {
        m_visibleCount = qsizetype(rows.size());
    }
    setKeys(std::move(rows));
}

/// True if the clip's rows are these already, between the neighbours that they belong between.
bool ReviewListModel::standsInPlace(const std::vector<Key> &block, int position,
                                    const std::vector<int> &ranks) const {
    const qsizetype first = block.empty() ? -1 : rowOf(block.front());
    if (first < 0) {
        return false;
    }
    const auto rows = std::span(keys()).subspan(size_t(first));
    const int own = ranks[size_t(position)];
    const auto rankOf = [&](Key key) { // of a subclip that has gone, the clip's own
        const ReviewIndex::Place place = m_index.place(key);
        return place.exists() ? ranks[size_t(place.clip)] : own;
    };
    return rows.size() >= block.size() && std::ranges::equal(rows.first(block.size()), block) &&
           (first == 0 || rankOf(keyAt(first - 1)) < own) &&
           (rows.size() == block.size() || own < rankOf(rows[block.size()]));
}

const std::vector<int> &ReviewListModel::listOrder() {
    return isInOrderOfSort() ? m_order.order(m_state.sort, m_index) : projectOrder();
}

const std::vector<int> &ReviewListModel::listRanks() {
    return isInOrderOfSort() ? m_order.ranks(m_state.sort, m_index) : projectOrder();
}

const std::vector<int> &ReviewListModel::projectOrder() {
    if (m_projectOrder.size() != m_index.clips().size()) {
        m_projectOrder.resize(m_index.clips().size());
        std::iota(m_projectOrder.begin(), m_projectOrder.end(), 0);
    }
    return m_projectOrder;
}

void ReviewListModel::notify(const ReviewIndex::ChangedClip &changed) {
    const ReviewIndex::IndexedClip &clip = m_index.clip(changed.position);
    if (!showsTheSame(*changed.before, *clip.video)) {
        notifyRow(clip.key);
    }
    const bool allChanged = changed.before->thumbnailPath != clip.video->thumbnailPath;
    for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
        if (allChanged ||
            !changed.before->subclips.contains(clip.video->subclips.at(subclip.place))) {
            notifyRow(subclip.key);
        }
    }
}

void ReviewListModel::setHighlights(ReviewHighlights highlights) {
    if (m_highlights == highlights) {
        return;
    }
    const ReviewHighlights before = std::exchange(m_highlights, std::move(highlights));
    if (before.markedClipIds != m_highlights.markedClipIds ||
        before.markedSubclipIds != m_highlights.markedSubclipIds) {
        notifyRows({IsMarkedRole});
    }
    for (const auto &videoId : {before.selectedVideoId, m_highlights.selectedVideoId}) {
        const auto key = keyOfVideo(videoId);
        if (!key || (before.selectedVideoId == m_highlights.selectedVideoId &&
                     before.activeSubclipId == m_highlights.activeSubclipId)) {
            continue;
        }
        notifyRow(*key, {IsSelectedRole});
        for (const auto &subclip : m_index.clip(m_index.place(*key).clip).subclips) {
            notifyRow(subclip.key, {IsSelectedRole});
        }
    }
}

void ReviewListModel::setThumbnailPending(const SubclipKey &key, bool isPending) {
    if (isPending) {
        m_pendingThumbnails.insert(key.subclipId);
    } else {
        m_pendingThumbnails.remove(key.subclipId);
    }
    const qsizetype position = m_index.positionOf(key.videoId);
    if (position < 0) {
        return;
    }
    const ReviewIndex::IndexedClip &clip = m_index.clip(position);
    for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
        if (clip.video->subclips.at(subclip.place).id == key.subclipId) {
            notifyRow(subclip.key, {ThumbnailRole});
        }
    }
}

std::optional<ReviewListModel::Key>
ReviewListModel::keyOfVideo(const std::optional<QString> &id) const {
    const qsizetype position = id ? m_index.positionOf(*id) : -1;
    return position < 0 ? std::nullopt : std::optional(m_index.clip(position).key);
}

qsizetype ReviewListModel::totalCount() const {
    if (m_state.subclipsView) {
        return m_index.subclipCount();
    }
    return qsizetype(m_index.clips().size()) + (m_state.selectedOnly ? m_index.subclipCount() : 0);
}

SidebarRowId ReviewListModel::rowId(qsizetype row) const {
    const ReviewIndex::Place place = m_index.place(keyAt(row));
    const QString videoId = m_index.clip(place.clip).video->id;
    return {videoId, place.isSubclip() ? std::optional(m_index.subclip(place).id) : std::nullopt};
}

QList<SidebarRowId> ReviewListModel::orderedRowIds() const {
    QList<SidebarRowId> ids;
    ids.reserve(rowCount());
    for (int row = 0; row < rowCount(); ++row) {
        ids.append(rowId(row));
    }
    return ids;
}

int ReviewListModel::clipRowFrom(int row) const {
    for (int next = std::max(row, 0); next < rowCount(); ++next) {
        if (!m_index.place(keyAt(next)).isSubclip()) {
            return next;
        }
    }
    return row;
}

ReviewTargets ReviewListModel::bulkTargets() const {
    ReviewTargets targets;
    for (int row = 0; row < rowCount(); ++row) {
        const SidebarRowId id = rowId(row);
        if (!id.isSubclip()) {
            targets.clips.append(id.videoId);
        } else if (!isInOrderOfSort()) {
            targets.subclips.append({id.videoId, *id.subclipId});
        }
    }
    return targets;
}

const VideoRecord *ReviewListModel::video(const std::optional<QString> &id) const {
    const qsizetype position = id ? m_index.positionOf(*id) : -1;
    return position < 0 ? nullptr : &*m_index.clip(position).video;
}

QList<SubclipKey> ReviewListModel::subclipKeys(const QSet<QString> &subclipIds) const {
    QList<SubclipKey> keys;
    for (const ReviewIndex::IndexedClip &clip : m_index.clips()) {
        for (const Subclip &subclip : clip.video->subclips) {
            if (subclipIds.contains(subclip.id)) {
                keys.append({clip.video->id, subclip.id});
            }
        }
        if (keys.size() == subclipIds.size()) {
            break;
        }
    }
    return keys;
}

} // namespace corvane
