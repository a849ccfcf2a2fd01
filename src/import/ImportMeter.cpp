#include "import/ImportMeter.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr double kRecordingAByte = 0.25; ///< it was just read, and nothing is written
constexpr double kMetadataOfAClip = 64e6;

} // namespace

ImportMeter::ImportMeter(const QList<ImportPreviewRow> &rows, SourceImportMode mode) {
    double bytes = 0;
    for (const ImportPreviewRow &row : rows) {
        if (row.included) {
            bytes += double(row.source.fileSizeBytes);
            m_ends.push_back(bytes);
        }
    }
    m_copying = mode == SourceImportMode::copied ? bytes : 0;
    m_recording = bytes * kRecordingAByte;
    m_metadata = double(m_ends.size()) * kMetadataOfAClip;
}

void ImportMeter::copying(int row, quint64 bytesDone) {
    if (m_copying > 0 && row >= 1 && size_t(row) <= m_ends.size()) {
        const double begin = row == 1 ? 0 : m_ends[size_t(row) - 2];
        reach(std::min(begin + double(bytesDone), m_ends[size_t(row) - 1]));
    }
}

void ImportMeter::recording() {
    reach(m_copying);
}

void ImportMeter::readingMetadata(int clip, int clips) {
    const double done = clips > 0 ? double(clip - 1) / double(clips) : 1;
    reach(m_copying + m_recording + m_metadata * done);
}

void ImportMeter::reach(double work) {
    const double total = m_copying + m_recording + m_metadata;
    if (total > 0) {
        m_fraction = std::clamp(work / total, m_fraction, 1.0);
    }
}

} // namespace corvane
