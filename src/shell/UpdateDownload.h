#pragma once

#include "platform/Clock.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace corvane {

/// One small file from an address that is kept within limits of size, time and redirects, and to
/// addresses that may be fetched from. Main thread.
class UpdateDownload : public QObject {
    Q_OBJECT

  public:
    static constexpr qint64 kSizeLimit = 64 << 10;
    static constexpr int kRedirectLimit = 3;
    static constexpr std::chrono::milliseconds kPatience{15'000};

    /// Over a network only https; on the machine itself http too.
    static bool mayFetch(const QUrl &address);

    /// Begins. The address must be one that may be fetched from, and the clock outlives this.
    UpdateDownload(const QUrl &address, Clock &clock);

    /// Once finished: why there is no content, or an empty text.
    QString problem() const;
    QByteArray content() { return m_reply->readAll(); }

  Q_SIGNALS:
    /// Raised from the event loop, so that a receiver may delete this.
    void finished();

  private:
    void start(const QUrl &address);
    void endOrFollow();
    void checkSize(qint64 received, qint64 total);
    void breakOff(const QString &why);

    QNetworkAccessManager m_network;
    QNetworkReply *m_reply = nullptr; ///< the manager's child, of the last address
    std::unique_ptr<Clock::Timer> m_timer;
    QString m_problem;
    int m_redirects = 0;
};

} // namespace corvane
