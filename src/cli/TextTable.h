#pragma once

#include "cli/Command.h"

namespace corvane {

/// Rows of text in columns that line up, for people.
class TextTable {
  public:
    explicit TextTable(QStringList headings);

    void addRow(QStringList cells);
    /// Prints the headings and the rows; nothing where there are no rows.
    void print(const Invocation &call) const;

  private:
    QList<QStringList> m_rows; ///< the headings first
};

} // namespace corvane
