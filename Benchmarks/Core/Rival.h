// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::benchmarks {

/// Another way of keeping a word list and finding the longest word over a position.
class Rival {
  public:
    virtual ~Rival() = default;

    /// Characters of the longest headword that covers a position of the text, 0 for none. `starts`
    /// holds the byte offset of every code point and the length of the text.
    virtual std::size_t longestCovering(std::string_view text,
                                        const std::vector<std::size_t>& starts,
                                        std::size_t position) const = 0;
};

/// One object per entry and per node of a trie, each with strings and maps of its own.
std::unique_ptr<Rival> makeObjectDictionary(const std::string& path);

/// A hash map from headword to entry, asked for every substring.
std::unique_ptr<Rival> makeHashMapDictionary(const std::string& path);

/// A marisa trie, walked for the common prefixes of every start.
std::unique_ptr<Rival> makeMarisaDictionary(const std::string& path);

/// The whole text of a file.
std::string fileText(const std::string& path);

/// The fields of one line as a program in a hurry would split it.
struct RivalLine {
    std::string_view traditional;
    std::string_view simplified;
    std::string_view reading;
    std::string_view glosses;
};

/// Calls `use` with the fields of every entry of a word list.
template <typename Use>
void forEachRivalLine(std::string_view text, Use use) {
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find('\n', start);
        end = end == std::string_view::npos ? text.size() : end;
        std::string_view line = text.substr(start, end - start);
        start = end + 1;
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        const std::size_t blank = line.find(' ');
        const std::size_t open = line.find(" [");
        const std::size_t close = line.find("] /");
        if (line.empty() || line.front() == '#' || blank == std::string_view::npos ||
            open == std::string_view::npos || close == std::string_view::npos) {
            continue;
        }
        use(RivalLine{line.substr(0, blank), line.substr(blank + 1, open - blank - 1),
                      line.substr(open + 2, close - open - 2), line.substr(close + 3)});
    }
}

}  // namespace velmora::benchmarks
