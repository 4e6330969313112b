// SPDX-License-Identifier: MIT
#include "Velmora/Coordination/HoverTimes.h"

#include <QLoggingCategory>
#include <chrono>

namespace velmora {

namespace {

Q_LOGGING_CATEGORY(hoverLog, "velmora.hover", QtWarningMsg)

}  // namespace

void noteHoverTime(const char* moment) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    qCDebug(
        hoverLog, "%s %lld", moment,
        static_cast<long long>(std::chrono::duration_cast<std::chrono::microseconds>(now).count()));
}

}  // namespace velmora
