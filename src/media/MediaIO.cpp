#include "media/MediaIO.h"

#include <algorithm>
#include <cerrno>

namespace corvane::media {

namespace {

constexpr int kInputBuffer = 32 << 10;
/// Larger than for reading, for the sake of network mounts.
constexpr int kOutputBuffer = 256 << 10;

/// Moves `position` as `avio_seek` asks for, in a file of `size` bytes, and returns the result.
int64_t movedTo(qint64 &position, qint64 size, int64_t offset, int whence) {
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return size;
    case SEEK_SET:
        break;
    case SEEK_CUR:
        offset += position;
        break;
    case SEEK_END:
        offset += size;
        break;
    default:
        return AVERROR(EINVAL);
    }
    if (offset < 0) {
        return AVERROR(EINVAL);
    }
    position = offset;
    return offset;
}

template <typename... Callbacks>
IOHandle makeContext(int bufferSize, int isWritable, void *self, Callbacks... callbacks) {
    auto *buffer = static_cast<unsigned char *>(allocated(av_malloc(size_t(bufferSize))));
    AVIOContext *context = avio_alloc_context(buffer, bufferSize, isWritable, self, callbacks...);
    if (!context) {
        av_free(buffer);
    }
    return IOHandle(allocated(context));
}

} // namespace

void FreeIO::operator()(AVIOContext *context) const {
    av_freep(static_cast<void *>(&context->buffer));
    avio_context_free(&context);
}

InputIO::InputIO(const QString &path, const AVIOInterruptCB &interrupt)
    : m_file(fileSystem().openForReading(path, FileSystem::Links::Follow)),
      m_interrupt(interrupt),
      m_size(fileSystem().status(m_file).size),
      m_context(makeContext(kInputBuffer, 0, this, &InputIO::read, nullptr, &InputIO::seek)) {}

int InputIO::read(void *self, uint8_t *into, int maximum) {
    auto *input = static_cast<InputIO *>(self);
    if (input->m_interrupt.callback && input->m_interrupt.callback(input->m_interrupt.opaque)) {
        return AVERROR_EXIT;
    }
    try {
        const qint64 count = fileSystem().readAt(input->m_file, input->m_offset,
                                                 reinterpret_cast<char *>(into), maximum);
        if (count == 0 && input->m_offset < input->m_size) {
            return input->fail(EIO);
        }
        input->m_offset += count;
        return count > 0 ? int(count) : AVERROR_EOF;
    } catch (const FileError &error) {
        return input->fail(error.code());
    }
}

int InputIO::fail(int code) {
    m_fault = m_fault != 0 ? m_fault : code;
    return AVERROR(code);
}

int64_t InputIO::seek(void *self, int64_t offset, int whence) {
    auto *input = static_cast<InputIO *>(self);
    return movedTo(input->m_offset, input->m_size, offset, whence);
}

OutputIO::OutputIO(const QString &path)
    : m_file(fileSystem().openForWriting(path)),
      m_context(makeContext(kOutputBuffer, 1, this, nullptr, &OutputIO::write, &OutputIO::seek)) {}

int OutputIO::write(void *self, uint8_t *bytes, int count) {
    auto *output = static_cast<OutputIO *>(self);
    try {
        fileSystem().writeAt(output->m_file, output->m_offset,
                             reinterpret_cast<const char *>(bytes), count);
    } catch (const FileError &error) {
        return AVERROR(error.code());
    }
    output->m_offset += count;
    output->m_size = std::max(output->m_size, output->m_offset);
    return count;
}

int64_t OutputIO::seek(void *self, int64_t offset, int whence) {
    auto *output = static_cast<OutputIO *>(self);
    return movedTo(output->m_offset, output->m_size, offset, whence);
}

void OutputIO::close() {
    const FileStatus status = fileSystem().status(m_file);
    fileSystem().close(m_file);
    if (status.size != m_size) {
        throw FileError(m_file.path(), EIO);
    }
}

} // namespace corvane::media
