// SPDX-License-Identifier: MIT
#include <cstdint>
#include <unordered_map>

#include "Benchmarks/Core/Rival.h"

namespace velmora::benchmarks {
namespace {

class HashMapDictionary : public Rival {
  public:
    explicit HashMapDictionary(const std::string& path) : text_(fileText(path)) {
        forEachRivalLine(text_, [&](const RivalLine& line) {
            const auto offset = static_cast<std::uint32_t>(line.traditional.data() - text_.data());
            byHeadword_[line.traditional].push_back(offset);
            if (line.simplified != line.traditional) {
                byHeadword_[line.simplified].push_back(offset);
            }
        });
    }

    std::size_t longestCovering(std::string_view text, const std::vector<std::size_t>& starts,
                                std::size_t position) const override {
        std::size_t best = 0;
        for (std::size_t start = position < 19 ? 0 : position - 19; start <= position; ++start) {
            for (std::size_t end = position + 1; end < starts.size() && end - start <= 20; ++end) {
                const auto part = text.substr(starts[start], starts[end] - starts[start]);
                if (end - start > best && byHeadword_.contains(part)) {
                    best = end - start;
                }
            }
        }
        return best;
    }

  private:
    std::string text_;
    std::unordered_map<std::string_view, std::vector<std::uint32_t>> byHeadword_;
};

}  // namespace

std::unique_ptr<Rival> makeHashMapDictionary(const std::string& path) {
    return std::make_unique<HashMapDictionary>(path);
}

}  // namespace velmora::benchmarks
