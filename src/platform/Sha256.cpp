#include "platform/Sha256.h"

#include <new>
#include <openssl/crypto.h>
#include <openssl/evp.h>

namespace corvane {

namespace {

/// Disables OpenSSL's cleanup at exit first: it would free per-thread state that executors still
/// use while they stop.
EVP_MD_CTX *newContext() {
    [[maybe_unused]] static const int done = OPENSSL_init_crypto(OPENSSL_INIT_NO_ATEXIT, nullptr);
    return EVP_MD_CTX_new();
}

} // namespace

void Sha256::Free::operator()(evp_md_ctx_st *context) const noexcept {
    EVP_MD_CTX_free(context);
}

Sha256::Sha256() : m_context(newContext()) {
    if (!m_context || EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr) != 1) {
        throw std::bad_alloc();
    }
}

void Sha256::update(const char *bytes, qint64 count) {
    EVP_DigestUpdate(m_context.get(), bytes, size_t(count));
}

QByteArray Sha256::finish() {
    QByteArray digest(EVP_MAX_MD_SIZE, Qt::Uninitialized);
    unsigned int size = 0;
    EVP_DigestFinal_ex(m_context.get(), reinterpret_cast<unsigned char *>(digest.data()), &size);
    digest.resize(size);
    return digest;
}

} // namespace corvane
