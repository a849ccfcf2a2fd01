#include "document/FileBaseline.h"

#include "platform/Sha256.h"

namespace corvane {

namespace {

QByteArray digestOf(const QByteArray &contents) {
    Sha256 hash;
    hash.update(contents);
    return hash.finish();
}

/// Ignores the device number, which differs after a remount, and the permissions.
bool isSameFile(const FileStatus &one, const FileStatus &other) {
    return one.inode == other.inode && one.size == other.size && one.modified == other.modified;
}

} // namespace

void FileBaseline::setRead(const FileStatus &status, const QByteArray &contents) {
    setWriting(contents);
    setWritten(status);
}

void FileBaseline::setWriting(const QByteArray &contents) {
    m_writingDigest = digestOf(contents);
}

void FileBaseline::setWritten(const FileStatus &status) {
    m_status = status;
    m_digest = std::exchange(m_writingDigest, {});
    m_different.reset();
}

FileBaseline::Match FileBaseline::match(const FileStatus &status) const {
    if (!isKnown() || isSameFile(status, m_status)) {
        return Match::Same;
    }
    return m_different && isSameFile(status, *m_different) ? Match::Changed : Match::Uncertain;
}

FileBaseline::Match FileBaseline::match(const FileStatus &status, const QByteArray &contents) {
    const QByteArray digest = digestOf(contents);
    if (digest != m_digest && digest != m_writingDigest) {
        m_different = status;
        return Match::Changed;
    }
    m_status = status;
    m_digest = digest;
    return Match::Same;
}

} // namespace corvane
