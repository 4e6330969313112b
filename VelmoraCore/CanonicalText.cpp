// SPDX-License-Identifier: MIT
#include "VelmoraCore/CanonicalText.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include <cstddef>
#include <limits>

#include "VelmoraCore/PlainScalar.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

/// True when every code point is its own normal form and joins no other.
bool isPlainText(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const Utf8Scalar scalar = utf8ScalarAt(text.data() + at);
        if (scalar.value >= 0x80 && !isPlainScalar(scalar.value)) {
            return false;
        }
        at += scalar.length;
    }
    return true;
}

}  // namespace

bool canonicallyEqual(std::string_view left, std::string_view right) {
    if (left == right) {
        return true;
    }
    if (left.empty() || right.empty() || !isValidUtf8(left) || !isValidUtf8(right) ||
        (isPlainText(left) && isPlainText(right))) {
        return false;
    }
    return composedText(left) == composedText(right);
}

std::string composedText(std::string_view text) {
    if (!isValidUtf8(text) || isPlainText(text) ||
        text.size() > std::numeric_limits<std::int32_t>::max()) {
        return std::string(text);
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) {
        return std::string(text);
    }
    std::string composed;
    icu::StringByteSink<std::string> sink(&composed);
    normalizer->normalizeUTF8(0,
                              icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())),
                              sink, nullptr, status);
    return U_SUCCESS(status) ? composed : std::string(text);
}

}  // namespace velmora
