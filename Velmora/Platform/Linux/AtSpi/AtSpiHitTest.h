// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "Velmora/Platform/Linux/AtSpi/AtSpiApplications.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiWindows.h"

namespace velmora {

/// An element of a window with what is known of it.
struct AtSpiHit {
    AtSpiObject object;
    AtSpiSpace space;
};

/// Goes down from a window to the deepest element at a point. Bounded in depth and number of
/// elements whatever tree a program shows. Worker thread only.
class AtSpiHitTest {
  public:
    AtSpiHitTest(AtSpiBus& bus, AtSpiToolkit toolkit, AtSpiDeadline& deadline)
        : bus_(bus), toolkit_(toolkit), deadline_(deadline) {}

    /// The element whose text is to be read at this point (capture space): the deepest one, or the
    /// nearest one around it that has more of the same text. The window itself where it shows
    /// nothing inside.
    AtSpiHit textElementAt(const AtSpiWindow& window, Point capture);

    /// The elements from the window down to the one that was found last.
    const QList<AtSpiObject>& path() const { return path_; }

    /// The place of an element of which only the object is known, in its window.
    AtSpiSpace spaceOf(const AtSpiObject& object, const AtSpiSpace& windowSpace);

  private:
    AtSpiHit deepestAt(const AtSpiWindow& window, Point capture);
    std::optional<AtSpiObject> childAt(const AtSpiHit& hit, Point capture, bool isFirst);
    std::optional<AtSpiObject> scanChildren(const AtSpiObject& parent, const AtSpiSpace& space,
                                            Point target, int depth);
    bool isShown(std::uint64_t states) const;
    AtSpiSpace spaceBelow(const AtSpiHit& parent, const AtSpiObject& child);
    AtSpiHit withEnclosingText(AtSpiHit hit, Point capture);
    bool hasText(const AtSpiObject& object);
    bool showsTextAt(const AtSpiObject& object, const AtSpiSpace& space, Point capture);
    std::optional<AtSpiObject> parentOf(const AtSpiObject& object);

    AtSpiBus& bus_;
    AtSpiToolkit toolkit_;
    AtSpiDeadline& deadline_;
    int scanned_ = 0;
    QList<AtSpiObject> path_;
};

}  // namespace velmora
