#include "platform/Ed25519.h"

#include <openssl/evp.h>

#include <memory>

namespace corvane::ed25519 {

namespace {

const unsigned char *octets(const QByteArray &bytes) {
    return reinterpret_cast<const unsigned char *>(bytes.constData());
}

} // namespace

bool verify(const QByteArray &publicKey, const QByteArray &message, const QByteArray &signature) {
    if (publicKey.size() != kPublicKeySize || signature.size() != kSignatureSize) {
        return false;
    }
    const std::unique_ptr<EVP_PKEY, decltype(&::EVP_PKEY_free)> key(
        ::EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, octets(publicKey),
                                      size_t(publicKey.size())),
        &::EVP_PKEY_free);
    const std::unique_ptr<EVP_MD_CTX, decltype(&::EVP_MD_CTX_free)> context(::EVP_MD_CTX_new(),
                                                                            &::EVP_MD_CTX_free);
    return key && context &&
           ::EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, key.get()) == 1 &&
           ::EVP_DigestVerify(context.get(), octets(signature), size_t(signature.size()),
                              octets(message), size_t(message.size())) == 1;
}

} // namespace corvane::ed25519
