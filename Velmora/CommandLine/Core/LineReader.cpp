// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Core/LineReader.h"

#include <streambuf>

namespace velmora {

std::optional<LineReader::Line> LineReader::next() {
    using Traits = std::istream::traits_type;
    std::streambuf* buffer = stream_.rdbuf();
    if (Traits::eq_int_type(buffer->sgetc(), Traits::eof())) {
        return std::nullopt;
    }
    Line line;
    // One byte more than the limit is kept, for it may be the CR of the line end.
    for (auto byte = buffer->sbumpc(); !Traits::eq_int_type(byte, Traits::eof());
         byte = buffer->sbumpc()) {
        const char character = Traits::to_char_type(byte);
        if (character == '\n') {
            break;
        }
        if (line.text.size() <= limit_) {
            line.text.push_back(character);
        } else {
            line.tooLong = true;
        }
    }
    if (!line.tooLong && line.text.ends_with('\r')) {
        line.text.pop_back();
    }
    if (line.tooLong || line.text.size() > limit_) {
        return Line{.text = {}, .tooLong = true};
    }
    return line;
}

}  // namespace velmora
