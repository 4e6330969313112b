// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/Clutter.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace velmora {

namespace {

constexpr int tallestInk = 90;
constexpr int widestInk = 400;

bool isTooLarge(const PixelBox& box) {
    return box.height() > tallestInk || box.width() > widestInk;
}

bool isRule(const PixelBox& box) {
    return (box.width() > 60 && box.height() <= 3) || (box.height() > 45 && box.width() <= 3);
}

int inkIn(const InkMask& mask, const PixelBox& box) {
    int ink = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        const std::uint8_t* row = mask.row(y);
        ink += static_cast<int>(std::count(row + box.left, row + box.right, std::uint8_t{1}));
    }
    return ink;
}

/// A box that is mostly outline: ink along its sides, or hardly any ink for its size.
bool isFrame(const InkMask& mask, const PixelBox& box) {
    if (box.width() <= 24 || box.height() <= 14 || box.width() <= box.height() * 5 / 4) {
        return false;
    }
    int horizontal = 0;
    for (int x = box.left; x < box.right; ++x) {
        horizontal += mask.row(box.top)[x] + mask.row(box.bottom - 1)[x];
    }
    int vertical = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        vertical += mask.row(y)[box.left] + mask.row(y)[box.right - 1];
    }
    const bool topAndBottom = horizontal > 1.6 * box.width() && vertical > 0.8 * box.height();
    const bool leftAndRight = horizontal > 0.8 * box.width() && vertical > 1.6 * box.height();
    return topAndBottom || leftAndRight || inkIn(mask, box) < 0.12 * box.width() * box.height();
}

/// Paints the outermost two pixels of the box with what is just inside them.
void eraseFrame(const PixelBox& box, GrayImage& image, InkMask& mask) {
    const int innerLeft = box.left + 3;
    const int innerRight = box.right - 4;
    const int innerTop = box.top + 3;
    const int innerBottom = box.bottom - 4;
    for (int x = box.left; x < box.right; ++x) {
        const int inside = std::clamp(x, innerLeft, innerRight);
        for (int k = 0; k < 2; ++k) {
            image.at(x, box.top + k) = image.at(inside, innerTop);
            image.at(x, box.bottom - 1 - k) = image.at(inside, innerBottom);
        }
        mask.set(x, box.top, false);
        mask.set(x, box.bottom - 1, false);
    }
    for (int y = box.top; y < box.bottom; ++y) {
        const int inside = std::clamp(y, innerTop, innerBottom);
        for (int k = 0; k < 2; ++k) {
            image.at(box.left + k, y) = image.at(innerLeft, inside);
            image.at(box.right - 1 - k, y) = image.at(innerRight, inside);
        }
        mask.set(box.left, y, false);
        mask.set(box.right - 1, y, false);
    }
}

/// Whether the box holds a filled square of two thirds of its smaller side: no stroke does.
bool isSolid(const InkMask& mask, const PixelBox& box) {
    const int smaller = std::min(box.width(), box.height());
    if (smaller < 7 || box.width() >= 3 * box.height()) {
        return false;
    }
    const int side = std::max(6, smaller * 65 / 100);
    std::vector<int> depth(static_cast<std::size_t>(box.width()), 0);
    for (int y = box.top; y < box.bottom; ++y) {
        int run = 0;
        for (int x = box.left; x < box.right; ++x) {
            int& down = depth[static_cast<std::size_t>(x - box.left)];
            down = mask.at(x, y) ? down + 1 : 0;
            run = down >= side ? run + 1 : 0;
            if (run >= side) {
                return true;
            }
        }
    }
    return false;
}

void eraseIcon(const PixelBox& box, GrayImage& image, InkMask& mask) {
    const PixelBox area = box.grownBy(1, 1).clippedTo(image.width(), image.height());
    const std::uint8_t paper =
        image.nearest(box.left - 3, std::min(image.height() - 1, (box.top + box.bottom) / 2));
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            image.at(x, y) = paper;
            mask.set(x, y, false);
        }
    }
}

/// A view of picture and mask with rows and columns exchanged where `turned`, so that one routine
/// serves horizontal and vertical rules.
class TurnedView {
  public:
    TurnedView(GrayImage& image, InkMask& mask, bool turned)
        : image_(image), mask_(mask), turned_(turned) {}

    int length() const { return turned_ ? mask_.height() : mask_.width(); }
    int breadth() const { return turned_ ? mask_.width() : mask_.height(); }
    int value(int along, int across) const {
        return turned_ ? image_.at(across, along) : image_.at(along, across);
    }
    void erase(int along, int across, int paper) {
        const int x = turned_ ? across : along;
        const int y = turned_ ? along : across;
        mask_.set(x, y, false);
        image_.at(x, y) = static_cast<std::uint8_t>(paper);
    }

  private:
    GrayImage& image_;
    InkMask& mask_;
    bool turned_;
};

constexpr int ruleReach = 3;        ///< A rule is thinner than this.
constexpr int leastRuleDepth = 12;  ///< How far it differs from both of its sides.
constexpr int ruleEvenness = 12;    ///< How far it may change from one pixel to the next.
constexpr int shortestHorizontalRule = 48;
constexpr int shortestFrameSide = 14;

/// Whether a pixel is darker, or lighter, than what lies on both sides of it.
bool standsOut(const TurnedView& view, int along, int across) {
    const int value = view.value(along, across);
    const int before = value - view.value(along, across - ruleReach);
    const int after = value - view.value(along, across + ruleReach);
    return (before >= leastRuleDepth && after >= leastRuleDepth) ||
           (before <= -leastRuleDepth && after <= -leastRuleDepth);
}

struct Stretch {
    int from;
    int to;
    int across;
};

/// The thin even stretches along each row or column that are at least this long. What is looked at
/// is the picture, not the ink: a frame may be too faint for ink in some places and not in others.
std::vector<Stretch> thinStretches(const TurnedView& view, int shortest) {
    std::vector<Stretch> stretches;
    for (int across = ruleReach; across < view.breadth() - ruleReach; ++across) {
        int from = 0;
        for (int along = 0; along <= view.length(); ++along) {
            const bool inside = along < view.length() && standsOut(view, along, across);
            const bool even =
                inside && along > from &&
                std::abs(view.value(along, across) - view.value(along - 1, across)) <= ruleEvenness;
            if (inside && (even || along == from)) {
                continue;
            }
            if (along - from >= shortest) {
                stretches.push_back({from, along, across});
            }
            from = inside ? along : along + 1;
        }
    }
    return stretches;
}

void eraseStretch(TurnedView& view, const Stretch& stretch) {
    for (int along = stretch.from; along < stretch.to; ++along) {
        const int paper = view.value(along, stretch.across - ruleReach);
        for (int across = stretch.across - 1; across <= stretch.across + 1; ++across) {
            view.erase(along, across, paper);
        }
    }
}

bool meetsRule(const InkMask& rules, int x, int y) {
    const PixelBox around =
        PixelBox{x - 3, y - 4, x + 4, y + 5}.clippedTo(rules.width(), rules.height());
    for (int row = around.top; row < around.bottom; ++row) {
        for (int column = around.left; column < around.right; ++column) {
            if (rules.at(column, row)) {
                return true;
            }
        }
    }
    return false;
}

/// The sides of a frame run from one horizontal rule to another, or leave the picture.
bool isFrameSide(const InkMask& rules, const Stretch& side) {
    const bool top = side.from <= ruleReach || meetsRule(rules, side.across, side.from);
    const bool bottom =
        side.to >= rules.height() - ruleReach || meetsRule(rules, side.across, side.to - 1);
    return top && bottom;
}

}  // namespace

void removeRules(GrayImage& image, InkMask& mask) {
    TurnedView horizontal(image, mask, false);
    TurnedView vertical(image, mask, true);
    const std::vector<Stretch> rules = thinStretches(horizontal, shortestHorizontalRule);
    if (rules.empty()) {
        return;
    }
    InkMask ruleMask(mask.width(), mask.height());
    for (const Stretch& rule : rules) {
        std::fill(ruleMask.row(rule.across) + rule.from, ruleMask.row(rule.across) + rule.to,
                  std::uint8_t{1});
    }
    // The sides are looked for while the picture is still whole.
    const std::vector<Stretch> sides = thinStretches(vertical, shortestFrameSide);
    for (const Stretch& rule : rules) {
        eraseStretch(horizontal, rule);
    }
    for (const Stretch& side : sides) {
        if (isFrameSide(ruleMask, side)) {
            eraseStretch(vertical, side);
        }
    }
}

std::vector<PixelBox> removeClutter(const std::vector<PixelBox>& components, GrayImage& image,
                                    InkMask& mask) {
    std::vector<PixelBox> kept;
    for (const PixelBox& box : components) {
        if (isTooLarge(box) || isRule(box)) {
            continue;
        }
        if (isFrame(mask, box)) {
            eraseFrame(box, image, mask);
        } else if (isSolid(mask, box)) {
            eraseIcon(box, image, mask);
        } else {
            kept.push_back(box);
        }
    }
    return kept;
}

}  // namespace velmora
