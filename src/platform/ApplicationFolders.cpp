#include "platform/ApplicationFolders.h"

#include "platform/Paths.h"

#include <QDir>
#include <QStandardPaths>

#include <pwd.h>
#include <unistd.h>

namespace corvane::applicationFolders {

namespace {

/// Started without HOME, as by a system service, the user still has a home folder.
void giveHomeIfMissing() {
    if (!qEnvironmentVariableIsEmpty("HOME")) {
        return;
    }
    if (const passwd *const user = ::getpwuid(::geteuid())) {
        qputenv("HOME", user->pw_dir);
    }
}

} // namespace

QString applicationSupport() {
    giveHomeIfMissing();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return paths::joined(data.isEmpty() ? QDir::tempPath() : data, QStringLiteral("Corvane"));
}

std::unique_ptr<QSettings> userDefaults() {
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QStringLiteral("Corvane"), QStringLiteral("Corvane"));
}

} // namespace corvane::applicationFolders
