// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <optional>

#include "Velmora/Platform/Recorded/Recording.h"

namespace velmora {

inline bool isSameQuestion(Utf16Range a, Utf16Range b) {
    return a == b;
}

/// Points that went through a text and back may differ in their last digits.
inline bool isSameQuestion(Point a, Point b) {
    constexpr double tolerance = 0.01;
    return std::abs(a.x - b.x) <= tolerance && std::abs(a.y - b.y) <= tolerance;
}

/// The answer that was given to a question first; nothing where it was not put.
template <typename Question, typename Answer>
std::optional<Answer> recordedAnswer(const Recording::Answers<Question, Answer>& answers,
                                     const Question& question) {
    for (const auto& [asked, answer] : answers) {
        if (isSameQuestion(asked, question)) {
            return answer;
        }
    }
    return std::nullopt;
}

}  // namespace velmora
