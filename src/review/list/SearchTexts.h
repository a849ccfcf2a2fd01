#pragma once

#include "document/Project.h"

#include <array>
#include <vector>

namespace corvane {

/// A search term prepared for matching against many texts.
class SearchQuery {
  public:
    /// `term` must be trimmed and in lower case.
    explicit SearchQuery(const QString &term);

    bool isEmpty() const { return m_bytes.isEmpty(); }
    const QByteArray &bytes() const { return m_bytes; } ///< in UTF-8
    /// Hashes of the term's pairs of adjacent bytes, see `SearchTexts`.
    const std::vector<quint16> &pairs() const { return m_pairs; }

  private:
    QByteArray m_bytes;
    std::vector<quint16> m_pairs;
};

/// The searchable texts of a clip and its subclips, in lower case.
///
/// The texts are stored in UTF-8 one after another, first those of the clip, then those of its
/// subclips. Each is terminated by a byte that UTF-8 never contains, so that no match spans two
/// texts. A bit set of hashed byte pairs rules out most clips without reading their texts.
class SearchTexts {
  public:
    /// `subclips` are indexes in `video.subclips`, in the order used by `subclipContains`.
    SearchTexts(const VideoRecord &video, const std::vector<qsizetype> &subclips);

    // The query must not be empty.
    /// True if any text of the clip or its subclips contains the query.
    bool contains(const SearchQuery &query) const;
    bool clipContains(const SearchQuery &query) const;
    bool subclipContains(size_t subclip, const SearchQuery &query) const;

  private:
    static constexpr size_t kPairBits = 1024;

    void append(const QString &text);
    bool mayContain(const SearchQuery &query) const;
    bool rangeContains(qsizetype begin, qsizetype end, const SearchQuery &query) const;
    void hashPairs();

    std::array<quint64, kPairBits / 64> m_pairs{};
    QByteArray m_texts;
    std::vector<qint32> m_ends; ///< end offsets of the texts of the clip and of each subclip
};

} // namespace corvane
