#pragma once

#include "cli/Command.h"

namespace corvane {

/// A table with aligned columns for text output.
class TextTable {
  public:
    explicit TextTable(QStringList headings);

    void addRow(QStringList cells);
    /// Prints headings and rows. No-op without rows.
    void print(const CommandCall &call) const;

  private:
    QList<QStringList> m_rows; ///< the first one has the headings
};

} // namespace corvane
