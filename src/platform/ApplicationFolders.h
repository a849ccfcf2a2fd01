#pragma once

#include <QSettings>
#include <QString>

#include <memory>

/// The program's own folders and settings, independent of any project.
namespace corvane::applicationFolders {

/// The folder of the recent list and the registry of grants: "Corvane" in the user's data folder
/// ($XDG_DATA_HOME or ~/.local/share), or in the temporary folder if the user has none. It may be
/// missing.
QString applicationSupport();

/// The user's settings, an INI file in the user's configuration folder.
std::unique_ptr<QSettings> userDefaults();

} // namespace corvane::applicationFolders
