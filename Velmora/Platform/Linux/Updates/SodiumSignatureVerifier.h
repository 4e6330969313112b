// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/SignatureVerifier.h"

namespace velmora {

/// Ed25519 by libsodium.
class SodiumSignatureVerifier final : public SignatureVerifier {
  public:
    bool verify(std::string_view data, std::string_view base64Signature,
                std::string_view base64PublicKey) const override;
};

}  // namespace velmora
