#include "delivery/NamingFields.h"

#include "delivery/ChoicePlaces.h"
#include "delivery/ExportTexts.h"

namespace corvane {

namespace {

using NumberingMode = ExportNamingOptions::NumberingMode;

constexpr std::array kPresets{NamingPreset::keepOriginal, NamingPreset::projectNameNumber,
                              NamingPreset::custom};
constexpr std::array kNumberings{NumberingMode::off, NumberingMode::originalFileNumber,
                                 NumberingMode::sequential};

} // namespace

NamingFields::NamingFields(Choices choices, QObject *parent)
    : QObject(parent), m_choices(std::move(choices)) {}

QStringList NamingFields::presets() {
    return choicePlaces::labels(kPresets, [](auto preset) { return ExportTexts::label(preset); });
}

QStringList NamingFields::numberings() {
    return choicePlaces::labels(kNumberings, [](auto mode) { return ExportTexts::label(mode); });
}

int NamingFields::preset() const {
    return choicePlaces::placeOf(kPresets, m_choices.preset());
}

int NamingFields::numbering() const {
    return choicePlaces::placeOf(kNumberings, naming().numberingMode);
}

void NamingFields::setPreset(int place) {
    if (const auto preset = choicePlaces::at(kPresets, place)) {
        m_choices.setPreset(*preset);
    }
}

template <typename Value>
void NamingFields::set(Value ExportNamingOptions::*field, const Value &value) {
    ExportNamingOptions options = naming();
    options.*field = value;
    m_choices.setNaming(options);
}

void NamingFields::setKeepOriginalForWholeVideos(bool keep) {
    set(&ExportNamingOptions::keepOriginalForWholeVideos, keep);
}

void NamingFields::setBaseName(const QString &text) {
    set(&ExportNamingOptions::baseName, text.isEmpty() ? std::nullopt : std::optional(text));
}

void NamingFields::setIncludeShootDate(bool include) {
    set(&ExportNamingOptions::includeShootDate, include);
}

void NamingFields::setIncludeOriginalFilename(bool include) {
    set(&ExportNamingOptions::includeOriginalFilename, include);
}

void NamingFields::setIncludeOriginalFileNumber(bool include) {
    set(&ExportNamingOptions::includeOriginalFileNumber, include);
}

void NamingFields::setNumbering(int place) {
    if (const auto mode = choicePlaces::at(kNumberings, place)) {
        set(&ExportNamingOptions::numberingMode, *mode);
    }
}

void NamingFields::setIncludeSubclipLabel(bool include) {
    set(&ExportNamingOptions::includeSubclipLabel, include);
}

void NamingFields::setIncludeSelectType(bool include) {
    set(&ExportNamingOptions::includeSelectType, include);
}

} // namespace corvane
