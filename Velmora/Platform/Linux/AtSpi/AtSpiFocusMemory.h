// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <chrono>
#include <optional>
#include <utility>

#include "Velmora/Platform/Linux/AtSpi/AtSpiObject.h"

namespace velmora {

/// Where the keyboard focus of each program is, as far as it told so or was looked for. Worker
/// thread only.
class AtSpiFocusMemory {
  public:
    using Clock = std::chrono::steady_clock;

    /// The object that last got the focus, by the program's own signals since we listen.
    std::optional<AtSpiObject> told(const QString& program) const;
    void tell(const AtSpiObject& object, bool hasFocus);

    /// The object that a search in this window of the program found last. No signal came since,
    /// but not every program sends them.
    std::optional<AtSpiObject> seen(const QString& program, const AtSpiObject& window) const;
    void see(const QString& program, const AtSpiObject& window, const AtSpiObject& object);

    /// Whether a search in this window found nothing a short while ago, and no signal of this
    /// program came since. Not every program sends signals, so that this does not hold for long.
    bool searchedInVain(const QString& program, const AtSpiObject& window,
                        Clock::time_point now) const;
    void searchInVain(const QString& program, const AtSpiObject& window, Clock::time_point now);

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
    struct VainSearch {
        AtSpiObject window;
        Clock::time_point when;
    };
    QHash<QString, AtSpiObject> told_;
    QHash<QString, VainSearch> vain_;
    QHash<QString, Sight> seen_;
    QList<AtSpiObject> likely_;
};

}  // namespace velmora
