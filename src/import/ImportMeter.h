#pragma once

#include "import/ImportRun.h"

#include <vector>

namespace corvane {

/// Progress of an import run as one fraction that never decreases. Its phases are weighted in
/// bytes: copying the rows, recording the clips, which reads them to their ends, and reading
/// each clip's metadata.
class ImportMeter {
  public:
    ImportMeter() = default;
    /// For a run over the included rows.
    ImportMeter(const QList<ImportPreviewRow> &rows, SourceImportMode mode);

    void update(const ImportProgress &progress);

    /// From 0 to 1.
    double fraction() const { return m_fraction; }

  private:
    void advanceTo(double work);

    std::vector<double> m_ends; ///< for each row, bytes up to its end
    double m_copying = 0;       ///< total of all rows; 0 in mode `inPlace`
    double m_recording = 0;
    double m_metadata = 0;
    double m_fraction = 0;
};

} // namespace corvane
