#pragma once

#include <QLocalServer>
#include <QObject>

#include <chrono>
#include <optional>

class QLocalSocket;

namespace corvane {

/// Passes a file from a second start of the application to the running one, through a local socket
/// named "handover" in the application's data folder (or in the runtime folder if the path is too
/// long for a socket). The process that holds the `InstanceLock` listens, for processes of the same
/// user only. docs/file-formats.md describes the message. Main thread only.
class InstanceHandover : public QObject {
    Q_OBJECT

  public:
    /// Longer messages are refused. In bytes.
    static constexpr qint64 kMessageLimit = 64 << 10;

    /// Starts to listen, replacing the socket of a process that ended. On failure `isListening` is
    /// false, and a second start only reports that the data folder is in use.
    explicit InstanceHandover(const QString &dataFolder, QObject *parent = nullptr);

    bool isListening() const { return m_server.isListening(); }

    /// Sends an absolute path, or an empty string for no file, to the listening process. Returns
    /// false if it is not accepted within `timeout`. Blocks; needs no event loop.
    static bool handOver(const QString &dataFolder, const QString &file,
                         std::chrono::milliseconds timeout);

  Q_SIGNALS:
    /// The application was started again; `file` is empty if it was started without one.
    void startedAgain(const QString &file);

  private:
    void acceptConnections();
    void readMessage(QLocalSocket *peer);

    QLocalServer m_server;
};

} // namespace corvane
