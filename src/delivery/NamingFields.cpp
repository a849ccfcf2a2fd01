#include "delivery/NamingFields.h"

#include "delivery/Segments.h"

namespace corvane {

namespace {

using NumberingMode = ExportNamingOptions::NumberingMode;

constexpr std::array<segments::Segment<NamingPreset>, 3> kPresets{{
    {NamingPreset::keepOriginal, "Keep original"},
    {NamingPreset::projectNameNumber, "Project name and number"},
    {NamingPreset::custom, "Custom"},
}};
constexpr std::array<segments::Segment<NumberingMode>, 3> kNumberings{{
    {NumberingMode::off, "Off"},
    {NumberingMode::originalFileNumber, "Original file number"},
    {NumberingMode::sequential, "Sequential (001…)"},
}};

} // namespace

NamingFields::NamingFields(DeliveryFlow &flow, QObject *parent) : QObject(parent), m_flow(flow) {
    connect(&flow, &DeliveryFlow::choicesChanged, this, &NamingFields::changed);
}

QStringList NamingFields::presets() {
    return segments::labels(kPresets);
}

QStringList NamingFields::numberings() {
    return segments::labels(kNumberings);
}

int NamingFields::preset() const {
    return segments::indexOf(kPresets, m_flow.choices().namingPreset);
}

int NamingFields::numbering() const {
    return segments::indexOf(kNumberings, naming().numberingMode);
}

void NamingFields::setPreset(int index) {
    if (const auto preset = segments::valueAt(kPresets, index)) {
        m_flow.setNamingPreset(*preset);
    }
}

template <typename Value>
void NamingFields::set(Value ExportNamingOptions::*field, const Value &value) {
    ExportNamingOptions options = naming();
    options.*field = value;
    m_flow.setNaming(options);
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

void NamingFields::setNumbering(int index) {
    if (const auto mode = segments::valueAt(kNumberings, index)) {
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
