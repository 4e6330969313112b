// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Image.h"
#include "Velmora/Platform/ScreenCapture.h"
#include "Velmora/Platform/ScreenLayout.h"
#include "Velmora/Platform/Utf16Range.h"

namespace velmora {

/// What one probe of the screen saw: every question that was put to the desktop, with its answer.
/// Points and rectangles are in the space of the interface that was asked. A plain value.
struct Recording {
    /// An answer to a question, possibly that there is none.
    template <typename Question, typename Answer>
    using Answers = std::vector<std::pair<Question, std::optional<Answer>>>;

    using ElementIndex = std::size_t;

    /// A read that was never made, or one that was, with its answer.
    template <typename Answer>
    using Read = std::optional<std::optional<Answer>>;

    struct Element {
        Read<ElementIndex> parent;
        Read<std::string> selectedText;
        Read<Utf16Range> selectedTextRange;
        Read<std::string> value;
        Read<std::string> title;
        Read<Point> position;
        Read<Size> size;
        Read<std::int64_t> longValueLength;
        Answers<Point, Utf16Range> rangeForPosition;
        Answers<Utf16Range, std::string> stringForRange;
        Answers<Utf16Range, Rect> boundsForRange;

        bool operator==(const Element&) const = default;
    };

    struct Capture {
        std::uint64_t display = 0;
        Rect rect;
        std::optional<Image> image;
    };

    /// One reading of a line, with the box of each of its characters where it is known.
    struct Candidate {
        std::string text;
        float confidence = 0;
        std::vector<std::optional<Rect>> boxes;

        bool operator==(const Candidate&) const = default;
    };

    struct Line {
        Rect box;
        std::vector<Candidate> candidates;

        bool operator==(const Line&) const = default;
    };

    /// A picture by its size and a hash of its pixels.
    struct Picture {
        int width = 0;
        int height = 0;
        std::uint64_t hash = 0;

        static Picture of(const Image& image);
        bool operator==(const Picture&) const = default;
    };

    struct Recognition {
        Picture picture;
        std::optional<Point> point;
        std::optional<std::vector<Line>> lines;

        bool operator==(const Recognition&) const = default;
    };

    struct Detected {
        Rect box;
        std::vector<Rect> characters;

        bool operator==(const Detected&) const = default;
    };

    struct Detection {
        Picture picture;
        std::optional<std::vector<Detected>> texts;

        bool operator==(const Detection&) const = default;
    };

    std::optional<Point> pointer;  ///< Where the probe was made, in native pixels.
    std::vector<ScreenLayout> screens;
    std::vector<Element> elements;
    Answers<Point, ElementIndex> hits;
    Read<ElementIndex> focused;
    std::vector<Display> displays;
    std::vector<Capture> captures;
    std::vector<Recognition> recognitions;
    std::vector<Recognition> verifications;
    std::vector<Detection> detections;
    bool truncated = false;  ///< Something was left out because it was too much.

    // How much is kept, and how much is read back.
    static constexpr std::size_t mostElements = 64;
    static constexpr std::size_t mostAnswers = 1000;  ///< Of one kind.
    static constexpr std::size_t mostText = std::size_t{1} << 20;
    static constexpr std::size_t mostPixels = std::size_t{64} << 20;
    static constexpr std::size_t mostBytes = std::size_t{32} << 20;
};

}  // namespace velmora
