#pragma once

#include <QByteArray>

/// Ed25519 signatures (RFC 8032). Thread-safe.
namespace corvane::ed25519 {

constexpr qsizetype kPublicKeySize = 32;
constexpr qsizetype kSignatureSize = 64;

/// True if `signature` is a valid signature of `message` by the owner of `publicKey`. False for a
/// key or a signature that is malformed.
bool verify(const QByteArray &publicKey, const QByteArray &message, const QByteArray &signature);

} // namespace corvane::ed25519
