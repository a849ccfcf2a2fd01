#include "review/list/ReviewIndex.h"

#include <algorithm>
#include <numeric>

namespace corvane {

namespace {

std::vector<qsizetype> indexesInCreationOrder(const VideoRecord &video) {
    std::vector<qsizetype> indexes(size_t(video.subclips.size()));
    std::iota(indexes.begin(), indexes.end(), 0);
    std::ranges::stable_sort(
        indexes, {}, [&](qsizetype index) { return video.subclips.at(index).creationIndex; });
    return indexes;
}

} // namespace

ReviewIndex::Change ReviewIndex::update(const QList<VideoItem> &videos) {
    m_freeKeys.insert(m_freeKeys.end(), m_removedKeys.begin(), m_removedKeys.end());
    m_removedKeys.clear();
    Change change{.clipsMoved = videos.size() != qsizetype(m_clips.size())};
    for (qsizetype index = 0; !change.clipsMoved && index < videos.size(); ++index) {
        if (m_records[size_t(index)] != &*videos.at(index)) {
            const VideoItem &before = m_clips[size_t(index)].video;
            change.changed.push_back({int(index), before});
            change.clipsMoved = before->id != videos.at(index)->id;
        }
    }
    if (change.clipsMoved) {
        change.changed.clear();
        updateMoved(videos);
        return change;
    }
    for (const ChangedClip &changed : change.changed) {
        replaceClip(m_clips[size_t(changed.index)], videos.at(changed.index));
        setEntries(changed.index);
        m_records[size_t(changed.index)] = &*videos.at(changed.index);
    }
    return change;
}

void ReviewIndex::updateMoved(const QList<VideoItem> &videos) {
    std::vector<IndexedClip> before = std::move(m_clips);
    QMultiHash<QString, size_t> indexesById;
    indexesById.reserve(qsizetype(before.size()));
    for (size_t index = before.size(); index-- > 0;) {
        indexesById.insert(before[index].video->id, index); // the last inserted is found first
    }
    m_clips.clear();
    m_clips.reserve(size_t(videos.size()));
    for (const VideoItem &video : videos) {
        const auto found = indexesById.find(video->id);
        if (found == indexesById.end()) {
            m_clips.push_back(makeClip(video));
            continue;
        }
        m_clips.push_back(std::move(before[*found]));
        indexesById.erase(found);
        if (!m_clips.back().video.isSharedWith(video)) {
            replaceClip(m_clips.back(), video);
        }
    }
    for (const size_t removed : std::as_const(indexesById)) {
        removeKeys(before[removed]);
    }
    m_indexesById.clear();
    m_records.clear();
    for (qsizetype index = 0; index < videos.size(); ++index) {
        setEntries(index);
        m_records.push_back(&*videos.at(index));
    }
}

ReviewIndex::IndexedClip ReviewIndex::makeClip(const VideoItem &video) {
    const std::vector<qsizetype> order = indexesInCreationOrder(*video);
    IndexedClip clip{.video = video,
                     .key = newKey(),
                     .flags = ClipFlags::of(*video),
                     .texts = SearchTexts(*video, order)};
    clip.subclips.reserve(order.size());
    for (const qsizetype index : order) {
        clip.subclips.push_back({newKey(), index});
    }
    m_subclipCount += qsizetype(order.size());
    return clip;
}

void ReviewIndex::replaceClip(IndexedClip &clip, const VideoItem &video) {
    const std::vector<qsizetype> order = indexesInCreationOrder(*video);
    QMultiHash<QString, Key> keys;
    for (const IndexedSubclip &subclip : clip.subclips) {
        keys.insert(clip.video->subclips.at(subclip.index).id, subclip.key);
    }
    m_subclipCount += qsizetype(order.size()) - qsizetype(clip.subclips.size());
    clip.subclips.clear();
    for (const qsizetype index : order) {
        const auto found = keys.find(video->subclips.at(index).id);
        const bool isKnown = found != keys.end();
        clip.subclips.push_back({isKnown ? *found : newKey(), index});
        if (isKnown) {
            keys.erase(found);
        }
    }
    for (const Key removed : std::as_const(keys)) {
        removeKey(removed);
    }
    if (clip.video->fileName != video->fileName) {
        clip.nameKey.reset();
    }
    clip.flags = ClipFlags::of(*video);
    clip.texts = SearchTexts(*video, order);
    clip.video = video;
}

void ReviewIndex::removeKeys(const IndexedClip &clip) {
    removeKey(clip.key);
    for (const IndexedSubclip &subclip : clip.subclips) {
        removeKey(subclip.key);
    }
    m_subclipCount -= qsizetype(clip.subclips.size());
}

void ReviewIndex::removeKey(Key key) {
    m_entries[key] = {};
    m_removedKeys.push_back(key);
}

void ReviewIndex::setEntries(qsizetype clipIndex) {
    const IndexedClip &clip = m_clips[size_t(clipIndex)];
    m_entries[clip.key] = {qint32(clipIndex), -1};
    for (size_t subclip = 0; subclip < clip.subclips.size(); ++subclip) {
        m_entries[clip.subclips[subclip].key] = {qint32(clipIndex), qint32(subclip)};
    }
}

ReviewIndex::Key ReviewIndex::newKey() {
    if (m_freeKeys.empty()) {
        m_entries.push_back({});
        return Key(m_entries.size() - 1);
    }
    const Key key = m_freeKeys.back();
    m_freeKeys.pop_back();
    return key;
}

const Subclip &ReviewIndex::subclip(Entry entry) const {
    const IndexedClip &clip = m_clips[size_t(entry.clip)];
    return clip.video->subclips.at(clip.subclips[size_t(entry.subclip)].index);
}

qsizetype ReviewIndex::indexOfClip(const QString &videoId) const {
    if (m_indexesById.isEmpty()) {
        m_indexesById.reserve(qsizetype(m_clips.size()));
        for (size_t index = m_clips.size(); index-- > 0;) {
            m_indexesById.insert(m_clips[index].video->id, qsizetype(index));
        }
    }
    return m_indexesById.value(videoId, -1);
}

const QCollatorSortKey &ReviewIndex::nameKey(qsizetype clipIndex, const QCollator &collator) {
    IndexedClip &clip = m_clips[size_t(clipIndex)];
    if (!clip.nameKey) {
        clip.nameKey = collator.sortKey(clip.video->fileName);
    }
    return *clip.nameKey;
}

} // namespace corvane
