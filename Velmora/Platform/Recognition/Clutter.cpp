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

constexpr int smallestDrawing = 22;  ///< Characters up to here may be ink all over.
constexpr int leastTexture = 25;     ///< What strokes differ by from what is between them.

/// Whether strokes run through a square of ink, too close to each other to be apart in the mask.
bool isTextured(const GrayImage& image, const PixelBox& square) {
    int changes = 0;
    for (int y = square.top + 1; y + 1 < square.bottom; ++y) {
        for (int x = square.left + 1; x + 1 < square.right; ++x) {
            const int across = 2 * image.at(x, y) - image.at(x - 1, y) - image.at(x + 1, y);
            const int down = 2 * image.at(x, y) - image.at(x, y - 1) - image.at(x, y + 1);
            changes += std::max(std::abs(across), std::abs(down)) >= leastTexture ? 1 : 0;
        }
    }
    return changes * 4 >= (square.width() - 2) * (square.height() - 2);
}

/// Whether the box holds a filled square of two thirds of its smaller side: no stroke does, but a
/// small character of many strokes may.
bool isSolid(const GrayImage& image, const InkMask& mask, const PixelBox& box) {
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
                return smaller > smallestDrawing ||
                       !isTextured(image, {x + 1 - side, y + 1 - side, x + 1, y + 1});
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
constexpr int shortestFrameTop = 30;  ///< Of a frame whose sides are there as well.
constexpr int shortestFrameSide = 14;
constexpr int evenPiece = 8;       ///< Of a rule that another one runs into.
constexpr double flattest = 0.75;  ///< Height to width: no character is so flat a frame.
constexpr int cornerReach = 3;     ///< Between the ends of a frame's sides.

/// What a rule would stand on, on one side of it: beyond it, or, where another rule runs close by,
/// between the two or behind that.
int paperBeside(const TurnedView& view, int along, int across, int direction) {
    const int value = view.value(along, across);
    const int usual = view.value(along, across + direction * ruleReach);
    if (std::abs(value - usual) >= leastRuleDepth) {
        return usual;
    }
    for (const int distance : {2, 4, 5}) {
        const int place = across + direction * distance;
        const int paper = place >= 0 && place < view.breadth() ? view.value(along, place) : value;
        if (std::abs(value - paper) >= leastRuleDepth) {
            return paper;
        }
    }
    return usual;
}

/// Whether a pixel is darker, or lighter, than what lies on both sides of it.
bool standsOut(const TurnedView& view, int along, int across) {
    const int value = view.value(along, across);
    const int before = value - paperBeside(view, along, across, -1);
    const int after = value - paperBeside(view, along, across, 1);
    return (before >= leastRuleDepth && after >= leastRuleDepth) ||
           (before <= -leastRuleDepth && after <= -leastRuleDepth);
}

struct Stretch {
    int from;
    int to;
    int across;
};

/// Puts the pieces of a stretch together that differ in shade, as frames do where they touch.
class StretchBuilder {
  public:
    StretchBuilder(std::vector<Stretch>& stretches, int shortest, int across)
        : stretches_(stretches), shortest_(shortest), across_(across) {}

    /// An even piece, in the order of the row; what is very short belongs to no rule.
    void add(int from, int to) {
        if (to - from < std::min(evenPiece, shortest_)) {
            return;
        }
        if (from != to_) {
            finish();
            from_ = from;
        }
        to_ = to;
    }

    void finish() {
        if (to_ - from_ >= shortest_) {
            stretches_.push_back({from_, to_, across_});
        }
        from_ = to_ = 0;
    }

  private:
    std::vector<Stretch>& stretches_;
    int shortest_;
    int across_;
    int from_ = 0;
    int to_ = 0;
};

/// The thin even stretches along each row or column that are at least this long. What is looked at
/// is the picture, not the ink: a frame may be too faint for ink in some places and not in others.
std::vector<Stretch> thinStretches(const TurnedView& view, int shortest) {
    std::vector<Stretch> stretches;
    for (int across = ruleReach; across < view.breadth() - ruleReach; ++across) {
        StretchBuilder builder(stretches, shortest, across);
        int from = 0;
        for (int along = 0; along <= view.length(); ++along) {
            const bool inside = along < view.length() && standsOut(view, along, across);
            const bool even =
                inside && along > from &&
                std::abs(view.value(along, across) - view.value(along - 1, across)) <= ruleEvenness;
            if (inside && (even || along == from)) {
                continue;
            }
            builder.add(from, along);
            from = inside ? along : along + 1;
        }
        builder.finish();
    }
    return stretches;
}

/// Whether sides begin, or end, at both ends of a short stretch, as those of a frame around a label
/// of two characters do.
bool isFrameTop(const Stretch& top, const std::vector<Stretch>& sides) {
    const auto meets = [&](int column, bool below) {
        return std::any_of(sides.begin(), sides.end(), [&](const Stretch& side) {
            const int end = below ? side.from : side.to - 1;
            return std::abs(side.across - column) <= cornerReach &&
                   std::abs(end - top.across) <= cornerReach &&
                   side.to - side.from <= flattest * (top.to - top.from);
        });
    };
    return (meets(top.from, true) && meets(top.to - 1, true)) ||
           (meets(top.from, false) && meets(top.to - 1, false));
}

void eraseStretch(TurnedView& view, const Stretch& stretch) {
    for (int along = stretch.from; along < stretch.to; ++along) {
        const int paper = paperBeside(view, along, stretch.across, -1);
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
    std::vector<Stretch> rules = thinStretches(horizontal, shortestFrameTop);
    if (rules.empty()) {
        return;
    }
    // The sides are looked for while the picture is still whole.
    const std::vector<Stretch> sides = thinStretches(vertical, shortestFrameSide);
    std::erase_if(rules, [&](const Stretch& rule) {
        return rule.to - rule.from < shortestHorizontalRule && !isFrameTop(rule, sides);
    });
    InkMask ruleMask(mask.width(), mask.height());
    for (const Stretch& rule : rules) {
        std::fill(ruleMask.row(rule.across) + rule.from, ruleMask.row(rule.across) + rule.to,
                  std::uint8_t{1});
    }
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
        } else if (isSolid(image, mask, box)) {
            eraseIcon(box, image, mask);
        } else {
            kept.push_back(box);
        }
    }
    return kept;
}

}  // namespace velmora
