#include "review/ReviewListModel.h"

#include "review/list/ReviewListing.h"

#include <algorithm>
#include <span>

namespace corvane {

namespace {

/// Above this number of changed clips, listing all clips is as fast as splicing each.
constexpr size_t kMaxSplices = 8;

/// True if the clips' own rows look the same. Their subclips only count.
bool hasSameRow(VideoRecord left, VideoRecord right) {
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
    if (change.clipsMoved || change.changed.size() > kMaxSplices) {
        relist();
        notifyRows(); // views read only the rows on screen
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
        const bool didShowInline = showsInlineSubclips();
        m_state = state;
        relist();
        if (didShowInline != showsInlineSubclips()) {
            notifyRows({IsInlineRole}); // for subclips that are in both lists
        }
    }
}

void ReviewListModel::relist() {
    ReviewListing::Rows rows =
        ReviewListing(m_state, m_index).rows(m_order.order(m_state, m_index));
    m_visibleCount = rows.visibleCount;
    setRows(std::move(rows.keys));
}

/// Removes the rows of the changed clips and inserts them where they belong now.
void ReviewListModel::relist(const std::vector<ReviewIndex::ChangedClip> &changed) {
    const std::vector<int> &ranks = m_order.ranks(m_state, m_index);
    const ReviewListing listing(m_state, m_index);
    std::vector<std::pair<int, QList<Key>>> blocks;
    for (const ReviewIndex::ChangedClip &clip : changed) {
        QList<Key> block;
        listing.appendRows(block, clip.index);
        // With several changed clips an adjacent row may be moving too, so it can't be compared to.
        if (changed.size() > 1 || !isInPlace(block, clip.index, ranks)) {
            blocks.emplace_back(clip.index, std::move(block));
        }
    }
    if (blocks.empty()) {
        return;
    }
    QList<Key> keys = rows();
    keys.removeIf([&](Key key) {
        const ReviewIndex::Entry entry = m_index.entry(key);
        const bool isRemoved =
            !entry.exists() || std::ranges::any_of(blocks, [&](const auto &block) {
                return block.first == entry.clip;
            });
        m_visibleCount -= isRemoved && entry.exists() && !entry.isSubclip();
        return isRemoved;
    });
    for (const auto &[clip, block] : blocks) {
        const auto rankOf = [&](Key key) { return ranks[size_t(m_index.entry(key).clip)]; };
        const auto behind = std::ranges::lower_bound(keys, ranks[size_t(clip)], {}, rankOf);
        const qsizetype row = behind - keys.begin();
        keys.insert(row, block.size(), {});
        std::ranges::copy(block, keys.begin() + row);
        m_visibleCount += !block.empty();
    }
    if (!showsInlineSubclips()) {
        m_visibleCount = keys.size();
    }
    setRows(std::move(keys));
}

/// True if the rows of the clip are `block` already and are between rows of lower and higher rank.
bool ReviewListModel::isInPlace(const QList<Key> &block, int clip,
                                const std::vector<int> &ranks) const {
    const int first = block.empty() ? -1 : rowOf(block.front());
    if (first < 0) {
        return false;
    }
    const auto shown = std::span(rows()).subspan(size_t(first));
    const int ownRank = ranks[size_t(clip)];
    const auto rankOf = [&](Key key) { // a removed subclip was one of this clip
        const ReviewIndex::Entry entry = m_index.entry(key);
        return entry.exists() ? ranks[size_t(entry.clip)] : ownRank;
    };
    const auto size = size_t(block.size());
    return shown.size() >= size && std::ranges::equal(shown.first(size), block) &&
           (first == 0 || rankOf(row(first - 1)) < ownRank) &&
           (shown.size() == size || ownRank < rankOf(shown[size]));
}

void ReviewListModel::notify(const ReviewIndex::ChangedClip &changed) {
    const ReviewIndex::IndexedClip &clip = m_index.clip(changed.index);
    if (!hasSameRow(*changed.before, *clip.video)) {
        notifyRow(clip.key);
    }
    const bool hasOtherThumbnail = changed.before->thumbnailPath != clip.video->thumbnailPath ||
                                   changed.before->isAudioOnly() != clip.video->isAudioOnly();
    for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
        if (hasOtherThumbnail ||
            !changed.before->subclips.contains(clip.video->subclips.at(subclip.index))) {
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
    if (before.selectedVideoId == m_highlights.selectedVideoId &&
        before.activeSubclipId == m_highlights.activeSubclipId) {
        return;
    }
    for (const auto &videoId : {before.selectedVideoId, m_highlights.selectedVideoId}) {
        const qsizetype index = videoId ? m_index.indexOfClip(*videoId) : -1;
        if (index < 0) {
            continue;
        }
        const ReviewIndex::IndexedClip &clip = m_index.clip(index);
        notifyRow(clip.key, {IsSelectedRole});
        for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
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
    const qsizetype index = m_index.indexOfClip(key.videoId);
    if (index < 0) {
        return;
    }
    const ReviewIndex::IndexedClip &clip = m_index.clip(index);
    for (const ReviewIndex::IndexedSubclip &subclip : clip.subclips) {
        if (clip.video->subclips.at(subclip.index).id == key.subclipId) {
            notifyRow(subclip.key, {ThumbnailRole});
        }
    }
}

qsizetype ReviewListModel::totalCount() const {
    return ReviewListing(m_state, m_index).totalCount();
}

SidebarRowId ReviewListModel::rowId(qsizetype row) const {
    const ReviewIndex::Entry entry = m_index.entry(this->row(row));
    const QString videoId = m_index.clip(entry.clip).video->id;
    return {videoId, entry.isSubclip() ? std::optional(m_index.subclip(entry).id) : std::nullopt};
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
        if (!m_index.entry(this->row(next)).isSubclip()) {
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
        } else if (!showsInlineSubclips()) {
            targets.subclips.append({id.videoId, *id.subclipId});
        }
    }
    return targets;
}

const VideoRecord *ReviewListModel::video(const std::optional<QString> &id) const {
    const qsizetype index = id ? m_index.indexOfClip(*id) : -1;
    return index < 0 ? nullptr : &*m_index.clip(index).video;
}

const Subclip *ReviewListModel::subclip(const SubclipKey &key) const {
    const VideoRecord *record = video(key.videoId);
    const auto found = record ? std::ranges::find(record->subclips, key.subclipId, &Subclip::id)
                              : QList<Subclip>::const_iterator();
    return record && found != record->subclips.end() ? &*found : nullptr;
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
