#pragma once

#include "platform/Failure.h"
#include "platform/Sha256.h"

#include <QHash>
#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

/// Anchors: short texts that tell later whether a file still is the file that they were taken from.
///
/// Three forms exist. Full: "3:", 32 hex digits of salt, 64 of the SHA-256 over the salt, the whole
/// file and its length. Sampled: "2:", salt, and the digest over salt, sampled ranges and length.
/// Bare: 64 hex digits of the digest over ranges at fixed places and the length. Only the full form
/// is written today. The bare digest lives on as the duplicate key of a scan.
///
/// Every operation opens the path itself, follows no link in the last component and reads through
/// that one descriptor. Nothing is written. All run on whatever thread calls them and may take as
/// long as the file is large; they belong on a background executor.
namespace corvane::ContentHasher {

class HashError : public Failure {
  public:
    enum class Kind { statFailed, readFailed, notARegularFile };

    static HashError statFailed(const QString &path, const QString &error);
    static HashError readFailed(const QString &path, const QString &error);
    static HashError notARegularFile(const QString &path);

    Kind kind() const { return m_kind; }

  private:
    HashError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

    Kind m_kind;
};

enum class AnchorVerification {
    matches,
    mismatches,   ///< other contents, or a file that can't be read to its end
    unverifiable, ///< the stored text is no anchor, so nothing can be said
};

/// A parsed full anchor: what a hasher must start with and end in.
struct FullAnchor {
    QByteArray salt;        ///< 16 bytes
    QString expectedDigest; ///< as it stands in the anchor

    bool operator==(const FullAnchor &) const = default;
};

/// What `upgradeLegacyAnchor` found.
struct AnchorUpgrade {
    enum class Result { upgraded, mismatch, notVerifiable };
    Result result = Result::notVerifiable;
    QString anchor; ///< the new full anchor, only with `upgraded`
};

/// Hashes bytes as they pass through a copy, to the digest that a full anchor of the same bytes and
/// salt has. A plain value.
class StreamingAnchorHasher {
  public:
    explicit StreamingAnchorHasher(const QByteArray &salt);

    void update(const char *bytes, qint64 count);
    /// The 64 hex digits. The hasher is used up.
    QString finalizeDigest();

    quint64 totalBytes() const { return m_totalBytes; }

  private:
    Sha256 m_hasher;
    quint64 m_totalBytes = 0; ///< fed so far, the salt not counted
};

/// A new full anchor with a fresh salt. Throws `HashError`.
QString makeAnchor(const QString &path);

/// Whether the file still is what the anchor was taken from. Never throws.
AnchorVerification verifyAnchor(const QString &anchor, const QString &path);

/// Verifies many. `isCancelled` is asked before each path; once it says yes the rest is left out.
/// `abort` ends it within a file, which is then left out too.
QHash<QString, AnchorVerification> verifyAnchors(const QHash<QString, FullAnchor> &pathsToAnchors,
                                                 const std::function<bool()> &isCancelled,
                                                 std::stop_token abort = {});

/// The parts of a full anchor, or nothing where the text is no well-formed one.
std::optional<FullAnchor> parseFullAnchor(const QString &anchor);

/// Reads the file once, proves the old anchor and makes a full one in the same pass. Throws
/// `HashError`.
AnchorUpgrade upgradeLegacyAnchor(const QString &legacyAnchor, const QString &path);

/// The bare sampled digest: the same text for the same bytes at every scan. Reads at most about
/// 2.2 MiB of the file. Throws `HashError`.
QString duplicateKey(const QString &path);

} // namespace corvane::ContentHasher
