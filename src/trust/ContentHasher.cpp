#include "trust/ContentHasher.h"

#include "platform/Cancellation.h"
#include "platform/Paths.h"
#include "trust/SampledDigest.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>

namespace corvane::ContentHasher {

namespace {

constexpr qsizetype kSaltSize = 16;
constexpr qsizetype kDigestDigits = 64;
const QString kFullPrefix = QStringLiteral("3:");
const QString kSampledPrefix = QStringLiteral("2:");

bool isLowerHexDigit(QChar character) {
    return (character >= u'0' && character <= u'9') || (character >= u'a' && character <= u'f');
}

bool isHexDigit(QChar character) {
    return isLowerHexDigit(character) || (character >= u'A' && character <= u'F');
}

/// Parses an anchor in one of the two salted formats.
std::optional<FullAnchor> parseSalted(const QString &anchor, const QString &prefix) {
    constexpr qsizetype kSaltDigits = 2 * kSaltSize;
    const QStringView rest = QStringView(anchor).mid(prefix.size());
    if (!anchor.startsWith(prefix) || rest.size() <= kSaltDigits) {
        return std::nullopt;
    }
    const QStringView salt = rest.left(kSaltDigits);
    if (!std::ranges::all_of(salt, isHexDigit)) {
        return std::nullopt;
    }
    return FullAnchor{QByteArray::fromHex(salt.toLatin1()), rest.mid(kSaltDigits).toString()};
}

/// Parses an anchor in one of the two older formats. A bare anchor has an empty salt.
std::optional<FullAnchor> parseLegacyAnchor(const QString &anchor) {
    if (anchor.startsWith(kSampledPrefix)) {
        return parseSalted(anchor, kSampledPrefix);
    }
    if (anchor.size() != kDigestDigits || !std::ranges::all_of(anchor, isLowerHexDigit)) {
        return std::nullopt;
    }
    return FullAnchor{{}, anchor};
}

/// Throws `Cancelled` once `stop` is requested.
QString fullDigest(const QString &path, const QByteArray &salt, const std::stop_token &stop = {},
                   const BlockHandler &onBlock = {}) {
    const HashedFile file(path);
    StreamingAnchorHasher hasher(salt);
    file.forEachBlock([&](const char *bytes, qint64 count) {
        throwIfStopRequested(stop);
        hasher.update(bytes, count);
        if (onBlock) {
            onBlock(count);
        }
    });
    return hasher.finalizeDigest();
}

/// A file that can't be read to its end counts as changed.
template <typename Digest>
AnchorVerification compareDigest(const QString &expected, Digest digest) {
    try {
        return digest() == expected ? AnchorVerification::matches : AnchorVerification::mismatches;
    } catch (const Failure &) {
        return AnchorVerification::mismatches;
    }
}

AnchorVerification verifyFull(const FullAnchor &anchor, const QString &path,
                              const std::stop_token &stop = {}) {
    return compareDigest(anchor.expectedDigest,
                         [&] { return fullDigest(path, anchor.salt, stop); });
}

} // namespace

HashError HashError::statFailed(const QString &path, const QString &error) {
    return {Kind::statFailed,
            QStringLiteral("Failed to stat %1: %2").arg(paths::lastComponent(path), error)};
}

HashError HashError::readFailed(const QString &path, const QString &error) {
    return {Kind::readFailed,
            QStringLiteral("Failed to read %1: %2").arg(paths::lastComponent(path), error)};
}

HashError HashError::notARegularFile(const QString &path) {
    return {Kind::notARegularFile, QStringLiteral("%1 is not a regular file, refusing to hash it")
                                       .arg(paths::lastComponent(path))};
}

StreamingAnchorHasher::StreamingAnchorHasher(const QByteArray &salt) {
    m_hasher.update(salt);
}

void StreamingAnchorHasher::update(const char *bytes, qint64 count) {
    m_hasher.update(bytes, count);
    m_totalBytes += quint64(count);
}

QString StreamingAnchorHasher::finalizeDigest() {
    return digestWithLength(m_hasher, m_totalBytes);
}

QByteArray randomSalt() {
    std::array<quint32, kSaltSize / sizeof(quint32)> words{};
    QRandomGenerator::system()->fillRange(words.data(), qsizetype(words.size()));
    return QByteArray(reinterpret_cast<const char *>(words.data()), kSaltSize);
}

QString fullAnchor(const QByteArray &salt, const QString &digest) {
    return kFullPrefix + QString::fromLatin1(salt.toHex()) + digest;
}

QString makeAnchor(const QString &path, const std::stop_token &stop, const BlockHandler &onBlock) {
    const QByteArray salt = randomSalt();
    return fullAnchor(salt, fullDigest(path, salt, stop, onBlock));
}

AnchorVerification verifyAnchor(const QString &anchor, const QString &path) {
    if (const auto full = parseFullAnchor(anchor)) {
        return verifyFull(*full, path);
    }
    const auto legacy = parseLegacyAnchor(anchor);
    if (!legacy) {
        return AnchorVerification::unverifiable;
    }
    return compareDigest(legacy->expectedDigest,
                         [&] { return sampledDigest(HashedFile(path), legacy->salt); });
}

QHash<QString, AnchorVerification> verifyAnchors(const QHash<QString, FullAnchor> &pathsToAnchors,
                                                 const std::function<bool()> &isCancelled,
                                                 std::stop_token abort) {
    QHash<QString, AnchorVerification> verdicts;
    try {
        for (const auto &[path, anchor] : pathsToAnchors.asKeyValueRange()) {
            if (isCancelled && isCancelled()) {
                break;
            }
            verdicts.insert(path, verifyFull(anchor, path, abort));
        }
    } catch (const Cancelled &) {
        // The verdicts of the earlier files are returned.
    }
    return verdicts;
}

std::optional<FullAnchor> parseFullAnchor(const QString &anchor) {
    return parseSalted(anchor, kFullPrefix);
}

AnchorUpgrade upgradeLegacyAnchor(const QString &legacyAnchor, const QString &path) {
    using Result = AnchorUpgrade::Result;
    const auto legacy = parseLegacyAnchor(legacyAnchor);
    if (!legacy) {
        return {.result = Result::notVerifiable};
    }
    const HashedFile file(path);
    const QByteArray salt = randomSalt();
    StreamingAnchorHasher hasher(salt);
    StreamingSampledDigest sampled(file.size(), legacy->salt);
    file.forEachBlock([&](const char *bytes, qint64 count) {
        hasher.update(bytes, count);
        sampled.update(bytes, count);
    });
    if (sampled.finalizeDigest() != legacy->expectedDigest) {
        return {.result = Result::mismatch};
    }
    return {.result = Result::upgraded, .anchor = fullAnchor(salt, hasher.finalizeDigest())};
}

QString duplicateKey(const QString &path) {
    return sampledDigest(HashedFile(path), {});
}

} // namespace corvane::ContentHasher
