#pragma once

#include "document/Project.h"

#include <QSet>

/// Builds file names of outputs. Pure functions.
namespace corvane {

enum class NamingPreset { keepOriginal, projectNameNumber, custom };
enum class ExportRowKind { wholeClip, subclip };

/// Sets the options of the preset. `custom` changes nothing. `projectDisplayName` is the base name
/// of `projectNameNumber`.
void applyPreset(ExportNamingOptions &options, NamingPreset preset,
                 const std::optional<QString> &projectDisplayName);

/// An unknown naming option or an invalid value.
class NamingOptionError : public Failure {
  public:
    static NamingOptionError unknownKey(const QString &key);
    static NamingOptionError invalidValue(const QString &key, const QString &value);

  private:
    using Failure::Failure;
};

/// Sets the option with that field name. A switch accepts "true", "false", "on" and "off",
/// "numberingMode" its raw values, "baseName" any text, of which an empty one clears it. Throws
/// `NamingOptionError`.
void setNamingOption(ExportNamingOptions &options, const QString &key, const QString &value);

/// Removes what is invalid in a file name. The result may be empty.
QString sanitizeNameComponent(const QString &text);

/// Returns the camera's number at the end of the stem ("IMG_1234.MOV": "1234", "C0012.MP4":
/// "C0012"), or nullopt.
std::optional<QString> originalFileNumber(const QString &fileName);

/// The inputs of a name.
struct ExportNameParts {
    ExportRowKind kind = ExportRowKind::wholeClip;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    QString originalFilename;
    std::optional<QString> subclipLabel;
    std::optional<int> subclipIndex;
    ExportNamingOptions options;
    std::optional<QString> shootDate;
    int sequence = 1; ///< position in the run, from 1
};

/// Returns a name with a stem that is not empty. It need not be unique.
QString buildExportName(const ExportNameParts &parts);

/// Returns the name, with the first number after its stem that makes the name and the stem unused.
/// Both sets contain lower-case text. `NameReserver` is faster for many names.
QString uniqueExportName(const QString &name, const QSet<QString> &usedNames,
                         const QSet<QString> &usedStems);

template <>
inline constexpr auto rawValues<NamingPreset> = std::to_array<RawValue<NamingPreset>>({
    {NamingPreset::keepOriginal, "keepOriginal"},
    {NamingPreset::projectNameNumber, "projectNameNumber"},
    {NamingPreset::custom, "custom"},
});

template <>
inline constexpr auto rawValues<ExportRowKind> = std::to_array<RawValue<ExportRowKind>>({
    {ExportRowKind::wholeClip, "whole-clip"},
    {ExportRowKind::subclip, "subclip"},
});

} // namespace corvane
