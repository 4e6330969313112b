// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <chrono>

namespace velmora {

/// Which programs are being left alone because they did not answer in time. Each is asked something
/// small in the background and is spoken to again once it has answered that, and some seconds have
/// passed. Worker thread only.
class AtSpiHealth {
  public:
    static constexpr std::chrono::milliseconds leastRest{3000};

    bool isLeftAlone(const QString& bus);

    void leaveAlone(const QString& bus, const QDBusConnection& connection);

    void forgetAll();

  private:
    using Clock = std::chrono::steady_clock;
    struct Rest {
        Clock::time_point since;
        bool answered = false;
        int round = 0;
    };

    void ping(const QString& bus, const QDBusConnection& connection);

    QHash<QString, Rest> resting_;
    int rounds_ = 0;
    QObject watchers_;
};

}  // namespace velmora
