#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QUrl>

#include <functional>

namespace corvane {

/// Shows a file in the desktop's file browser, marked in its folder; where no file browser answers,
/// the folder is opened as the desktop opens folders. Main thread.
class FileReveal : public QObject {
    Q_OBJECT

  public:
    using OpenFolder = std::function<bool(const QUrl &folder)>;

    /// `bus` is where the file browser is looked for.
    explicit FileReveal(QObject *parent = nullptr);
    FileReveal(QDBusConnection bus, OpenFolder openFolder, QObject *parent = nullptr);

    /// Asks for it and returns at once.
    Q_INVOKABLE void reveal(const QString &path);

  private:
    void openFolderOf(const QString &path) const;

    QDBusConnection m_bus;
    OpenFolder m_openFolder;
};

} // namespace corvane
