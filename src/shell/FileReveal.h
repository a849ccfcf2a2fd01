#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QUrl>

#include <functional>

namespace corvane {

/// Selects a file in the desktop's file browser. If no file browser responds, opens its folder with
/// the desktop's default program. Main thread only.
class FileReveal : public QObject {
    Q_OBJECT

  public:
    using OpenFolder = std::function<bool(const QUrl &folder)>;

    /// `bus` is the session bus of the file browser.
    explicit FileReveal(QObject *parent = nullptr);
    FileReveal(QDBusConnection bus, OpenFolder openFolder, QObject *parent = nullptr);

    /// Sends the request and returns at once.
    Q_INVOKABLE void reveal(const QString &path);

  private:
    void openFolderOf(const QString &path) const;

    QDBusConnection m_bus;
    OpenFolder m_openFolder;
};

} // namespace corvane
