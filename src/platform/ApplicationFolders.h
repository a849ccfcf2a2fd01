#pragma once

#include <QSettings>
#include <QString>

#include <memory>

/// Where the program keeps what outlives a project.
namespace corvane::applicationFolders {

/// The folder of the recent list and the registry of grants: "Corvane" in the user's data folder
/// ($XDG_DATA_HOME, else ~/.local/share), or in the temporary folder where there is none. It may
/// not exist yet.
QString applicationSupport();

/// The user defaults, in the user's configuration folder.
std::unique_ptr<QSettings> userDefaults();

} // namespace corvane::applicationFolders
