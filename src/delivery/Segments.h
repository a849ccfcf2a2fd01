#pragma once

#include "delivery/DeliverySheetTexts.h"

#include <algorithm>
#include <optional>

/// The values of a choice, in the order of the segments of its control.
namespace corvane::segments {

template <typename Value> struct Segment {
    Value value;
    const char *label; ///< UTF-8, like `help`
    const char *help = "";
};

template <typename Table> QStringList labels(const Table &table) {
    QStringList texts;
    for (const auto &segment : table) {
        texts.append(QString::fromUtf8(segment.label));
    }
    return texts;
}

/// Index of the value, or -1.
template <typename Table, typename Value> int indexOf(const Table &table, const Value &value) {
    const auto found = std::ranges::find(table, value, [](const auto &each) { return each.value; });
    return found == table.end() ? -1 : int(found - table.begin());
}

/// The value at the index, or nullopt if the index is out of range.
template <typename Table> auto valueAt(const Table &table, int index) {
    const bool isValid = index >= 0 && index < std::ssize(table);
    return isValid ? std::optional(table[size_t(index)].value) : std::nullopt;
}

/// The choice with the current value and its help.
template <typename Table, typename Value>
DeliveryChoice choice(const Table &table, const Value &value) {
    const int index = indexOf(table, value);
    const char *const help = index < 0 ? "" : table[size_t(index)].help;
    return {labels(table), index, QString::fromUtf8(help)};
}

} // namespace corvane::segments
