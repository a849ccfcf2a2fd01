#pragma once

#include "platform/Clock.h"
#include "platform/Failure.h"

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>
#include <QVersionNumber>

namespace corvane {

/// The version announced by a feed.
struct AvailableVersion {
    QVersionNumber version;
    QUrl page; ///< web page of the version; may be empty

    bool operator==(const AvailableVersion &) const = default;
};

/// The signed update feed; docs/file-formats.md describes it. Main thread only.
namespace updateFeed {

/// A feed that is unavailable, malformed or not signed correctly.
class FeedError : public Failure {
  public:
    using Failure::Failure;
};

/// Downloads the feed and its signature and reads them. `publicKey` is base64. Throws `FeedError`.
QCoro::Task<AvailableVersion> fetch(QUrl address, QByteArray publicKey, Clock &clock);

/// Verifies the signature over the exact bytes of the feed and parses it. Key and signature are
/// base64. Throws `FeedError`.
AvailableVersion read(const QByteArray &feed, const QByteArray &signature,
                      const QByteArray &publicKey);

} // namespace updateFeed

} // namespace corvane
