#include "platform/BlockBuffer.h"

#include <cstdlib>
#include <new>

namespace corvane {

namespace {

constexpr size_t kPage = 4096;

} // namespace

BlockBuffer::BlockBuffer()
    : m_bytes(static_cast<char *>(std::aligned_alloc(kPage, size_t(kSize)))) {
    if (!m_bytes) {
        throw std::bad_alloc();
    }
}

void BlockBuffer::Free::operator()(char *bytes) const noexcept {
    std::free(bytes);
}

} // namespace corvane
