#pragma once

#include "platform/Failure.h"
#include "platform/Sha256.h"

#include <QHash>
#include <QString>

#include <functional>
#include <optional>
#include <stop_token>

/// Creates and verifies anchors: short strings that identify the contents of a file.
///
/// There are three formats. Full: "3:", 32 hex digits of salt, and 64 hex digits of the SHA-256 of
/// the salt, the entire file and its length. Sampled: "2:", the salt, and the digest of the salt,
/// sampled ranges and the length. Bare: the digest of ranges at fixed fractions and the length,
/// without salt. Only full anchors are created. The bare digest is also the key by which a scan
/// detects duplicates.
///
/// Every function that takes a path opens the file itself, refuses a symbolic link in the last
/// component, and reads through that one descriptor. Thread-safe. The functions block for up to the
/// time it takes to read the file, so call them on a background executor. When the application ends
/// they throw `Cancelled`.
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
    mismatches,   ///< the contents differ, or the file can't be read to its end
    unverifiable, ///< the stored text is not an anchor
};

/// A parsed full anchor.
struct FullAnchor {
    QByteArray salt;        ///< 16 bytes
    QString expectedDigest; ///< as in the anchor

    bool operator==(const FullAnchor &) const = default;
};

/// The result of `upgradeLegacyAnchor`.
struct AnchorUpgrade {
    enum class Result { upgraded, mismatch, notVerifiable };
    Result result = Result::notVerifiable;
    QString anchor; ///< the full anchor; only for `upgraded`
};

/// Computes the digest of a full anchor from bytes that are supplied in order, as by a copy.
class StreamingAnchorHasher {
  public:
    explicit StreamingAnchorHasher(const QByteArray &salt);

    void update(const char *bytes, qint64 count);
    /// Returns the 64 hex digits. Call it once, last.
    QString finalizeDigest();

    quint64 totalBytes() const { return m_totalBytes; } ///< without the salt

  private:
    Sha256 m_hasher;
    quint64 m_totalBytes = 0;
};

/// Receives the size of each block that was hashed, on the hashing thread.
using BlockHandler = std::function<void(qint64 bytes)>;

/// Returns a full anchor with a random salt. Throws `HashError`, and `Cancelled` once `stop` is
/// requested.
QString makeAnchor(const QString &path, const std::stop_token &stop = {},
                   const BlockHandler &onBlock = {});
/// Returns the salt of a new full anchor.
QByteArray randomSalt();
/// Returns the full anchor with a salt and the digest of a `StreamingAnchorHasher` for that salt.
QString fullAnchor(const QByteArray &salt, const QString &digest);

/// Compares the file with an anchor in any format. Does not throw.
AnchorVerification verifyAnchor(const QString &anchor, const QString &path);

/// Verifies several files. Stops before the next file once `isCancelled` returns true, and within a
/// file once `abort` requests it. Files that were not verified completely are left out of the
/// result. Does not throw.
QHash<QString, AnchorVerification> verifyAnchors(const QHash<QString, FullAnchor> &pathsToAnchors,
                                                 const std::function<bool()> &isCancelled,
                                                 std::stop_token abort = {});

/// Returns nullopt if the text is not a well-formed full anchor.
std::optional<FullAnchor> parseFullAnchor(const QString &anchor);

/// Verifies an anchor in an older format and creates the full one in a single pass over the file.
/// Throws `HashError`.
AnchorUpgrade upgradeLegacyAnchor(const QString &legacyAnchor, const QString &path);

/// Returns the bare digest, which is the same for equal contents. Reads at most about 2.2 MiB.
/// Throws `HashError`.
QString duplicateKey(const QString &path);

} // namespace corvane::ContentHasher
