#include "shell/InstanceHandover.h"

#include "platform/Paths.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QStandardPaths>

#include <sys/un.h>

namespace corvane {

namespace {

constexpr char kAccepted = 1;

QString socketPath(const QString &dataFolder) {
    QString path = paths::joined(dataFolder, QStringLiteral("handover"));
    if (path.toUtf8().size() < qsizetype(sizeof(sockaddr_un::sun_path))) {
        return path;
    }
    const QByteArray digest =
        QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256).toHex();
    return paths::joined(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
                         QStringLiteral("corvane-") + QLatin1String(digest.left(16)));
}

bool isValidFile(const QString &file) {
    return file.isEmpty() || (QDir::isAbsolutePath(file) && !file.contains(QChar(u'\0')));
}

QByteArray handoverMessage(const QString &file) {
    QByteArray message;
    QDataStream stream(&message, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << file.toUtf8();
    return message;
}

} // namespace

InstanceHandover::InstanceHandover(const QString &dataFolder, QObject *parent) : QObject(parent) {
    const QString path = socketPath(dataFolder);
    QLocalServer::removeServer(path);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &InstanceHandover::acceptConnections);
    m_server.listen(path);
}

void InstanceHandover::acceptConnections() {
    while (QLocalSocket *const peer = m_server.nextPendingConnection()) {
        peer->setReadBufferSize(kMessageLimit);
        connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
        connect(peer, &QLocalSocket::readyRead, this, [this, peer] { readMessage(peer); });
        readMessage(peer);
    }
}

void InstanceHandover::readMessage(QLocalSocket *peer) {
    QDataStream stream(peer);
    stream.setVersion(QDataStream::Qt_6_4);
    stream.startTransaction();
    QByteArray path;
    stream >> path;
    if (!stream.commitTransaction()) {
        if (stream.status() == QDataStream::ReadCorruptData ||
            peer->bytesAvailable() >= kMessageLimit) {
            peer->abort();
        }
        return;
    }
    const QString file = QString::fromUtf8(path);
    if (!QUtf8StringView(path).isValidUtf8() || !isValidFile(file)) {
        peer->abort();
        return;
    }
    peer->write(&kAccepted, 1);
    peer->flush();
    peer->disconnectFromServer();
    Q_EMIT startedAgain(file);
}

bool InstanceHandover::handOver(const QString &dataFolder, const QString &file,
                                std::chrono::milliseconds timeout) {
    QDeadlineTimer deadline(timeout);
    QLocalSocket socket;
    socket.connectToServer(socketPath(dataFolder));
    if (!socket.waitForConnected(int(deadline.remainingTime()))) {
        return false;
    }
    socket.write(handoverMessage(file));
    while (socket.bytesAvailable() == 0) {
        if (!socket.waitForReadyRead(int(deadline.remainingTime()))) {
            break;
        }
    }
    char reply = 0;
    return socket.read(&reply, 1) == 1 && reply == kAccepted;
}

} // namespace corvane
