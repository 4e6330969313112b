// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace velmora {

/// Checks Ed25519 signatures (RFC 8032). Callable from any thread.
class SignatureVerifier {
  public:
    virtual ~SignatureVerifier() = default;

    /// Whether the signature of the data was made with the key that belongs to this public one.
    /// Key (32 bytes) and signature (64 bytes) are base64; anything else is false.
    virtual bool verify(std::string_view data, std::string_view base64Signature,
                        std::string_view base64PublicKey) const = 0;
};

}  // namespace velmora
