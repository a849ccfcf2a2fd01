#include "review/ReviewIndex.h"

#include <algorithm>

namespace corvane {

namespace {

/// The places of a clip's subclips by `creationIndex`.
std::vector<qsizetype> placesInCreationOrder(const VideoRecord &video) {
    std::vector<qsizetype> places(size_t(video.subclips.size()));
    for (size_t place = 0; place < places.size(); ++place) {
        places[place] = qsizetype(place);
    }
    std::ranges::stable_sort(
        places, {}, [&](qsizetype place) { return video.subclips.at(place).creationIndex; });
    return places;
}

int countSelects(const VideoRecord &video) {
    return int(video.selectedForExport) +
           int(std::ranges::count_if(video.subclips, &Subclip::selectedForExport));
}

} // namespace

ReviewIndex::Change ReviewIndex::update(const QList<VideoItem> &videos) {
    m_free.insert(m_free.end(), m_forgotten.begin(), m_forgotten.end());
    m_forgotten.clear();
    Change change{.clipsMoved = videos.size() != qsizetype(m_clips.size())};
    for (qsizetype position = 0; !change.clipsMoved && position < videos.size(); ++position) {
        if (m_records[size_t(position)] != &*videos.at(position)) {
            const VideoItem &before = m_clips[size_t(position)].video;
            change.changed.push_back({int(position), before});
            change.clipsMoved = before->id != videos.at(position)->id;
        }
    }
    if (change.clipsMoved) {
        change.changed.clear();
        updateMoved(videos);
        return change;
    }
    for (const ChangedClip &changed : change.changed) {
        replaceClip(m_clips[size_t(changed.position)], videos.at(changed.position));
        notePlaces(changed.position);
        m_records[size_t(changed.position)] = &*videos.at(changed.position);
    }
    return change;
}

void ReviewIndex::updateMoved(const QList<VideoItem> &videos) {
    std::vector<IndexedClip> before = std::move(m_clips);
    QMultiHash<QString, size_t> byId;
    byId.reserve(qsizetype(before.size()));
    for (size_t position = before.size(); position-- > 0;) {
        byId.insert(before[position].video->id, position); // the first is found first
    }
    m_clips.clear();
    m_clips.reserve(size_t(videos.size()));
    for (const VideoItem &video : videos) {
        const auto found = byId.find(video->id);
        if (found == byId.end()) {
            m_clips.push_back(makeClip(video));
            continue;
        }
        m_clips.push_back(std::move(before[*found]));
        byId.erase(found);
        if (!m_clips.back().video.isSharedWith(video)) {
            replaceClip(m_clips.back(), video);
        }
    }
    for (const size_t gone : std::as_const(byId)) {
        forget(before[gone]);
    }
    m_positions.clear();
    m_records.clear();
    for (qsizetype position = 0; position < videos.size(); ++position) {
        notePlaces(position);
        m_records.push_back(&*videos.at(position));
    }
}

ReviewIndex::IndexedClip ReviewIndex::makeClip(const VideoItem &video) {
    const std::vector<qsizetype> order = placesInCreationOrder(*video);
    IndexedClip clip{.video = video,
                     .key = newKey(),
                     .flags = ClipFlags::of(*video),
                     .texts = SearchTexts(*video, order),
                     .selects = countSelects(*video)};
    m_selects += clip.selects;
    clip.subclips.reserve(order.size());
    for (const qsizetype place : order) {
        clip.subclips.push_back({newKey(), place});
    }
    m_subclipCount += qsizetype(order.size());
    return clip;
}

/// The clip and those of its subclips that are still there keep their keys.
void ReviewIndex::replaceClip(IndexedClip &clip, const VideoItem &video) {
    const std::vector<qsizetype> order = placesInCreationOrder(*video);
    QMultiHash<QString, Key> keys;
    for (const IndexedSubclip &subclip : clip.subclips) {
        keys.insert(clip.video->subclips.at(subclip.place).id, subclip.key);
    }
    m_subclipCount += qsizetype(order.size()) - qsizetype(clip.subclips.size());
    clip.subclips.clear();
    for (const qsizetype place : order) {
        const auto found = keys.find(video->subclips.at(place).id);
        const bool isKnown = found != keys.end();
        clip.subclips.push_back({isKnown ? *found : newKey(), place});
        if (isKnown) {
            keys.erase(found);
        }
    }
    for (const Key gone : std::as_const(keys)) {
        m_places[gone] = {};
        m_forgotten.push_back(gone);
    }
    if (clip.video->fileName != video->fileName) {
        clip.nameKey.reset();
    }
    clip.flags = ClipFlags::of(*video);
    clip.texts = SearchTexts(*video, order);
    m_selects -= std::exchange(clip.selects, countSelects(*video));
    m_selects += clip.selects;
    clip.video = video;
}

void ReviewIndex::forget(const IndexedClip &clip) {
    m_places[clip.key] = {};
    m_forgotten.push_back(clip.key);
    for (const IndexedSubclip &subclip : clip.subclips) {
        m_places[subclip.key] = {};
        m_forgotten.push_back(subclip.key);
    }
    m_subclipCount -= qsizetype(clip.subclips.size());
    m_selects -= clip.selects;
}

void ReviewIndex::notePlaces(qsizetype position) {
    const IndexedClip &clip = m_clips[size_t(position)];
    m_places[clip.key] = {qint32(position), -1};
    for (size_t subclip = 0; subclip < clip.subclips.size(); ++subclip) {
        m_places[clip.subclips[subclip].key] = {qint32(position), qint32(subclip)};
    }
}

ReviewIndex::Key ReviewIndex::newKey() {
    if (m_free.empty()) {
        m_places.push_back({});
        return Key(m_places.size() - 1);
    }
    const Key key = m_free.back();
    m_free.pop_back();
    return key;
}

const Subclip &ReviewIndex::subclip(Place place) const {
    const IndexedClip &clip = m_clips[size_t(place.clip)];
    return clip.video->subclips.at(clip.subclips[size_t(place.subclip)].place);
}

qsizetype ReviewIndex::positionOf(const QString &videoId) const {
    if (m_positions.isEmpty()) {
        m_positions.reserve(qsizetype(m_clips.size()));
        for (size_t position = m_clips.size(); position-- > 0;) {
            m_positions.insert(m_clips[position].video->id, qsizetype(position));
        }
    }
    return m_positions.value(videoId, -1);
}

const QCollatorSortKey &ReviewIndex::nameKey(qsizetype position, const QCollator &collator) {
    IndexedClip &clip = m_clips[size_t(position)];
    if (!clip.nameKey) {
        clip.nameKey = collator.sortKey(clip.video->fileName);
    }
    return *clip.nameKey;
}

} // namespace corvane
