#include "media/FrameCache.h"

#include <cmath>

namespace corvane::media {

void FrameCache::insert(const VideoFrame &frame, std::optional<MediaTime> previous) {
    const auto [entry, isNew] = m_entries.try_emplace(frame.time, Entry{.frame = frame});
    if (isNew) {
        m_bytes += frame.byteCount();
        if (const auto next = std::next(entry); next != m_entries.end()) {
            next->second.isAdjacent = false;
        }
    }
    if (previous) {
        setAdjacent(*previous, frame.time);
    }
    evict();
}

void FrameCache::setAdjacent(MediaTime previous, MediaTime time) {
    const auto entry = m_entries.find(time);
    if (entry != m_entries.end() && entry != m_entries.begin() &&
        std::prev(entry)->first == previous) {
        entry->second.isAdjacent = true;
    }
}

std::optional<VideoFrame> FrameCache::frameAt(MediaTime time) const {
    const double latest = time.seconds() + kHalfTick;
    auto next = m_entries.upper_bound(time);
    while (next != m_entries.end() && next->first.seconds() <= latest) {
        ++next;
    }
    if (next == m_entries.begin()) {
        return std::nullopt;
    }
    const auto &found = std::prev(next)->second;
    const bool isNextKnown = next != m_entries.end() && next->second.isAdjacent;
    const bool isExactTime = std::abs(found.frame.time.seconds() - time.seconds()) <= kHalfTick;
    return isNextKnown || isExactTime ? std::optional(found.frame) : std::nullopt;
}

std::optional<VideoFrame> FrameCache::next(MediaTime time) const {
    const auto next = m_entries.upper_bound(time);
    const bool isAdjacent =
        next != m_entries.end() && next->second.isAdjacent && std::prev(next)->first == time;
    return isAdjacent ? std::optional(next->second.frame) : std::nullopt;
}

std::optional<VideoFrame> FrameCache::previous(MediaTime time) const {
    const auto entry = m_entries.find(time);
    const bool isAdjacent = entry != m_entries.end() && entry->second.isAdjacent;
    return isAdjacent ? std::optional(std::prev(entry)->second.frame) : std::nullopt;
}

std::optional<VideoFrame> FrameCache::nearestBefore(MediaTime time) const {
    const auto next = m_entries.lower_bound(time);
    return next == m_entries.begin() ? std::nullopt : std::optional(std::prev(next)->second.frame);
}

std::optional<VideoFrame> FrameCache::nearest(MediaTime time, double tolerance) const {
    const auto distance = [&](const VideoFrame &frame) {
        return std::abs(frame.time.seconds() - time.seconds());
    };
    auto found = nearestBefore(time);
    const auto next = m_entries.lower_bound(time);
    if (next != m_entries.end() && (!found || distance(next->second.frame) < distance(*found))) {
        found = next->second.frame;
    }
    return found && distance(*found) <= tolerance ? found : std::nullopt;
}

qsizetype FrameCache::bytesBetween(MediaTime from, MediaTime to) const {
    qsizetype bytes = 0;
    for (auto entry = m_entries.lower_bound(from); entry != m_entries.end() && entry->first < to;
         ++entry) {
        bytes += entry->second.frame.byteCount();
    }
    return bytes;
}

std::optional<MediaTime> FrameCache::runEnd(MediaTime time, Direction direction, int frames,
                                            qsizetype bytes) const {
    auto entry = m_entries.find(time);
    if (entry == m_entries.end()) {
        return time;
    }
    for (; frames > 0 && bytes > 0; --frames) {
        if (direction == Direction::backward) {
            if (!entry->second.isAdjacent) {
                return entry->first;
            }
            --entry;
        } else {
            const auto next = std::next(entry);
            if (next == m_entries.end() || !next->second.isAdjacent) {
                return entry->first;
            }
            entry = next;
        }
        bytes -= entry->second.frame.byteCount();
    }
    return std::nullopt;
}

void FrameCache::setFocus(MediaTime time, Direction direction) {
    m_focus = time;
    m_direction = direction;
    evict();
}

double FrameCache::evictionCost(MediaTime time) const {
    const double ahead =
        (time.seconds() - m_focus.seconds()) * (m_direction == Direction::forward ? 1 : -1);
    return ahead >= 0 ? ahead : -ahead * m_behindCost;
}

void FrameCache::evict() {
    while (m_bytes > m_byteLimit && m_entries.size() > 1) {
        const auto first = m_entries.begin();
        const auto last = std::prev(m_entries.end());
        remove(evictionCost(first->first) > evictionCost(last->first) ? first : last);
    }
}

void FrameCache::remove(Entries::iterator entry) {
    m_bytes -= entry->second.frame.byteCount();
    const auto next = m_entries.erase(entry);
    if (next != m_entries.end()) {
        next->second.isAdjacent = false;
    }
}

} // namespace corvane::media
