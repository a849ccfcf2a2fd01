#pragma once

#include <QStringList>

#include <algorithm>
#include <optional>

/// Maps the values of a choice to the segments of the control that shows them.
namespace corvane::segments {

/// Index of the value, or -1.
template <typename Values, typename Value> int indexOf(const Values &values, const Value &value) {
    const auto found = std::ranges::find(values, value);
    return found == std::ranges::end(values) ? -1 : int(found - std::ranges::begin(values));
}

/// The value at the index, or nullopt if the index is out of range.
template <typename Values> auto valueAt(const Values &values, int index) {
    const bool isValid = index >= 0 && index < std::ssize(values);
    return isValid ? std::optional<typename Values::value_type>(values[index]) : std::nullopt;
}

template <typename Values, typename Label>
QStringList labels(const Values &values, const Label &label) {
    QStringList texts;
    for (const auto &value : values) {
        texts.append(label(value));
    }
    return texts;
}

} // namespace corvane::segments
