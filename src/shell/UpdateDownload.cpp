#include "shell/UpdateDownload.h"

#include <QHostAddress>

namespace corvane {

bool UpdateDownload::mayFetch(const QUrl &address) {
    const QString host = address.host();
    const bool isLocal = host == QStringLiteral("localhost") || QHostAddress(host).isLoopback();
    return address.isValid() && !host.isEmpty() &&
           (address.scheme() == QStringLiteral("https") ||
            (address.scheme() == QStringLiteral("http") && isLocal));
}

UpdateDownload::UpdateDownload(const QUrl &address, Clock &clock) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::UserVerifiedRedirectPolicy);
    request.setMaximumRedirectsAllowed(2 * kRedirectLimit); // they are counted here
    m_reply = m_network.get(request);
    connect(m_reply, &QNetworkReply::redirected, this, &UpdateDownload::follow);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &UpdateDownload::checkSize);
    connect(m_reply, &QNetworkReply::finished, this, &UpdateDownload::finished,
            Qt::QueuedConnection);
    m_timer = clock.after(kPatience, [this] { breakOff(QStringLiteral("it took too long")); });
}

QString UpdateDownload::problem() const {
    if (m_problem.isEmpty() && m_reply->error() != QNetworkReply::NoError) {
        return m_reply->errorString();
    }
    return m_problem;
}

void UpdateDownload::follow(const QUrl &address) {
    if (++m_redirects > kRedirectLimit) {
        breakOff(QStringLiteral("it leads on more than %1 times").arg(kRedirectLimit));
    } else if (mayFetch(address)) {
        Q_EMIT m_reply->redirectAllowed();
    } else {
        breakOff(QStringLiteral("it leads to %1").arg(address.toString()));
    }
}

void UpdateDownload::checkSize(qint64 received, qint64 total) {
    if (std::max(received, total) > kSizeLimit) {
        breakOff(QStringLiteral("it is larger than %1 bytes").arg(kSizeLimit));
    }
}

void UpdateDownload::breakOff(const QString &why) {
    if (m_problem.isEmpty()) {
        m_problem = why;
        m_reply->abort(); // nothing where it has ended
    }
}

} // namespace corvane
