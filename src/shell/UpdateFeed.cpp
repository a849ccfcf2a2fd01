#include "shell/UpdateFeed.h"

#include "platform/Ed25519.h"
#include "platform/JSONDocument.h"
#include "shell/UpdateDownload.h"

#include <QCoroSignal>

namespace corvane::updateFeed {

namespace {

QByteArray fromBase64(const QByteArray &text) {
    const auto decoded =
        QByteArray::fromBase64Encoding(text.trimmed(), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? *decoded : QByteArray();
}

QString textMember(const JSONValue &object, const char *key) {
    const JSONValue value =
        object.object() ? object.object()->value(QLatin1String(key)) : JSONValue();
    return value.string() ? *value.string() : QString();
}

AvailableVersion decodeFeed(const QByteArray &feed) {
    JSONValue object;
    try {
        object = JSONDocument::parse(feed).root().toValue();
    } catch (const JSONSyntaxError &) {
        throw FeedError(QStringLiteral("the feed is not valid JSON"));
    }
    const QString text = textMember(object, "version");
    qsizetype end = 0;
    const QVersionNumber version = QVersionNumber::fromString(text, &end);
    if (version.isNull() || end != text.size()) {
        throw FeedError(QStringLiteral("the feed contains no version"));
    }
    const QUrl page(textMember(object, "page"), QUrl::StrictMode);
    return {.version = version, .page = UpdateDownload::isAllowedAddress(page) ? page : QUrl()};
}

QCoro::Task<QByteArray> download(QUrl address, Clock &clock) {
    if (!UpdateDownload::isAllowedAddress(address)) {
        throw FeedError(QStringLiteral("\"%1\" is not an https address").arg(address.toString()));
    }
    UpdateDownload running(address, clock);
    co_await qCoro(&running, &UpdateDownload::finished);
    if (!running.problem().isEmpty()) {
        throw FeedError(QStringLiteral("%1 could not be fetched: %2")
                            .arg(address.toString(), running.problem()));
    }
    co_return running.content();
}

} // namespace

AvailableVersion read(const QByteArray &feed, const QByteArray &signature,
                      const QByteArray &publicKey) {
    if (!ed25519::verify(fromBase64(publicKey), feed, fromBase64(signature))) {
        throw FeedError(QStringLiteral("the feed's signature doesn't match this build's key"));
    }
    return decodeFeed(feed);
}

QCoro::Task<AvailableVersion> fetch(QUrl address, QByteArray publicKey, Clock &clock) {
    QUrl signatureAddress = address;
    signatureAddress.setPath(address.path() + QStringLiteral(".sig"));
    const QByteArray feed = co_await download(address, clock);
    const QByteArray signature = co_await download(signatureAddress, clock);
    co_return read(feed, signature, publicKey);
}

} // namespace corvane::updateFeed
