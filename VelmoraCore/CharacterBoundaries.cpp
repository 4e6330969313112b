// SPDX-License-Identifier: MIT
#include "VelmoraCore/CharacterBoundaries.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <cstddef>
#include <limits>
#include <memory>

#include "VelmoraCore/PlainScalar.h"
#include "VelmoraCore/Utf8.h"

namespace velmora {
namespace {

/// A break iterator is stateful and slow to make: one per thread, made when first needed.
icu::BreakIterator* threadBreakIterator() {
    thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> made(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        return U_SUCCESS(status) ? std::move(made) : nullptr;
    }();
    // The analyzer takes the end of the function for the end of the thread.
    return iterator.get();  // NOLINT(clang-analyzer-cplusplus.NewDelete)
}

struct TextCloser {
    void operator()(UText* text) const { utext_close(text); }
};

/// Without boundary data every code point counts as one character.
void appendScalarBoundaries(std::string_view part, std::size_t base,
                            std::vector<std::uint32_t>& offsets) {
    for (std::size_t at = 0; at < part.size(); at += utf8ScalarAt(part.data() + at).length) {
        offsets.push_back(static_cast<std::uint32_t>(base + at));
    }
}

/// The starts of the characters of a part that begins and ends at character boundaries.
void appendByRules(std::string_view part, std::size_t base, std::vector<std::uint32_t>& offsets) {
    icu::BreakIterator* iterator = threadBreakIterator();
    UErrorCode status = U_ZERO_ERROR;
    UText fixed = UTEXT_INITIALIZER;
    const std::unique_ptr<UText, TextCloser> text(
        utext_openUTF8(&fixed, part.data(), static_cast<std::int64_t>(part.size()), &status));
    if (iterator != nullptr && U_SUCCESS(status)) {
        iterator->setText(text.get(), status);
    }
    if (iterator == nullptr || U_FAILURE(status) ||
        part.size() > std::numeric_limits<std::int32_t>::max()) {
        appendScalarBoundaries(part, base, offsets);
        return;
    }
    const auto end = static_cast<std::int32_t>(part.size());
    for (std::int32_t at = iterator->first(); at != icu::BreakIterator::DONE && at < end;
         at = iterator->next()) {
        offsets.push_back(static_cast<std::uint32_t>(base + static_cast<std::size_t>(at)));
    }
}

/// The bytes of the control character at a position, the pair CR LF being one, or 0 where there is
/// none of ASCII: controls never join another character.
std::size_t controlLength(std::string_view text, std::size_t at, char32_t scalar) {
    if (scalar >= 0x20 && scalar != 0x7F) {
        return 0;
    }
    return text.substr(at, 2) == "\r\n" ? 2 : 1;
}

/// Appends the starts of the plain characters from `at` on, and gives back where the first one
/// begins that is not plain or that something else may belong to.
std::size_t appendPlainRun(std::string_view text, std::size_t at,
                           std::vector<std::uint32_t>& offsets) {
    Utf8Scalar scalar = utf8ScalarAt(text.data() + at);
    while (isPlainScalar(scalar.value)) {
        const std::size_t next = at + scalar.length;
        if (next < text.size()) {
            scalar = utf8ScalarAt(text.data() + next);
            if (scalar.value >= 0x80 && !isPlainScalar(scalar.value)) {
                break;
            }
        }
        offsets.push_back(static_cast<std::uint32_t>(at));
        at = next;
        if (at == text.size()) {
            break;
        }
    }
    return at;
}

/// The end of the part from `start` on that needs the rules: the first boundary between two plain
/// code points, or the end of the text. At least one code point long.
std::size_t endOfRulePart(std::string_view text, std::size_t start) {
    bool previousPlain = false;
    std::size_t at = start;
    while (at < text.size()) {
        const Utf8Scalar scalar = utf8ScalarAt(text.data() + at);
        const bool plain = isPlainScalar(scalar.value);
        if (plain && previousPlain && at > start) {
            return at;
        }
        previousPlain = plain;
        at += scalar.length;
    }
    return at;
}

}  // namespace

void appendCharacterBoundaries(std::string_view text, std::vector<std::uint32_t>& offsets) {
    std::size_t at = 0;
    while (at < text.size()) {
        at = appendPlainRun(text, at, offsets);
        if (at == text.size()) {
            break;
        }
        const char32_t scalar = utf8ScalarAt(text.data() + at).value;
        if (const std::size_t control = controlLength(text, at, scalar); control > 0) {
            offsets.push_back(static_cast<std::uint32_t>(at));
            at += control;
            continue;
        }
        const std::size_t end = endOfRulePart(text, at);
        appendByRules(text.substr(at, end - at), at, offsets);
        at = end;
    }
    offsets.push_back(static_cast<std::uint32_t>(text.size()));
}

}  // namespace velmora
