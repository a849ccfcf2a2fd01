#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"
#include "platform/FileSystem.h"

namespace corvane::media {

struct FreeIO {
    void operator()(AVIOContext *context) const;
};
using IOHandle = std::unique_ptr<AVIOContext, FreeIO>;

/// Reads a file for FFmpeg through `fileSystem()`, and remembers failures that demuxers ignore.
/// Must outlive the format context that uses it. Not thread-safe.
class InputIO {
  public:
    /// Throws `FileError`. Reading calls `interrupt`, as FFmpeg's own protocols do.
    InputIO(const QString &path, const AVIOInterruptCB &interrupt);
    Q_DISABLE_COPY_MOVE(InputIO)

    AVIOContext *context() const { return m_context.get(); }
    /// The `errno` code of the first failed read, or 0. A read that ends before the size that the
    /// file had when it was opened counts as `EIO`.
    int fault() const { return m_fault; }

  private:
    static int read(void *self, uint8_t *into, int maximum);
    static int64_t seek(void *self, int64_t offset, int whence);
    int fail(int code);

    Descriptor m_file;
    AVIOInterruptCB m_interrupt;
    qint64 m_size;
    qint64 m_offset = 0;
    int m_fault = 0;
    IOHandle m_context;
};

/// Writes an existing empty file for FFmpeg through `fileSystem()`. Seeks can't fail, and
/// `AVIOContext::error` keeps the first failed write. Must outlive the format context that uses it.
class OutputIO {
  public:
    /// Throws `FileError`.
    explicit OutputIO(const QString &path);
    Q_DISABLE_COPY_MOVE(OutputIO)

    AVIOContext *context() const { return m_context.get(); }
    /// Bytes written so far, without buffered ones.
    qint64 size() const { return m_size; }
    /// Closes the file, whose buffered bytes must have been flushed. Throws `FileError`, with `EIO`
    /// if the file's size isn't that of the bytes written.
    void close();

  private:
    static int write(void *self, uint8_t *bytes, int count);
    static int64_t seek(void *self, int64_t offset, int whence);

    Descriptor m_file;
    qint64 m_size = 0;
    qint64 m_offset = 0;
    IOHandle m_context;
};

} // namespace corvane::media
