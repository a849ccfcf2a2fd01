#pragma once

#include "document/Project.h"

#include <QSet>

/// Turns one planned output into a file name. Pure text work; any thread.
namespace corvane {

enum class NamingPreset { keepOriginal, projectNameNumber, custom };
enum class ExportRowKind { wholeClip, subclip };

/// Sets the choices that the preset stands for. `custom` leaves them as the last preset left them.
/// `projectDisplayName` becomes the base name where the preset asks for one.
void applyPreset(ExportNamingOptions &options, NamingPreset preset,
                 const std::optional<QString> &projectDisplayName);

/// A naming choice was set by a key or a value that doesn't exist.
class NamingOptionError : public Failure {
  public:
    static NamingOptionError unknownKey(const QString &key);
    static NamingOptionError invalidValue(const QString &key, const QString &value);

  private:
    using Failure::Failure;
};

/// Sets one choice by its field's name. A switch takes "true" or "false", "on" or "off",
/// "numberingMode" one of its raw values, "baseName" any text, the empty one for none. Throws
/// `NamingOptionError`.
void setNamingOption(ExportNamingOptions &options, const QString &key, const QString &value);

/// The text as it may stand in a file name; possibly empty.
QString sanitizeNameComponent(const QString &text);

/// The number that a camera put at the end of a file's stem ("IMG_1234.MOV": "1234", "C0012.MP4":
/// "C0012"), if there is one.
std::optional<QString> originalFileNumber(const QString &fileName);

/// What one name is built from.
struct ExportNameParts {
    ExportRowKind kind = ExportRowKind::wholeClip;
    ExportBatch::Mode mode = ExportBatch::Mode::fastCopy;
    QString originalFilename;
    std::optional<QString> subclipLabel;
    std::optional<int> subclipIndex;
    ExportNamingOptions options;
    std::optional<QString> shootDate;
    int sequence = 1; ///< the output's place in the run, from 1
};

/// The name of an output; its stem is never empty. Other outputs may have the same one.
QString buildExportName(const ExportNameParts &parts);

/// The name, or the name with the first number behind its stem that makes it differ from every used
/// name and its stem from every used stem. Both sets hold lower-case text and aren't changed. See
/// `NameReserver` for many names in a row.
QString uniqueExportName(const QString &name, const QSet<QString> &usedNames,
                         const QSet<QString> &usedStems);

template <> struct RawValues<NamingPreset> {
    static constexpr std::array<std::pair<NamingPreset, std::string_view>, 3> table{{
        {NamingPreset::keepOriginal, "keepOriginal"},
        {NamingPreset::projectNameNumber, "projectNameNumber"},
        {NamingPreset::custom, "custom"},
    }};
};

template <> struct RawValues<ExportRowKind> {
    static constexpr std::array<std::pair<ExportRowKind, std::string_view>, 2> table{{
        {ExportRowKind::wholeClip, "whole-clip"},
        {ExportRowKind::subclip, "subclip"},
    }};
};

} // namespace corvane
