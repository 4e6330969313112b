// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/CharacterCells.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

#include "Velmora/Platform/Recognition/CodePoint.h"

namespace velmora {

namespace {

/// Full-width characters are a little wider than the ink of their line is high.
constexpr std::array<double, 6> emPerLineHeight{0.97, 1.02, 1.07, 1.12, 1.18, 1.26};
constexpr float unreachable = std::numeric_limits<float>::max() / 4;
constexpr float cutWeight = 0.5F;  ///< For an edge that runs through ink.
constexpr float emptyColumnCost = 0.15F;
constexpr float inkColumnCost = 1.1F;  ///< For ink that belongs to no character, per em.
constexpr float positionWeight = 0.25F;

/// What a kind of character may take up, in em, and how strictly.
struct WidthRule {
    double expected;
    double least;
    double greatest;
    double weight;
};

WidthRule widthRule(char32_t character) {
    if (isHan(character)) {
        return {1, 0.7, 1.35, 6};
    }
    if (isFullWidthPunctuation(character)) {
        return {0.9, 0.15, 1.15, 0.25};
    }
    return {0.55, 0.1, 1.05, 0.5};
}

std::vector<float> cutCosts(const std::vector<int>& columns, double em) {
    std::vector<float> costs(columns.size() + 1);
    for (std::size_t x = 0; x < costs.size(); ++x) {
        const int before = x > 0 ? columns[x - 1] : 0;
        const int after = x < columns.size() ? columns[x] : 0;
        costs[x] = cutWeight * static_cast<float>(std::min(before, after) / em);
    }
    return costs;
}

/// The cheapest way to have placed the first symbols within the first columns.
class CellTable {
  public:
    CellTable(std::size_t symbols, std::size_t columns)
        : stride_(columns + 1),
          cost_((symbols + 1) * stride_, unreachable),
          from_((symbols + 1) * stride_, skipped) {
        cost_[0] = 0;
    }

    static constexpr int skipped = -1;  ///< The column before belongs to no character.

    float cost(std::size_t symbol, std::size_t x) const { return cost_[symbol * stride_ + x]; }
    int from(std::size_t symbol, std::size_t x) const { return from_[symbol * stride_ + x]; }
    void offer(std::size_t symbol, std::size_t x, float cost, int from) {
        const std::size_t at = symbol * stride_ + x;
        if (cost < cost_[at]) {
            cost_[at] = cost;
            from_[at] = from;
        }
    }

  private:
    std::size_t stride_;
    std::vector<float> cost_;
    std::vector<int> from_;
};

/// Fills in all places of one symbol, given those of the symbols before it.
void placeSymbol(CellTable& table, std::size_t index, const ReadSymbol& symbol,
                 const std::vector<float>& cuts, double em) {
    const int width = static_cast<int>(cuts.size()) - 1;
    const char32_t character = firstCodePoint(symbol.text);
    const WidthRule rule = widthRule(character);
    const double middle = (symbol.left + symbol.right) / 2;
    const int least = std::max(1, static_cast<int>(std::floor(rule.least * em)));
    const int greatest = static_cast<int>(std::ceil(rule.greatest * em));
    const float missing = 0.35F + 0.9F * std::clamp((symbol.confidence - 0.6F) / 0.4F, 0.0F, 1.0F);
    for (int x = 0; x <= width; ++x) {
        const float before = table.cost(index, static_cast<std::size_t>(x));
        if (before >= unreachable) {
            continue;
        }
        table.offer(index + 1, static_cast<std::size_t>(x), before + missing, x);
        const float base = before + cuts[static_cast<std::size_t>(x)];
        for (int cell = least; cell <= greatest; ++cell) {
            int end = x + cell;
            if (end > width) {
                // The last character's own margin may lie outside the ink.
                if (!isHan(character) || end > width + 0.2 * em || width <= x) {
                    break;
                }
                end = width;
            }
            const double deviation = (cell - rule.expected * em) / em;
            const double distance = std::min(1.5, std::fabs((x + end) / 2.0 - middle) / em);
            const auto price = static_cast<float>(rule.weight * deviation * deviation) +
                               positionWeight * static_cast<float>(distance) +
                               cuts[static_cast<std::size_t>(end)];
            table.offer(index + 1, static_cast<std::size_t>(end), base + price, x);
        }
    }
}

void skipColumns(CellTable& table, std::size_t index, const std::vector<int>& columns, double em) {
    for (std::size_t x = 0; x < columns.size(); ++x) {
        const float price =
            (columns[x] > 0 ? inkColumnCost : emptyColumnCost) / static_cast<float>(em);
        table.offer(index, x + 1, table.cost(index, x) + price, CellTable::skipped);
    }
}

FittedCells fitWithEm(const LineReading& reading, const std::vector<int>& columns, double em) {
    const std::vector<float> cuts = cutCosts(columns, em);
    CellTable table(reading.size(), columns.size());
    for (std::size_t i = 0; i <= reading.size(); ++i) {
        skipColumns(table, i, columns, em);
        if (i < reading.size()) {
            placeSymbol(table, i, reading[i], cuts, em);
        }
    }
    FittedCells fitted;
    fitted.em = em;
    fitted.cells.resize(reading.size());
    fitted.cost = table.cost(reading.size(), columns.size()) /
                  static_cast<double>(std::max<std::size_t>(1, reading.size()));
    std::size_t x = columns.size();
    for (std::size_t i = reading.size(); i > 0;) {
        const int from = table.from(i, x);
        if (from == CellTable::skipped) {
            --x;
            continue;
        }
        fitted.cells[i - 1] = {from, static_cast<int>(x)};
        x = static_cast<std::size_t>(from);
        --i;
    }
    return fitted;
}

struct Guess {
    std::vector<CharacterCell> cells;
    float cost = unreachable;
};

Guess guessWithEm(const std::vector<int>& columns, double em) {
    const std::vector<float> cuts = cutCosts(columns, em);
    const int width = static_cast<int>(columns.size());
    CellTable table(0, columns.size());
    const int least = std::max(1, static_cast<int>(0.15 * em));
    const int greatest = static_cast<int>(std::ceil(1.25 * em));
    for (int x = 0; x < width; ++x) {
        const auto at = static_cast<std::size_t>(x);
        const float before = table.cost(0, at);
        const float skip =
            (columns[at] > 0 ? inkColumnCost : emptyColumnCost) / static_cast<float>(em);
        table.offer(0, at + 1, before + skip, CellTable::skipped);
        for (int cell = least; cell <= greatest && x + cell <= width; ++cell) {
            const double deviation = (cell - em) / em;
            const float shape =
                cell >= 0.8 * em ? static_cast<float>(5 * deviation * deviation) : 0.35F;
            const auto end = at + static_cast<std::size_t>(cell);
            table.offer(0, end, before + shape + cuts[at] + cuts[end] + 0.02F, x);
        }
    }
    Guess guess;
    for (int x = width; x > 0;) {
        const int from = table.from(0, static_cast<std::size_t>(x));
        if (from == CellTable::skipped) {
            --x;
            continue;
        }
        guess.cells.push_back({from, x});
        x = from;
    }
    std::reverse(guess.cells.begin(), guess.cells.end());
    guess.cost = table.cost(0, columns.size()) /
                 static_cast<float>(std::max<std::size_t>(1, guess.cells.size()));
    return guess;
}

}  // namespace

FittedCells fitCells(const LineReading& reading, const std::vector<int>& columns, int lineHeight) {
    FittedCells best;
    best.cells.resize(reading.size());
    if (reading.empty() || columns.empty() || lineHeight < 1) {
        return best;
    }
    best.cost = unreachable;
    for (const double factor : emPerLineHeight) {
        FittedCells fitted = fitWithEm(reading, columns, lineHeight * factor);
        if (fitted.cost < best.cost) {
            best = std::move(fitted);
        }
    }
    return best;
}

std::vector<CharacterCell> guessCells(const std::vector<int>& columns, int lineHeight) {
    if (columns.empty() || lineHeight < 1) {
        return {};
    }
    Guess best;
    for (const double factor : emPerLineHeight) {
        Guess guess = guessWithEm(columns, lineHeight * factor);
        if (guess.cost < best.cost) {
            best = std::move(guess);
        }
    }
    return best.cells;
}

}  // namespace velmora
