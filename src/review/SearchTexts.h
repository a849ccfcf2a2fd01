#pragma once

#include "document/Project.h"

#include <array>
#include <vector>

namespace corvane {

/// A search term made ready for many texts: as it is searched for, and which pairs of bytes a text
/// must hold to hold it.
class SearchQuery {
  public:
    /// Takes the term trimmed and in lower case.
    explicit SearchQuery(const QString &term);

    bool isEmpty() const { return m_bytes.isEmpty(); }
    const QByteArray &bytes() const { return m_bytes; }
    const std::vector<quint16> &pairs() const { return m_pairs; }

  private:
    QByteArray m_bytes;
    std::vector<quint16> m_pairs;
};

/// What a clip and its subclips are found by, lower-cased once for all searches to come.
///
/// The texts lie in UTF-8 one after another, the clip's own before those of its subclips, and each
/// ends with a byte that no UTF-8 holds, so that a term is never found across two of them. A small
/// table of the pairs of bytes that occur rules most clips out before their texts are looked at.
class SearchTexts {
  public:
    /// `subclips` are the places of the subclips in `video.subclips`, in the order in which they
    /// are asked for.
    SearchTexts(const VideoRecord &video, const std::vector<qsizetype> &subclips);

    /// True if the term is in any text. It may not be empty, here and below.
    bool hold(const SearchQuery &query) const;
    /// True if it is in the clip's own texts.
    bool clipHolds(const SearchQuery &query) const;
    /// True if it is in the texts of the subclip at that place.
    bool subclipHolds(size_t subclip, const SearchQuery &query) const;

  private:
    static constexpr size_t kPairBits = 1024;

    void append(const QString &text);
    bool mayHold(const SearchQuery &query) const;
    bool rangeHolds(qsizetype begin, qsizetype end, const SearchQuery &query) const;
    void notePairs();

    std::array<quint64, kPairBits / 64> m_pairs{};
    QByteArray m_texts;
    std::vector<qint32> m_ends; ///< where the clip's own texts end, then each subclip's
};

} // namespace corvane
