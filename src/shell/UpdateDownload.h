#pragma once

#include "platform/Clock.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace corvane {

/// Downloads one small file, with limits on its size, time and redirects, and on the addresses it
/// may come from. Main thread only.
class UpdateDownload : public QObject {
    Q_OBJECT

  public:
    static constexpr qint64 kSizeLimit = 64 << 10;
    static constexpr int kRedirectLimit = 3;
    static constexpr std::chrono::milliseconds kTimeout{15'000};

    /// True for https, and for http on the local machine.
    static bool isAllowedAddress(const QUrl &address);

    /// Starts the download. `isAllowedAddress(address)` must be true, and the clock must outlive
    /// this.
    UpdateDownload(const QUrl &address, Clock &clock);

    /// Why the download failed; empty if it succeeded. Valid after `finished`.
    QString problem() const;
    QByteArray content() { return m_reply->readAll(); }

  Q_SIGNALS:
    /// Emitted from the event loop; a receiver may delete this object.
    void finished();

  private:
    void start(const QUrl &address);
    void handleReply();
    void enforceSizeLimit(qint64 received, qint64 total);
    void abort(const QString &reason);

    QNetworkAccessManager m_network;
    QNetworkReply *m_reply = nullptr; ///< of the latest redirect; a child of the manager
    std::unique_ptr<Clock::Timer> m_timer;
    QString m_problem;
    int m_redirects = 0;
};

} // namespace corvane
