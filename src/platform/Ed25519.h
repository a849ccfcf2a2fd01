#pragma once

#include <QByteArray>

/// Signatures by the Ed25519 scheme (RFC 8032). Any thread.
namespace corvane::ed25519 {

constexpr qsizetype kPublicKeySize = 32;
constexpr qsizetype kSignatureSize = 64;

/// True if the signature is the key's owner's over exactly this message. A key or a signature of a
/// wrong size, or that is no point of the curve, verifies nothing.
bool verify(const QByteArray &publicKey, const QByteArray &message, const QByteArray &signature);

} // namespace corvane::ed25519
