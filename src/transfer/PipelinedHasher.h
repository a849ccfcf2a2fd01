#pragma once

#include "platform/BlockBuffer.h"
#include "trust/ContentHasher.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace corvane {

/// Hashes the blocks of a copy on a thread of its own, concurrently with the copy. Uses a ring of
/// blocks; `nextBlock` waits if hashing falls behind.
///
/// Must be used by one thread. May be destroyed at any time.
class PipelinedHasher {
  public:
    explicit PipelinedHasher(const QByteArray &salt);
    ~PipelinedHasher();
    Q_DISABLE_COPY_MOVE(PipelinedHasher)

    /// Returns a block of `BlockBuffer::kSize` bytes to fill. Invalidates the previous block.
    char *nextBlock();
    /// Queues the first `count` bytes of the block for hashing. They must not be modified any more.
    void hashBlock(qint64 count);
    /// Waits for all blocks and returns the digest. Must be the last call.
    QString finalizeDigest();

  private:
    static constexpr quint64 kBlocks = 4;

    struct Block {
        BlockBuffer bytes;
        qint64 count = 0;
    };

    void hashBlocks(const std::stop_token &stop);

    std::array<Block, kBlocks> m_blocks;
    ContentHasher::StreamingAnchorHasher
        m_hasher; ///< used by `m_thread` until all blocks are hashed
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    quint64 m_queued = 0;  ///< number of blocks so far
    quint64 m_hashed = 0;  ///< number of blocks so far
    std::jthread m_thread; ///< declared last, so that it is joined before the others go
};

} // namespace corvane
