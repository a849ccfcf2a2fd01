#include "platform/Ed25519.h"

#include <openssl/evp.h>

#include <memory>

namespace corvane::ed25519 {

namespace {

struct FreeKey {
    void operator()(EVP_PKEY *key) const { ::EVP_PKEY_free(key); }
};
struct FreeVerification {
    void operator()(EVP_MD_CTX *context) const { ::EVP_MD_CTX_free(context); }
};

const unsigned char *octets(const QByteArray &bytes) {
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

} // namespace

bool verify(const QByteArray &publicKey, const QByteArray &message, const QByteArray &signature) {
    if (publicKey.size() != kPublicKeySize || signature.size() != kSignatureSize) {
        return false;
    }
    const std::unique_ptr<EVP_PKEY, FreeKey> key(::EVP_PKEY_new_raw_public_key(
        EVP_PKEY_ED25519, nullptr, octets(publicKey), size_t(publicKey.size())));
    const std::unique_ptr<EVP_MD_CTX, FreeVerification> context(::EVP_MD_CTX_new());
    return key && context &&
           ::EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           ::EVP_DigestVerify(context.get(), octets(signature), size_t(signature.size()),
                              octets(message), size_t(message.size())) == 1;
}

} // namespace corvane::ed25519
