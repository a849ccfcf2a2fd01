#pragma once

#include "import/ImportPreview.h"

#include <vector>

namespace corvane {

/// How far an import is, as one number over the whole run that never goes back. Its parts are
/// weighed in bytes: copying the rows one after another, recording what arrived, which reads it
/// once more, and reading each clip's metadata. Plain value.
class ImportMeter {
  public:
    ImportMeter() = default;
    /// For a run over the included ones of these rows.
    ImportMeter(const QList<ImportPreviewRow> &rows, SourceImportMode mode);

    /// The row of that number, from 1, is at work, and so many of its bytes are copied.
    void copying(int row, quint64 bytesDone);
    void recording();
    /// The metadata of that clip, from 1, out of so many are being read.
    void readingMetadata(int clip, int clips);

    /// From 0 to 1.
    double fraction() const { return m_fraction; }

  private:
    void reach(double work);

    std::vector<double> m_ends; ///< of each row: the bytes up to and with it
    double m_copying = 0;       ///< of all rows; 0 where nothing is copied
    double m_recording = 0;
    double m_metadata = 0;
    double m_fraction = 0;
};

} // namespace corvane
