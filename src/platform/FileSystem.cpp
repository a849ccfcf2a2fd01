#include "platform/FileSystem.h"

#include "platform/SystemFileSystem.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace corvane {

namespace {

std::atomic<FileSystem *> &installedFileSystem() {
    static SystemFileSystem system;
    static std::atomic<FileSystem *> installed{&system};
    return installed;
}

constexpr qint64 kReadStep = qint64(1) << 20;

} // namespace

FileError::FileError(QString path, int code)
    : Failure(QString::fromLocal8Bit(std::strerror(code))), m_path(std::move(path)), m_code(code) {}

bool FileError::isMissingFile() const noexcept {
    return m_code == ENOENT;
}

Descriptor::Descriptor(Descriptor &&other) noexcept
    : m_number(std::exchange(other.m_number, -1)), m_path(std::move(other.m_path)) {}

Descriptor &Descriptor::operator=(Descriptor &&other) noexcept {
    Descriptor moved(std::move(other));
    std::swap(m_number, moved.m_number);
    std::swap(m_path, moved.m_path);
    return *this;
}

Descriptor::~Descriptor() {
    if (m_number >= 0) {
        ::close(m_number);
    }
}

int Descriptor::release() noexcept {
    return std::exchange(m_number, -1);
}

FileSystem::~FileSystem() = default;

FileSystem &fileSystem() {
    return *installedFileSystem().load(std::memory_order_acquire);
}

FileSystemScope::FileSystemScope(FileSystem &replacement)
    : m_previous(installedFileSystem().exchange(&replacement, std::memory_order_acq_rel)) {}

FileSystemScope::~FileSystemScope() {
    installedFileSystem().store(m_previous, std::memory_order_release);
}

QByteArray readAll(const Descriptor &file, qint64 limit) {
    const qint64 expected = fileSystem().status(file).size;
    QByteArray bytes;
    bytes.reserve(std::clamp<qint64>(expected, 0, limit) + 1);
    while (bytes.size() <= limit) {
        const qsizetype before = bytes.size();
        const qint64 step = std::min<qint64>(kReadStep, limit + 1 - before);
        bytes.resize(before + step);
        const qint64 got = fileSystem().read(file, bytes.data() + before, step);
        bytes.resize(before + got);
        if (got == 0) {
            break;
        }
    }
    return bytes;
}

QByteArray readAll(const QString &path, qint64 limit) {
    return readAll(fileSystem().openForReading(path, FileSystem::Links::Follow), limit);
}

} // namespace corvane
