// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <optional>
#include <utility>

#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"

namespace velmora {

/// Where the keyboard focus of each program is, as far as it told so or was looked for. Worker
/// thread only.
class AtSpiFocusMemory {
  public:
    /// The object that last got the focus, by the program's own signals since we listen.
    std::optional<AtSpiObject> told(const QString& program) const;
    void tell(const AtSpiObject& object, bool hasFocus);

    /// The object that a search in this window of the program found last. No signal came since,
    /// but not every program sends them.
    std::optional<AtSpiObject> seen(const QString& program, const AtSpiObject& window) const;
    void see(const QString& program, const AtSpiObject& window, const AtSpiObject& object);

    /// Where to look first in this extraction: the elements under the pointer, window first.
    const QList<AtSpiObject>& likely() const { return likely_; }
    void expectAmong(QList<AtSpiObject> objects) { likely_ = std::move(objects); }

    void forget(const QString& program);
    void forgetAll();

  private:
    struct Sight {
        AtSpiObject window;
        AtSpiObject object;
    };
    QHash<QString, AtSpiObject> told_;
    QHash<QString, Sight> seen_;
    QList<AtSpiObject> likely_;
};

}  // namespace velmora
