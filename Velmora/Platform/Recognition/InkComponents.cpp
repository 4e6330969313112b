// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/InkComponents.h"

#include <cstddef>
#include <numeric>

namespace velmora {

namespace {

/// A horizontal stretch of ink; `right` is not part of it.
struct Run {
    int left;
    int right;
    int y;
};

class Sets {
  public:
    std::size_t add() {
        parents_.push_back(parents_.size());
        return parents_.size() - 1;
    }
    std::size_t find(std::size_t i) {
        while (parents_[i] != i) {
            parents_[i] = parents_[parents_[i]];
            i = parents_[i];
        }
        return i;
    }
    void join(std::size_t a, std::size_t b) {
        a = find(a);
        b = find(b);
        parents_[std::max(a, b)] = std::min(a, b);
    }

  private:
    std::vector<std::size_t> parents_;
};

void appendRuns(const InkMask& mask, int y, std::vector<Run>& runs, Sets& sets) {
    const std::uint8_t* row = mask.row(y);
    const int width = mask.width();
    for (int x = 0; x < width;) {
        if (row[x] == 0) {
            ++x;
            continue;
        }
        const int left = x;
        while (x < width && row[x] != 0) {
            ++x;
        }
        runs.push_back({left, x, y});
        sets.add();
    }
}

/// Joins the runs of one row with those of the row above that touch them, diagonals included.
void joinRows(const std::vector<Run>& runs, std::size_t above, std::size_t current, Sets& sets) {
    std::size_t upper = above;
    for (std::size_t i = current; i < runs.size(); ++i) {
        while (upper < current && runs[upper].right < runs[i].left) {
            ++upper;
        }
        for (std::size_t k = upper; k < current && runs[k].left <= runs[i].right; ++k) {
            sets.join(k, i);
        }
    }
}

}  // namespace

std::vector<PixelBox> inkComponents(const InkMask& mask) {
    std::vector<Run> runs;
    Sets sets;
    std::size_t above = 0;
    for (int y = 0; y < mask.height(); ++y) {
        const std::size_t current = runs.size();
        appendRuns(mask, y, runs, sets);
        joinRows(runs, above, current, sets);
        above = current;
    }
    std::vector<PixelBox> boxes;
    std::vector<std::size_t> boxOfRoot(runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const PixelBox box{runs[i].left, runs[i].y, runs[i].right, runs[i].y + 1};
        const std::size_t root = sets.find(i);
        if (root == i) {
            boxOfRoot[i] = boxes.size();
            boxes.push_back(box);
        } else {
            PixelBox& whole = boxes[boxOfRoot[root]];
            whole = whole.united(box);
        }
    }
    return boxes;
}

}  // namespace velmora
