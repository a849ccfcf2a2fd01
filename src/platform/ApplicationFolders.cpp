#include "platform/ApplicationFolders.h"

#include "platform/Paths.h"

#include <QDir>
#include <QStandardPaths>

#include <pwd.h>
#include <unistd.h>

namespace corvane::applicationFolders {

namespace {

/// Sets HOME from the user database if it is unset, as in a system service.
void setHomeIfMissing() {
    if (!qEnvironmentVariableIsEmpty("HOME")) {
        return;
    }
    if (const passwd *const user = ::getpwuid(::geteuid())) {
        qputenv("HOME", user->pw_dir);
    }
}

} // namespace

QString applicationSupport() {
    setHomeIfMissing();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return paths::joined(data.isEmpty() ? QDir::tempPath() : data, QStringLiteral("Corvane"));
}

std::unique_ptr<QSettings> userDefaults() {
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QStringLiteral("Corvane"), QStringLiteral("Corvane"));
}

} // namespace corvane::applicationFolders
