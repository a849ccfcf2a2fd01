#pragma once

#include "platform/Clock.h"
#include "platform/Failure.h"

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>
#include <QVersionNumber>

namespace corvane {

/// What a feed says is there.
struct AvailableVersion {
    QVersionNumber version;
    QUrl page; ///< where a person can get it; may be empty

    bool operator==(const AvailableVersion &) const = default;
};

/// The feed of versions: a JSON object, and beside it, at the same address with ".sig" behind it,
/// its Ed25519 signature in base64. Main thread.
namespace updateFeed {

/// Why a feed isn't believed.
class FeedError : public Failure {
  public:
    using Failure::Failure;
};

/// Fetches both files, each within the limits of `UpdateDownload`, and reads them. `publicKey` is
/// in base64. Throws `FeedError`.
QCoro::Task<AvailableVersion> fetch(QUrl address, QByteArray publicKey, Clock &clock);

/// Checks the signature over exactly these bytes and reads them. Key and signature are in base64.
/// Throws `FeedError`.
AvailableVersion read(const QByteArray &feed, const QByteArray &signature,
                      const QByteArray &publicKey);

} // namespace updateFeed

} // namespace corvane
