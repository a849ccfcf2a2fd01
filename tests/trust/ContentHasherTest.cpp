#include "trust/ContentHasher.h"

#include "platform/ApplicationEnd.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>

#include <cmath>
#include <sys/stat.h>

using namespace corvane;
using namespace corvane::ContentHasher;
using corvane::test::noise;

namespace {

constexpr qsizetype kMiB = 1 << 20;
const QString kSaltText = QStringLiteral("000102030405060708090a0b0c0d0e0f");

QByteArray sha256(const QByteArray &bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QString hexDigest(const QByteArray &covered, qsizetype size) {
    QByteArray length;
    for (int shift = 0; shift < 64; shift += 8) {
        length.append(char(quint64(size) >> shift));
    }
    return QString::fromLatin1(sha256(covered + length).toHex());
}

QString expectedSampledDigest(const QByteArray &bytes, const QByteArray &salt) {
    if (bytes.size() <= 2 * kMiB) {
        return hexDigest(salt + bytes, bytes.size());
    }
    QByteArray covered = salt + bytes.left(kMiB);
    for (int index = 0; index < 3; ++index) {
        const QByteArray derived = sha256(salt + char(index)).left(8).toHex();
        const double scaled = std::ldexp(double(derived.toULongLong(nullptr, 16)), -64);
        const double fraction = salt.isEmpty() ? 0.25 * (index + 1) : scaled * 0.9 + 0.05;
        const auto offset = qsizetype(fraction * double(bytes.size()));
        covered += bytes.mid(std::min(offset, bytes.size() - 65536), 65536);
    }
    return hexDigest(covered + bytes.right(kMiB), bytes.size());
}

std::optional<HashError::Kind> hashFailure(const QString &path) {
    try {
        makeAnchor(path);
        return std::nullopt;
    } catch (const HashError &error) {
        return error.kind();
    }
}

class UnstattableFileSystem : public SystemFileSystem {
  public:
    using SystemFileSystem::status;
    FileStatus status(const Descriptor &file) const override { throw FileError(file.path(), EIO); }
};

} // namespace

TEST(ContentHasher, CoversSaltContentsAndLengthInAFullAnchor) {
    const test::TestFolder folder;
    for (const qsizetype size : {qsizetype(0), kMiB, kMiB + 1, 3 * kMiB + 5}) {
        const QByteArray bytes = noise(size);
        const QString path = folder.write("a.mov", bytes);
        const QString anchor = makeAnchor(path);
        const auto parsed = parseFullAnchor(anchor);
        ASSERT_TRUE(parsed && anchor.size() == 98);
        EXPECT_EQ(parsed->expectedDigest, hexDigest(parsed->salt + bytes, size)) << size;
        EXPECT_NE(makeAnchor(path), anchor);
        EXPECT_EQ(verifyAnchor(anchor, path), AnchorVerification::matches);

        StreamingAnchorHasher pieces(parsed->salt);
        for (qsizetype at = 0; at < size; at += 77777) {
            pieces.update(bytes.constData() + at, std::min(qsizetype(77777), size - at));
        }
        EXPECT_EQ(pieces.totalBytes(), quint64(size));
        EXPECT_EQ(pieces.finalizeDigest(), parsed->expectedDigest);
    }
}

TEST(ContentHasher, VerifiesAndUpgradesSampledAnchorsOfAnySize) {
    const test::TestFolder folder;
    for (const qsizetype size : {qsizetype(0), 2 * kMiB, 2 * kMiB + 1, 5 * kMiB + 3}) {
        const QByteArray bytes = noise(size);
        const QString path = folder.write("a.mov", bytes);
        EXPECT_EQ(duplicateKey(path), expectedSampledDigest(bytes, {})) << size;
        const QByteArray salt = QByteArray::fromHex(kSaltText.toLatin1());
        const QString salted =
            QStringLiteral("2:") + kSaltText + expectedSampledDigest(bytes, salt);
        for (const QString &legacy : {salted, duplicateKey(path)}) {
            EXPECT_EQ(verifyAnchor(legacy, path), AnchorVerification::matches) << size;
            const AnchorUpgrade upgrade = upgradeLegacyAnchor(legacy, path);
            EXPECT_EQ(upgrade.result, AnchorUpgrade::Result::upgraded) << size;
            EXPECT_EQ(verifyAnchor(upgrade.anchor, path), AnchorVerification::matches) << size;
        }
        const QString other = hexDigest("other", size);
        EXPECT_EQ(verifyAnchor(other, path), AnchorVerification::mismatches);
        EXPECT_EQ(upgradeLegacyAnchor(other, path).result, AnchorUpgrade::Result::mismatch);
    }
}

TEST(ContentHasher, ReportsTextThatIsNotAnAnchorAsUnverifiable) {
    const test::TestFolder folder;
    const QString path = folder.write("a.mov", "bytes");
    const QString digest = duplicateKey(path);
    for (const QString &text :
         {QString(), QStringLiteral("3:") + kSaltText, QStringLiteral("2:") + kSaltText,
          QStringLiteral("3:zz") + kSaltText.mid(2) + digest, digest.toUpper(), digest.mid(1)}) {
        EXPECT_EQ(verifyAnchor(text, path), AnchorVerification::unverifiable) << qPrintable(text);
        EXPECT_FALSE(parseFullAnchor(text));
        EXPECT_EQ(upgradeLegacyAnchor(text, folder.at("missing")).result,
                  AnchorUpgrade::Result::notVerifiable);
    }
}

TEST(ContentHasher, RefusesToHashUnreadableFilesAndVerifiesThemAsChanged) {
    using Kind = HashError::Kind;
    const test::TestFolder folder;
    const QString path = folder.write("a.mov", "bytes");
    const QString full = makeAnchor(path);
    const QString bare = duplicateKey(path);
    const QString fifo = folder.at("fifo.mov");
    ASSERT_EQ(::mkfifo(fifo.toUtf8().constData(), 0600), 0);
    const QList<std::pair<QString, Kind>> faults{
        {folder.link("link.mov", path), Kind::readFailed},
        {folder.at("missing.mov"), Kind::readFailed},
        {path + QChar(u'\0'), Kind::readFailed},
        {folder.folder("folder.mov"), Kind::notARegularFile},
        {fifo, Kind::notARegularFile}};
    for (const auto &[faulty, kind] : faults) {
        EXPECT_EQ(hashFailure(faulty), kind) << qPrintable(faulty);
        EXPECT_EQ(verifyAnchor(full, faulty), AnchorVerification::mismatches);
        EXPECT_EQ(verifyAnchor(bare, faulty), AnchorVerification::mismatches);
        EXPECT_THROW(upgradeLegacyAnchor(bare, faulty), HashError);
    }
    EXPECT_EQ(HashError::notARegularFile(fifo).description(),
              QStringLiteral("fifo.mov is not a regular file, refusing to hash it"));
}

TEST(ContentHasher, ReportsWhichCallFailed) {
    const test::TestFolder folder;
    const QString path = folder.write("a.mov", noise(3 * kMiB));
    test::FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    for (int call = 1; call <= 5; ++call) { // open, three blocks, end of file
        faulty.failAt(call, EACCES);
        EXPECT_EQ(hashFailure(path), HashError::Kind::readFailed) << call;
    }
    UnstattableFileSystem unstattable;
    const FileSystemScope inner(unstattable);
    EXPECT_EQ(hashFailure(path), HashError::Kind::statFailed);
}

TEST(ContentHasher, StopsWithinAFileWhenCancelledOrWhenTheApplicationEnds) {
    const test::TestFolder folder;
    const QString path = folder.write("a.mov", test::noise(3 << 20));
    const QString anchor = makeAnchor(path);
    std::stop_source stop;
    qint64 bytes = 0;
    const auto stopAtFirstBlock = [&](qint64 count) {
        bytes += count;
        stop.request_stop();
    };
    EXPECT_THROW(makeAnchor(path, stop.get_token(), stopAtFirstBlock), Cancelled);
    EXPECT_EQ(bytes, 1 << 20);
    applicationEnd::request();
    EXPECT_THROW(makeAnchor(path), Cancelled);
    EXPECT_THROW(verifyAnchor(anchor, path), Cancelled);
    applicationEnd::reset();
    EXPECT_EQ(verifyAnchor(anchor, path), AnchorVerification::matches);
}

TEST(ContentHasher, OmitsTheRemainingFilesOnceCancelled) {
    const test::TestFolder folder;
    const QString path = folder.write("a.mov", "bytes");
    const QString missing = folder.at("missing.mov");
    const FullAnchor anchor = *parseFullAnchor(makeAnchor(path));
    const QHash<QString, AnchorVerification> all{{path, AnchorVerification::matches},
                                                 {missing, AnchorVerification::mismatches}};
    EXPECT_EQ(verifyAnchors({{path, anchor}, {missing, anchor}}, [] { return false; }), all);
    int calls = 0;
    EXPECT_EQ(
        verifyAnchors({{path, anchor}, {missing, anchor}}, [&] { return ++calls > 1; }).size(), 1);
}
