#include "cli/NamingArguments.h"

#include "cli/ArgumentValues.h"

#include <QHash>

namespace corvane {

namespace {

NamingPreset namingPresetOf(const QString &text) {
    const QHash<QString, NamingPreset> presets{
        {QStringLiteral("keep-original"), NamingPreset::keepOriginal},
        {QStringLiteral("project-name-number"), NamingPreset::projectNameNumber},
        {QStringLiteral("custom"), NamingPreset::custom}};
    const auto found = presets.constFind(text);
    if (found == presets.cend()) {
        argumentValues::failUnknown(text, QStringLiteral("--naming"),
                                    {QStringLiteral("keep-original"),
                                     QStringLiteral("project-name-number"),
                                     QStringLiteral("custom")});
    }
    return *found;
}

} // namespace

NamingArguments::NamingArguments(const CommandCall &call) {
    const QStringList texts = call.values("custom");
    for (const QString &text : texts) {
        const qsizetype separator = text.indexOf(QLatin1Char('='));
        if (separator < 0) {
            throw UsageError(QStringLiteral("--custom takes KEY=VALUE, not \"%1\".").arg(text));
        }
        m_fields.append({text.left(separator), text.mid(separator + 1)});
    }
    try {
        ExportNamingOptions unused;
        setFields(unused);
    } catch (const NamingOptionError &error) {
        throw UsageError(QStringLiteral("--custom: ") + error.description());
    }
    if (const auto naming = call.value("naming")) {
        m_preset = namingPresetOf(*naming);
    }
    if (!m_fields.isEmpty() && m_preset != NamingPreset::custom) {
        throw UsageError(QStringLiteral("--custom needs --naming custom."));
    }
}

QList<QCommandLineOption> NamingArguments::options() {
    return {valueOption("naming", "PRESET", "keep-original, project-name-number or custom."),
            valueOption("custom", "KEY=VALUE",
                        "One choice of the naming \"custom\". May be given more than once.")};
}

void NamingArguments::apply(DeliveryFlow &flow) const {
    flow.setNamingPreset(m_preset);
    ExportNamingOptions naming = flow.choices().naming;
    setFields(naming);
    flow.setNaming(naming);
}

void NamingArguments::setFields(ExportNamingOptions &options) const {
    for (const Field &field : m_fields) {
        setNamingOption(options, field.key, field.value);
    }
}

} // namespace corvane
