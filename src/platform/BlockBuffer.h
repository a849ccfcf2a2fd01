#pragma once

#include <QtGlobal>

#include <memory>

namespace corvane {

/// A page-aligned buffer for reading files. Reading into it is several times faster than into
/// unaligned memory. Its content is uninitialized.
class BlockBuffer {
  public:
    static constexpr qint64 kSize = qint64(1) << 20; ///< bytes

    char *data() const { return reinterpret_cast<char *>(m_pages.get()); }

  private:
    struct alignas(4096) Page {
        char bytes[4096];
    };
    std::unique_ptr<Page[]> m_pages =
        std::make_unique_for_overwrite<Page[]>(size_t(kSize) / sizeof(Page));
};

} // namespace corvane
