#include "cli/TextTable.h"

#include <algorithm>

namespace corvane {

TextTable::TextTable(QStringList headings) {
    m_rows.append(std::move(headings));
}

void TextTable::addRow(QStringList cells) {
    m_rows.append(std::move(cells));
}

void TextTable::print(const CommandCall &call) const {
    if (m_rows.size() == 1) {
        return;
    }
    const qsizetype last = m_rows.first().size() - 1;
    QList<qsizetype> widths(last + 1, 0);
    for (const QStringList &row : m_rows) {
        for (qsizetype column = 0; column <= last; ++column) {
            widths[column] = std::max(widths.at(column), row.at(column).size());
        }
    }
    for (const QStringList &row : m_rows) {
        QString line;
        for (qsizetype column = 0; column < last; ++column) {
            line += row.at(column).leftJustified(widths.at(column) + 2);
        }
        call.printLine(line + row.at(last));
    }
}

} // namespace corvane
