#include "delivery/ExportNaming.h"

#include "platform/Paths.h"
#include "transfer/NameReserver.h"

namespace corvane {

namespace {

bool isForbiddenInNames(QChar character) {
    const char16_t code = character.unicode();
    return code < 32 || code == 127 || code == u'/' || code == u':' || code == u'\\';
}

QString padded(int sequence) {
    return QString::asprintf("%03d", sequence);
}

/// Returns the valid characters of the extension with its point, or an empty text.
QString outputExtension(const ExportNameParts &parts) {
    if (parts.mode == ExportBatch::Mode::accurateTranscode) {
        return QStringLiteral(".mp4");
    }
    const QString extension = paths::split(parts.originalFilename).extension.mid(1);
    const QString clean = sanitizeNameComponent(extension);
    return clean.isEmpty() ? QString() : QLatin1Char('.') + clean;
}

QStringList numberTokens(const ExportNameParts &parts) {
    using NumberingMode = ExportNamingOptions::NumberingMode;
    const auto number = [&parts] {
        return originalFileNumber(parts.originalFilename).value_or(QString());
    };
    const QString wanted = parts.options.includeOriginalFileNumber ? number() : QString();
    switch (parts.options.numberingMode) {
    case NumberingMode::off:
        return {wanted};
    case NumberingMode::sequential:
        return {padded(parts.sequence), wanted};
    case NumberingMode::originalFileNumber:
        break;
    }
    const QString found = number();
    return {found.isEmpty() ? padded(parts.sequence) : found};
}

QString subclipToken(const ExportNameParts &parts) {
    if (parts.kind != ExportRowKind::subclip || !parts.options.includeSubclipLabel) {
        return {};
    }
    const QString label = parts.subclipLabel.value_or(QString()).trimmed();
    return label.isEmpty() ? QStringLiteral("subclip-%1").arg(parts.subclipIndex.value_or(0))
                           : sanitizeNameComponent(label);
}

QString selectTypeToken(const ExportNameParts &parts) {
    if (!parts.options.includeSelectType) {
        return {};
    }
    return parts.kind == ExportRowKind::subclip ? QStringLiteral("subclip")
                                                : QStringLiteral("select");
}

QString joinedTokens(const ExportNameParts &parts, const QString &originalStem) {
    const ExportNamingOptions &options = parts.options;
    QStringList tokens;
    tokens.append(options.includeShootDate ? parts.shootDate.value_or(QString()) : QString());
    tokens.append(sanitizeNameComponent(options.baseName.value_or(QString()).trimmed()));
    tokens.append(numberTokens(parts));
    tokens.append(options.includeOriginalFilename ? originalStem : QString());
    tokens.append(subclipToken(parts));
    tokens.append(selectTypeToken(parts));
    tokens.removeAll(QString());
    return tokens.join(QLatin1Char('_'));
}

std::optional<bool> switchValue(const QString &text) {
    if (text == QLatin1String("true") || text == QLatin1String("on")) {
        return true;
    }
    if (text == QLatin1String("false") || text == QLatin1String("off")) {
        return false;
    }
    return std::nullopt;
}

void setNamingField(bool &field, const QString &key, const QString &value) {
    const auto chosen = switchValue(value);
    if (!chosen) {
        throw NamingOptionError::invalidValue(key, value);
    }
    field = *chosen;
}

void setNamingField(std::optional<QString> &field, const QString &, const QString &value) {
    field = value.isEmpty() ? std::nullopt : std::optional(value);
}

void setNamingField(ExportNamingOptions::NumberingMode &field, const QString &key,
                    const QString &value) {
    const auto chosen =
        fromRawValue<ExportNamingOptions::NumberingMode>(value.toUtf8().toStdString());
    if (!chosen) {
        throw NamingOptionError::invalidValue(key, value);
    }
    field = *chosen;
}

} // namespace

NamingOptionError NamingOptionError::unknownKey(const QString &key) {
    return NamingOptionError(QStringLiteral("There is no naming option \"%1\".").arg(key));
}

NamingOptionError NamingOptionError::invalidValue(const QString &key, const QString &value) {
    return NamingOptionError(
        QStringLiteral("The naming option \"%1\" can't be \"%2\".").arg(key, value));
}

void applyPreset(ExportNamingOptions &options, NamingPreset preset,
                 const std::optional<QString> &projectDisplayName) {
    if (preset == NamingPreset::custom) {
        return;
    }
    const bool keepsOriginal = preset == NamingPreset::keepOriginal;
    const QString name = projectDisplayName.value_or(QString()).trimmed();
    options = {.keepOriginalForWholeVideos = keepsOriginal,
               .includeOriginalFilename = keepsOriginal,
               .numberingMode = keepsOriginal ? ExportNamingOptions::NumberingMode::off
                                              : ExportNamingOptions::NumberingMode::sequential,
               .includeSubclipLabel = true};
    if (!keepsOriginal) {
        options.baseName = name.isEmpty() ? QStringLiteral("Project") : name;
    }
}

void setNamingOption(ExportNamingOptions &options, const QString &key, const QString &value) {
    bool isKnown = false;
    const auto setIfNamed = [&](const auto &field) {
        if (key == QLatin1String(field.name.data(), qsizetype(field.name.size()))) {
            setNamingField(options.*field.member, key, value);
            isKnown = true;
        }
    };
    std::apply([&](const auto &...field) { (setIfNamed(field), ...); },
               JSONFields<ExportNamingOptions>::table);
    if (!isKnown) {
        throw NamingOptionError::unknownKey(key);
    }
}

QString sanitizeNameComponent(const QString &text) {
    QString clean = text;
    clean.removeIf(isForbiddenInNames);
    clean = clean.simplified();
    qsizetype points = 0;
    while (points < clean.size() && clean.at(points) == QLatin1Char('.')) {
        ++points;
    }
    clean = clean.mid(points).trimmed();
    // Only points may be left after the leading points and a space.
    const bool isOnlyPoints = clean == QLatin1String(".") || clean == QLatin1String("..");
    return isOnlyPoints ? QString() : clean;
}

std::optional<QString> originalFileNumber(const QString &fileName) {
    constexpr qsizetype kFewestDigits = 3;
    const QString stem = paths::split(fileName).stem;
    qsizetype digits = stem.size();
    while (digits > 0 && stem.at(digits - 1).isDigit()) {
        --digits;
    }
    const auto isTokenStart = [&stem](qsizetype at) {
        return at == 0 || stem.at(at - 1) == QLatin1Char('_') ||
               stem.at(at - 1) == QLatin1Char('-');
    };
    const bool hasLetter = digits > 0 && stem.at(digits - 1) >= QLatin1Char('A') &&
                           stem.at(digits - 1) <= QLatin1Char('Z');
    const qsizetype start = hasLetter ? digits - 1 : digits;
    if (stem.size() - digits < kFewestDigits || !isTokenStart(start)) {
        return std::nullopt;
    }
    return stem.mid(start);
}

QString buildExportName(const ExportNameParts &parts) {
    const bool keepsName = parts.mode == ExportBatch::Mode::fastCopy &&
                           parts.kind == ExportRowKind::wholeClip &&
                           parts.options.keepOriginalForWholeVideos;
    if (keepsName) {
        const QString original = sanitizeNameComponent(parts.originalFilename);
        if (!original.isEmpty()) {
            return original;
        }
    }
    const QString originalStem = paths::split(parts.originalFilename).stem;
    QString stem = sanitizeNameComponent(joinedTokens(parts, originalStem));
    if (stem.isEmpty()) {
        stem = sanitizeNameComponent(originalStem);
    }
    if (stem.isEmpty()) {
        stem = QStringLiteral("untitled");
    }
    return stem + outputExtension(parts);
}

QString uniqueExportName(const QString &name, const QSet<QString> &usedNames,
                         const QSet<QString> &usedStems) {
    qint64 firstNumber = NameReserver::kUnnumbered;
    return NameReserver::firstFree(name, usedNames, usedStems, firstNumber,
                                   NameReserver::systemSeconds);
}

} // namespace corvane
