#pragma once

#include <QLocalServer>
#include <QObject>

#include <chrono>
#include <optional>

class QLocalSocket;

namespace corvane {

/// How a second start of the application reaches the first: a socket named "handover" in the
/// application's data folder, or in the runtime folder where that name is too long for a socket.
/// The process that holds the `InstanceLock` listens. Only the user's own processes are heard.
///
/// A message is one block of `QDataStream`: the path of the file to open, empty for none. It is
/// answered by one byte once it was understood.
class InstanceHandover : public QObject {
    Q_OBJECT

  public:
    /// Longer messages aren't read.
    static constexpr qint64 kMessageLimit = 64 << 10;

    /// Listens, in the place of whoever did so before and is gone. Where that can't be,
    /// `isListening` is false and a second start is told who holds the data.
    explicit InstanceHandover(const QString &dataFolder, QObject *parent = nullptr);

    bool isListening() const { return m_server.isListening(); }

    /// Hands a file (an absolute path, or an empty text for none) to the process that listens.
    /// False where nobody takes it within `patience`. Blocks, and needs no event loop.
    static bool handOver(const QString &dataFolder, const QString &file,
                         std::chrono::milliseconds patience);

  Q_SIGNALS:
    /// Somebody started the application again; `file` is empty where no file was named.
    void startedAgain(const QString &file);

  private:
    void take();
    void read(QLocalSocket *peer);

    QLocalServer m_server;
};

} // namespace corvane
