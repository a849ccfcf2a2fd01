#pragma once

#include <QByteArray>

#include <memory>

struct evp_md_ctx_st;

namespace corvane {

/// An incremental SHA-256 computation.
class Sha256 {
  public:
    Sha256();

    void update(const char *bytes, qint64 count);
    void update(const QByteArray &bytes) { update(bytes.constData(), bytes.size()); }
    /// Returns the digest, 32 bytes. The object must not be used afterwards.
    QByteArray finish();

  private:
    struct Free {
        void operator()(evp_md_ctx_st *context) const noexcept;
    };
    std::unique_ptr<evp_md_ctx_st, Free> m_context;
};

} // namespace corvane
