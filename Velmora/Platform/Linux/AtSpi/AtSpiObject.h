// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace velmora {

/// Names one object of one program on the accessibility bus.
struct AtSpiObject {
    QString bus;   ///< The program's unique name on the bus.
    QString path;  ///< The object in that program.

    /// The bus writes "no object" as a path that ends in "null".
    bool isNull() const { return bus.isEmpty() || path.isEmpty() || path.endsWith(u"/null"); }

    bool operator==(const AtSpiObject&) const = default;
};

}  // namespace velmora
