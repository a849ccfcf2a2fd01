#include "platform/ApplicationFolders.h"

#include "platform/Paths.h"

#include <QDir>
#include <QStandardPaths>

namespace corvane::applicationFolders {

QString applicationSupport() {
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return paths::joined(data.isEmpty() ? QDir::tempPath() : data, QStringLiteral("Corvane"));
}

std::unique_ptr<QSettings> userDefaults() {
    return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                       QStringLiteral("Corvane"), QStringLiteral("Corvane"));
}

} // namespace corvane::applicationFolders
