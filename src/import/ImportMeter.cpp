#include "import/ImportMeter.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr double kRecordingPerCopiedByte = 0.25; ///< read from the page cache, nothing is written
constexpr double kMetadataPerClip = 64e6;

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
    m_recording = m_copying > 0 ? bytes * kRecordingPerCopiedByte : bytes;
    m_metadata = double(m_ends.size()) * kMetadataPerClip;
}

void ImportMeter::update(const ImportProgress &progress) {
    const auto row = size_t(std::max(progress.index, 1));
    switch (progress.phase) {
    case ImportProgress::Phase::files:
        if (m_copying > 0 && row <= m_ends.size()) {
            const double begin = row == 1 ? 0 : m_ends[row - 2];
            advanceTo(std::min(begin + double(progress.bytesDone), m_ends[row - 1]));
        }
        break;
    case ImportProgress::Phase::recording:
        advanceTo(m_copying + (progress.bytesTotal > 0 ? m_recording * double(progress.bytesDone) /
                                                             double(progress.bytesTotal)
                                                       : 0.0));
        break;
    case ImportProgress::Phase::metadata:
        advanceTo(m_copying + m_recording + m_metadata * double(row - 1) / progress.total);
        break;
    }
}

void ImportMeter::advanceTo(double work) {
    const double total = m_copying + m_recording + m_metadata;
    if (total > 0) {
        m_fraction = std::clamp(work / total, m_fraction, 1.0);
    }
}

} // namespace corvane
