#include "transfer/PipelinedHasher.h"

namespace corvane {

PipelinedHasher::PipelinedHasher(const QByteArray &salt)
    : m_hasher(salt), m_thread([this](const std::stop_token &stop) { hashBlocks(stop); }) {}

PipelinedHasher::~PipelinedHasher() = default;

char *PipelinedHasher::nextBlock() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_queued - m_hashed < kBlocks; });
    return m_blocks.at(m_queued % kBlocks).bytes.data();
}

void PipelinedHasher::hashBlock(qint64 count) {
    {
        const std::scoped_lock lock(m_mutex);
        m_blocks.at(m_queued % kBlocks).count = count;
        ++m_queued;
    }
    m_changed.notify_all();
}

QString PipelinedHasher::finalizeDigest() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_hashed == m_queued; });
    return m_hasher.finalizeDigest();
}

void PipelinedHasher::hashBlocks(const std::stop_token &stop) {
    std::unique_lock lock(m_mutex);
    while (m_changed.wait(lock, stop, [this] { return m_hashed < m_queued; }) &&
           !stop.stop_requested()) {
        const Block &block = m_blocks.at(m_hashed % kBlocks);
        lock.unlock();
        m_hasher.update(block.bytes.data(), block.count);
        lock.lock();
        ++m_hashed;
        m_changed.notify_all();
    }
}

} // namespace corvane
