#pragma once

#include "review/ReviewState.h"
#include "review/SearchTexts.h"

#include <QCollator>
#include <QHash>

#include <optional>
#include <vector>

namespace corvane {

/// What the lists of the review screen are made from, kept in step with the document.
///
/// Every clip and every subclip has a key that stays the same while it is in the document, so that
/// rows can be compared without comparing texts. A clip is looked at again only where its shared
/// record is another one than before: one edit costs one clip.
class ReviewIndex {
  public:
    using Key = quint32;

    /// A subclip as the lists show it.
    struct IndexedSubclip {
        Key key = 0;
        qsizetype place = 0; ///< in the clip's `subclips`
    };

    /// A clip with its subclips by `creationIndex`, stable.
    struct IndexedClip {
        VideoItem video;
        Key key = 0;
        ClipFlags flags;
        std::vector<IndexedSubclip> subclips;
        SearchTexts texts;
        int selects = 0; ///< how many of the clip and its subclips are selected for export
        /// Made by who sorts by names; kept while the name stays.
        std::optional<QCollatorSortKey> nameKey;
    };

    /// Where a key's clip stands, and which of its subclips the key is: -1 for the clip itself.
    /// `clip` is -1 for a key whose clip or subclip has gone.
    struct Place {
        qint32 clip = -1;
        qint32 subclip = -1;

        bool exists() const { return clip >= 0; }
        bool isSubclip() const { return subclip >= 0; }
    };

    struct ChangedClip {
        int position = 0;
        VideoItem before;
    };
    struct Change {
        bool clipsMoved = false;          ///< some came, went or stand elsewhere
        std::vector<ChangedClip> changed; ///< where none moved: those that are other than before
    };

    /// Brings the index up to date and tells what was changed.
    Change update(const QList<VideoItem> &videos);

    const std::vector<IndexedClip> &clips() const { return m_clips; }
    const IndexedClip &clip(qsizetype position) const { return m_clips[size_t(position)]; }
    const Subclip &subclip(Place place) const;
    qsizetype subclipCount() const { return m_subclipCount; }
    /// True if any clip or subclip is selected for export.
    bool hasSelects() const { return m_selects > 0; }
    Place place(Key key) const { return key < m_places.size() ? m_places[key] : Place(); }
    /// All keys are below it.
    Key keyLimit() const { return Key(m_places.size()); }
    /// Where the clip stands, or -1. Of one id twice, the first counts.
    qsizetype positionOf(const QString &videoId) const;
    /// Computes the clip's key for sorting by name where it isn't there yet.
    const QCollatorSortKey &nameKey(qsizetype position, const QCollator &collator);

  private:
    void replaceClip(IndexedClip &clip, const VideoItem &video);
    IndexedClip makeClip(const VideoItem &video);
    void updateMoved(const QList<VideoItem> &videos);
    void forget(const IndexedClip &clip);
    void notePlaces(qsizetype position);
    Key newKey();

    std::vector<IndexedClip> m_clips; ///< in project order
    /// The storage of each clip's record, side by side, so that all of them are compared quickly.
    std::vector<const VideoRecord *> m_records;
    std::vector<Place> m_places;  ///< by key
    std::vector<Key> m_free;      ///< keys to be given again
    std::vector<Key> m_forgotten; ///< free once a list had the time to drop them
    qsizetype m_subclipCount = 0;
    qsizetype m_selects = 0;
    mutable QHash<QString, qsizetype> m_positions; ///< made when first asked
};

} // namespace corvane
