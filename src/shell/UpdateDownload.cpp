#include "shell/UpdateDownload.h"

#include <QHostAddress>

namespace corvane {

bool UpdateDownload::isAllowedAddress(const QUrl &address) {
    const QString host = address.host();
    const bool isLocal = host == QStringLiteral("localhost") || QHostAddress(host).isLoopback();
    return address.isValid() && !host.isEmpty() &&
           (address.scheme() == QStringLiteral("https") ||
            (address.scheme() == QStringLiteral("http") && isLocal));
}

UpdateDownload::UpdateDownload(const QUrl &address, Clock &clock) {
    start(address);
    m_timer = clock.after(kTimeout, [this] { abort(QStringLiteral("it took too long")); });
}

void UpdateDownload::start(const QUrl &address) {
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    m_reply = m_network.get(request);
    connect(m_reply, &QNetworkReply::downloadProgress, this, &UpdateDownload::enforceSizeLimit);
    connect(m_reply, &QNetworkReply::finished, this, &UpdateDownload::handleReply,
            Qt::QueuedConnection);
}

QString UpdateDownload::problem() const {
    if (m_problem.isEmpty() && m_reply->error() != QNetworkReply::NoError) {
        return m_reply->errorString();
    }
    return m_problem;
}

void UpdateDownload::handleReply() {
    const QUrl target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
    if (m_problem.isEmpty() && !target.isEmpty()) {
        const QUrl address = m_reply->url().resolved(target);
        if (++m_redirects > kRedirectLimit) {
            m_problem = QStringLiteral("it redirects more than %1 times").arg(kRedirectLimit);
        } else if (isAllowedAddress(address)) {
            start(address);
            return;
        } else {
            m_problem = QStringLiteral("it redirects to %1").arg(address.toString());
        }
    }
    Q_EMIT finished();
}

void UpdateDownload::enforceSizeLimit(qint64 received, qint64 total) {
    if (std::max(received, total) > kSizeLimit) {
        abort(QStringLiteral("it is larger than %1 bytes").arg(kSizeLimit));
    }
}

void UpdateDownload::abort(const QString &reason) {
    if (m_problem.isEmpty()) {
        m_problem = reason;
        m_reply->abort(); // no-op if it is finished
    }
}

} // namespace corvane
