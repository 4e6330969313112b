// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <chrono>
#include <optional>

#include "Velmora/Platform/Geometry.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiQuestion.h"

namespace velmora {

/// Answers that were asked for before they are needed, so that one round trip does for many. What
/// an extraction asked a program is what the next one will ask it, but for the place. An answer
/// serves the extraction in which it came, and not longer than a moment. Worker thread only.
class AtSpiForesight {
  public:
    /// A new extraction: what was not used of the last one's answers is dropped.
    void begin();

    /// What this extraction will probably ask the program; nothing when called again before the
    /// next one begins. Questions about a place are asked of this one (capture space), or left out
    /// where there is none.
    QList<QDBusMessage> expected(const QString& bus, std::optional<Point> capture);

    /// Remembers a question for the next extraction.
    void note(const AtSpiQuestion& question);

    void keep(const QDBusMessage& call, const QDBusMessage& reply);
    std::optional<QDBusMessage> answer(const QDBusMessage& call) const;

    void forget(const QString& bus);
    void forgetAll();

  private:
    using Clock = std::chrono::steady_clock;
    struct Answer {
        QDBusMessage reply;
        Clock::time_point since;
    };
    QHash<QString, QList<AtSpiQuestion>> asked_;  ///< By program, in the order of asking.
    QSet<QString> begun_;                         ///< The programs whose questions are being noted.
    QSet<QString> noted_;                         ///< The calls noted in this extraction.
    QHash<QString, Answer> answers_;              ///< By the whole call.
};

}  // namespace velmora
