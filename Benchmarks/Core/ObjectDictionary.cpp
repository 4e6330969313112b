// SPDX-License-Identifier: MIT
#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <unordered_map>
#include <utility>

#include "Benchmarks/Core/Rival.h"
#include "VelmoraCore/PinyinConverter.h"
#include "VelmoraCore/Utf8.h"

namespace velmora::benchmarks {
namespace {

struct Definition {
    std::array<std::uint64_t, 2> id{};
    std::vector<std::string> glosses;
};

struct Entry {
    std::array<std::uint64_t, 2> id{};
    std::string simplified;
    std::string traditional;
    std::string reading;
    std::string marked;
    std::vector<PinyinSyllable> syllables;
    std::vector<Definition> definitions;
};

struct Node {
    std::unordered_map<char32_t, std::unique_ptr<Node>> children;
    std::vector<const Entry*> entries;
};

std::vector<std::string> pieces(std::string_view text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t start = 0; start < text.size();) {
        std::size_t end = text.find(separator, start);
        end = end == std::string_view::npos ? text.size() : end;
        parts.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

class ObjectDictionary : public Rival {
  public:
    explicit ObjectDictionary(const std::string& path) {
        const std::string text = fileText(path);
        std::mt19937_64 random(1);
        forEachRivalLine(text, [&](const RivalLine& line) {
            auto entry = std::make_unique<Entry>();
            entry->id = {random(), random()};
            entry->simplified = line.simplified;
            entry->traditional = line.traditional;
            entry->reading = line.reading;
            entry->syllables = PinyinConverter::convertPhrase(line.reading);
            entry->marked = PinyinConverter::joinMarked(entry->syllables);
            entry->definitions.push_back({{random(), random()}, pieces(line.glosses, '/')});
            entries_.push_back(std::move(entry));
        });
        for (const auto& entry : entries_) {
            byHeadword_[entry->simplified].push_back(entry.get());
            if (entry->simplified != entry->traditional) {
                byHeadword_[entry->traditional].push_back(entry.get());
            }
        }
        for (const auto& [headword, list] : byHeadword_) {
            insert(headword, list);
        }
    }

    std::size_t longestCovering(std::string_view text, const std::vector<std::size_t>& starts,
                                std::size_t position) const override {
        std::size_t best = 0;
        for (std::size_t start = position < 19 ? 0 : position - 19; start <= position; ++start) {
            const Node* node = &root_;
            for (std::size_t end = start; end + 1 < starts.size(); ++end) {
                const auto found =
                    node->children.find(utf8ScalarAt(text.data() + starts[end]).value);
                if (found == node->children.end()) {
                    break;
                }
                node = found->second.get();
                if (end >= position && !node->entries.empty() && end + 1 - start > best) {
                    best = end + 1 - start;
                }
            }
        }
        return best;
    }

  private:
    void insert(const std::string& headword, const std::vector<const Entry*>& list) {
        Node* node = &root_;
        for (std::size_t at = 0; at < headword.size();) {
            const Utf8Scalar scalar = utf8ScalarAt(headword.data() + at);
            auto& next = node->children[scalar.value];
            if (!next) {
                next = std::make_unique<Node>();
            }
            node = next.get();
            at += scalar.length;
        }
        node->entries = list;
    }

    std::vector<std::unique_ptr<Entry>> entries_;
    std::unordered_map<std::string, std::vector<const Entry*>> byHeadword_;
    Node root_;
};

}  // namespace

std::unique_ptr<Rival> makeObjectDictionary(const std::string& path) {
    return std::make_unique<ObjectDictionary>(path);
}

std::string fileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace velmora::benchmarks
