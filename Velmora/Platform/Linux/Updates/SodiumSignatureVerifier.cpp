// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Updates/SodiumSignatureVerifier.h"

#include <sodium.h>

#include <array>
#include <optional>

namespace velmora {
namespace {

/// Exactly this many bytes from their base64 form, or nothing.
template <std::size_t Count>
std::optional<std::array<unsigned char, Count>> decoded(std::string_view base64) {
    std::array<unsigned char, Count> bytes{};
    std::size_t length = 0;
    const char* end = nullptr;
    const int status = sodium_base642bin(bytes.data(), bytes.size(), base64.data(), base64.size(),
                                         " \t\r\n", &length, &end, sodium_base64_VARIANT_ORIGINAL);
    if (status != 0 || length != Count || end != base64.data() + base64.size()) {
        return std::nullopt;
    }
    return bytes;
}

}  // namespace

bool SodiumSignatureVerifier::verify(std::string_view data, std::string_view base64Signature,
                                     std::string_view base64PublicKey) const {
    if (sodium_init() < 0) {
        return false;
    }
    const auto signature = decoded<crypto_sign_BYTES>(base64Signature);
    const auto key = decoded<crypto_sign_PUBLICKEYBYTES>(base64PublicKey);
    if (!signature || !key) {
        return false;
    }
    return crypto_sign_verify_detached(signature->data(),
                                       reinterpret_cast<const unsigned char*>(data.data()),
                                       data.size(), key->data()) == 0;
}

}  // namespace velmora
