#include "shell/FileReveal.h"

#include "platform/Paths.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>

namespace corvane {

FileReveal::FileReveal(QObject *parent)
    : FileReveal(QDBusConnection::sessionBus(), QDesktopServices::openUrl, parent) {}

FileReveal::FileReveal(QDBusConnection bus, OpenFolder openFolder, QObject *parent)
    : QObject(parent), m_bus(std::move(bus)), m_openFolder(std::move(openFolder)) {}

void FileReveal::reveal(const QString &path) {
    if (!m_bus.isConnected()) { // a call would never finish
        openFolderOf(path);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)} << QString();
    auto *const watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, path, watcher] {
        watcher->deleteLater();
        if (QDBusPendingReply<>(*watcher).isError()) {
            openFolderOf(path);
        }
    });
}

void FileReveal::openFolderOf(const QString &path) const {
    m_openFolder(QUrl::fromLocalFile(paths::parentFolder(path)));
}

} // namespace corvane
