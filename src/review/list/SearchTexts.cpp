#include "review/list/SearchTexts.h"

#include <algorithm>
#include <cstring>

namespace corvane {

namespace {

/// Never part of UTF-8.
constexpr char kTextEnd = char(0xFF);

/// Hashes a pair of bytes to one of 1024 bits.
quint16 pairBit(uchar first, uchar second) {
    return quint16(((quint32(first) << 8 | second) * 2654435761u) >> 22);
}

} // namespace

SearchQuery::SearchQuery(const QString &term) : m_bytes(term.toUtf8()) {
    for (qsizetype index = 1; index < m_bytes.size(); ++index) {
        m_pairs.push_back(pairBit(uchar(m_bytes.at(index - 1)), uchar(m_bytes.at(index))));
    }
}

SearchTexts::SearchTexts(const VideoRecord &video, const std::vector<qsizetype> &subclips) {
    append(video.fileName);
    append(video.notes.value_or(QString()));
    for (const QString &tag : video.tags) {
        append(tag);
    }
    m_ends.push_back(qint32(m_texts.size()));
    for (const qsizetype index : subclips) {
        append(video.subclips.at(index).label.value_or(QString()));
        append(video.subclips.at(index).notes.value_or(QString()));
        m_ends.push_back(qint32(m_texts.size()));
    }
    m_texts.squeeze();
    hashPairs();
}

void SearchTexts::append(const QString &text) {
    if (text.isEmpty()) {
        return;
    }
    // Nearly all texts are ASCII, which needs no Unicode tables.
    const qsizetype begin = m_texts.size();
    m_texts.resize(begin + text.size());
    char *byte = m_texts.data() + begin;
    bool isASCII = true;
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        isASCII = isASCII && code < 0x80;
        *byte++ = char(code >= u'A' && code <= u'Z' ? code + (u'a' - u'A') : code);
    }
    if (!isASCII) {
        m_texts.replace(begin, text.size(), text.toLower().toUtf8());
    }
    m_texts += kTextEnd;
}

void SearchTexts::hashPairs() {
    for (qsizetype index = 1; index < m_texts.size(); ++index) {
        const quint16 bit = pairBit(uchar(m_texts.at(index - 1)), uchar(m_texts.at(index)));
        m_pairs[bit / 64] |= quint64(1) << (bit % 64);
    }
}

bool SearchTexts::mayContain(const SearchQuery &query) const {
    return std::ranges::all_of(
        query.pairs(), [this](quint16 bit) { return (m_pairs[bit / 64] >> (bit % 64) & 1) != 0; });
}

bool SearchTexts::rangeContains(qsizetype begin, qsizetype end, const SearchQuery &query) const {
    return memmem(m_texts.constData() + begin, size_t(end - begin), query.bytes().constData(),
                  size_t(query.bytes().size())) != nullptr;
}

bool SearchTexts::contains(const SearchQuery &query) const {
    return mayContain(query) && rangeContains(0, m_texts.size(), query);
}

bool SearchTexts::clipContains(const SearchQuery &query) const {
    return mayContain(query) && rangeContains(0, m_ends.front(), query);
}

bool SearchTexts::subclipContains(size_t subclip, const SearchQuery &query) const {
    return rangeContains(m_ends[subclip], m_ends[subclip + 1], query);
}

} // namespace corvane
