#pragma once

#include "platform/BlockBuffer.h"
#include "trust/ContentHasher.h"

#include <array>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace corvane {

/// Hashes the blocks of a copy on a thread of its own while the copy goes on, so that verifying
/// costs no time of its own. A few blocks go round: who fills them waits when the hashing falls
/// behind.
///
/// Used by one thread. Destroying it before the end is fine at any moment.
class PipelinedHasher {
  public:
    explicit PipelinedHasher(const QByteArray &salt);
    ~PipelinedHasher();
    Q_DISABLE_COPY_MOVE(PipelinedHasher)

    /// A block to fill, of `BlockBuffer::kSize` bytes. The one before is given up by asking.
    char *nextBlock();
    /// Hands on the first bytes of the block. They may still be read, but no longer be changed.
    void hashBlock(qint64 count);
    /// Waits for all blocks and gives the digest. The hasher is used up.
    QString finalizeDigest();

  private:
    static constexpr quint64 kBlocks = 4;

    struct Block {
        BlockBuffer bytes;
        qint64 count = 0;
    };

    void work(const std::stop_token &stop);

    std::array<Block, kBlocks> m_blocks;
    ContentHasher::StreamingAnchorHasher m_hasher; ///< the thread's until all is hashed
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    quint64 m_handedOn = 0; ///< blocks since the start
    quint64 m_hashed = 0;   ///< blocks since the start
    std::jthread m_thread;  ///< last, so that it ends before what it uses
};

} // namespace corvane
