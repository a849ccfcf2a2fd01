#pragma once

#include <QStringList>

#include <algorithm>
#include <optional>

/// One of a few values, as a row of segments shows it: by its place.
namespace corvane::choicePlaces {

/// The value's place, or -1.
template <typename Values, typename Value> int placeOf(const Values &values, const Value &value) {
    const auto found = std::ranges::find(values, value);
    return found == std::ranges::end(values) ? -1 : int(found - std::ranges::begin(values));
}

/// The value at a place; nothing where there is none.
template <typename Values> auto at(const Values &values, int place) {
    using Value = typename Values::value_type;
    const bool isOne = place >= 0 && place < std::ssize(values);
    return isOne ? std::optional<Value>(values[place]) : std::nullopt;
}

template <typename Values, typename Label>
QStringList labels(const Values &values, const Label &label) {
    QStringList texts;
    for (const auto &value : values) {
        texts.append(label(value));
    }
    return texts;
}

} // namespace corvane::choicePlaces
