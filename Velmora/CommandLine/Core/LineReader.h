// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <istream>
#include <optional>
#include <string>

namespace velmora {

/// Reads a stream line by line and holds no more than one line of bounded length.
class LineReader {
  public:
    struct Line {
        std::string text;      ///< Without its line end (LF or CR LF); empty where it is too long.
        bool tooLong = false;  ///< The line exceeded the limit; it was read to its end and dropped.
    };

    /// Reads from the stream, which must outlive the reader; `limit` is in bytes without line end.
    LineReader(std::istream& stream, std::size_t limit) : stream_(stream), limit_(limit) {}

    /// The next line, or nothing at the end of the input. A last line without a line end counts.
    std::optional<Line> next();

  private:
    std::istream& stream_;
    std::size_t limit_;
};

}  // namespace velmora
