// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Updates/SodiumSignatureVerifier.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora::test {
namespace {

// The third test vector of RFC 8032, section 7.1: a message of two bytes.
const std::string message = "\xaf\x82";
const std::string publicKey = "/FHNjmIYoaONpH7QAjDwWAgW7RO6MwOsXeuRFUiQgCU=";
const std::string signature =
    "YpHWV97sJAJIJ+acOr4BowzlSKKEdDpEXjaA19taw6wY/5tTjRbykK5n92CYTcZZSnwV6XFu0o3AJ77O6h7ECg==";

TEST(SodiumSignatureVerifier, AcceptsAGenuineSignature) {
    EXPECT_TRUE(SodiumSignatureVerifier().verify(message, signature, publicKey));
    EXPECT_TRUE(SodiumSignatureVerifier().verify(message, "\n" + signature + "\n", publicKey));
}

TEST(SodiumSignatureVerifier, RefusesEverythingElse) {
    const SodiumSignatureVerifier verifier;
    EXPECT_FALSE(verifier.verify("\xaf\x83", signature, publicKey));
    EXPECT_FALSE(verifier.verify("", signature, publicKey));
    std::string otherSignature = signature;
    otherSignature[4] = otherSignature[4] == 'A' ? 'B' : 'A';
    EXPECT_FALSE(verifier.verify(message, otherSignature, publicKey));
    std::string otherKey = publicKey;
    otherKey[4] = otherKey[4] == 'A' ? 'B' : 'A';
    EXPECT_FALSE(verifier.verify(message, signature, otherKey));
}

TEST(SodiumSignatureVerifier, RefusesWhatIsNoKeyOrSignature) {
    const SodiumSignatureVerifier verifier;
    for (const std::string& broken : {std::string(), std::string("!"), publicKey.substr(4),
                                      signature + "AAAA", std::string(100'000, 'A')}) {
        EXPECT_FALSE(verifier.verify(message, broken, publicKey)) << broken.substr(0, 100);
        EXPECT_FALSE(verifier.verify(message, signature, broken)) << broken.substr(0, 100);
    }
}

}  // namespace
}  // namespace velmora::test
