#pragma once

#include <QtGlobal>

#include <memory>

namespace corvane {

/// A page-aligned block of memory for reading files: the system fills it several times faster than
/// memory that begins anywhere.
class BlockBuffer {
  public:
    static constexpr qint64 kSize = qint64(1) << 20;

    BlockBuffer();
    char *data() const { return m_bytes.get(); }

  private:
    struct Free {
        void operator()(char *bytes) const noexcept;
    };
    std::unique_ptr<char[], Free> m_bytes;
};

} // namespace corvane
