// SPDX-License-Identifier: MIT
#include <marisa.h>

#include <algorithm>
#include <cstdint>

#include "Benchmarks/Core/Rival.h"

namespace velmora::benchmarks {
namespace {

class MarisaDictionary : public Rival {
  public:
    explicit MarisaDictionary(const std::string& path) : text_(fileText(path)) {
        marisa::Keyset keys;
        forEachRivalLine(text_, [&](const RivalLine& line) {
            keys.push_back(line.traditional.data(), line.traditional.size());
            if (line.simplified != line.traditional) {
                keys.push_back(line.simplified.data(), line.simplified.size());
            }
        });
        trie_.build(keys);
        entries_.resize(trie_.size());
        std::size_t key = 0;
        forEachRivalLine(text_, [&](const RivalLine& line) {
            const auto offset = static_cast<std::uint32_t>(line.traditional.data() - text_.data());
            entries_[keys[key++].id()].push_back(offset);
            if (line.simplified != line.traditional) {
                entries_[keys[key++].id()].push_back(offset);
            }
        });
    }

    std::size_t longestCovering(std::string_view text, const std::vector<std::size_t>& starts,
                                std::size_t position) const override {
        std::size_t best = 0;
        marisa::Agent agent;
        for (std::size_t start = position < 19 ? 0 : position - 19; start <= position; ++start) {
            agent.set_query(text.data() + starts[start], text.size() - starts[start]);
            while (trie_.common_prefix_search(agent)) {
                const auto end = std::lower_bound(starts.begin(), starts.end(),
                                                  starts[start] + agent.key().length());
                const auto length = static_cast<std::size_t>(end - starts.begin()) - start;
                if (start + length > position && length > best) {
                    best = length;
                }
            }
        }
        return best;
    }

  private:
    std::string text_;
    marisa::Trie trie_;
    std::vector<std::vector<std::uint32_t>> entries_;
};

}  // namespace

std::unique_ptr<Rival> makeMarisaDictionary(const std::string& path) {
    return std::make_unique<MarisaDictionary>(path);
}

}  // namespace velmora::benchmarks
