#pragma once

#include "review/list/ReviewState.h"
#include "review/list/SearchTexts.h"

#include <QCollator>
#include <QHash>

#include <optional>
#include <vector>

namespace corvane {

/// The clips and subclips of a project, prepared for listing.
///
/// Every clip and every subclip has an integer key, which it keeps while it is in the project, so
/// that rows are compared without comparing texts. Updating reads only clips whose shared record is
/// a different one than before: an edit of one clip costs that clip.
///
/// Clips are addressed by their index in the project.
class ReviewIndex {
  public:
    using Key = quint32;

    struct IndexedSubclip {
        Key key = 0;
        qsizetype index = 0; ///< in the clip's `subclips`
    };

    struct IndexedClip {
        VideoItem video;
        Key key = 0;
        ClipFlags flags;
        std::vector<IndexedSubclip> subclips; ///< by `creationIndex`, stable
        SearchTexts texts;
        std::optional<QCollatorSortKey> nameKey; ///< computed by `nameKey()`
    };

    /// The clip or subclip with a key.
    struct Entry {
        qint32 clip = -1;    ///< -1 if the clip or subclip was removed
        qint32 subclip = -1; ///< index in `IndexedClip::subclips`; -1 for the clip itself

        bool exists() const { return clip >= 0; }
        bool isSubclip() const { return subclip >= 0; }
    };

    struct ChangedClip {
        int index = 0;
        VideoItem before;
    };
    struct Change {
        bool clipsMoved = false;          ///< clips were added, removed or reordered
        std::vector<ChangedClip> changed; ///< empty if `clipsMoved`
    };

    /// Replaces the clips and returns the differences. A removed key is not reused before the
    /// next update, so that lists can drop it first.
    Change update(const QList<VideoItem> &videos);

    const std::vector<IndexedClip> &clips() const { return m_clips; }
    const IndexedClip &clip(qsizetype index) const { return m_clips[size_t(index)]; }
    Entry entry(Key key) const { return key < m_entries.size() ? m_entries[key] : Entry(); }
    /// The subclip of an entry that is one.
    const Subclip &subclip(Entry entry) const;
    qsizetype subclipCount() const { return m_subclipCount; }
    /// Index of the clip with that id, or -1; the first one if a damaged project repeats an id.
    qsizetype indexOfClip(const QString &videoId) const;
    /// The clip's key for sorting by file name, computed on first use.
    const QCollatorSortKey &nameKey(qsizetype clipIndex, const QCollator &collator);

  private:
    void replaceClip(IndexedClip &clip, const VideoItem &video);
    IndexedClip makeClip(const VideoItem &video);
    void updateMoved(const QList<VideoItem> &videos);
    void removeKeys(const IndexedClip &clip);
    void removeKey(Key key);
    void setEntries(qsizetype clipIndex);
    Key newKey();

    std::vector<IndexedClip> m_clips;
    std::vector<const VideoRecord *> m_records; ///< of each clip, for a fast comparison
    std::vector<Entry> m_entries;               ///< by key
    std::vector<Key> m_freeKeys;
    std::vector<Key> m_removedKeys; ///< free after the next update
    qsizetype m_subclipCount = 0;
    mutable QHash<QString, qsizetype> m_indexesById; ///< built on first use
};

} // namespace corvane
