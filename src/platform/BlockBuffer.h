#pragma once

#include <QtGlobal>

#include <memory>

namespace corvane {

/// A page-aligned buffer for reading files. Reading into it is several times faster than into
/// unaligned memory. Its content is uninitialized.
class BlockBuffer {
  public:
    static constexpr qint64 kSize = qint64(1) << 20; ///< bytes

    BlockBuffer();
    char *data() const { return m_bytes.get(); }

  private:
    struct Free {
        void operator()(char *bytes) const noexcept;
    };
    std::unique_ptr<char[], Free> m_bytes;
};

} // namespace corvane
