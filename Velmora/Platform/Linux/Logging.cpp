// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Logging.h"

#include <QLoggingCategory>
#include <QString>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace velmora {

namespace {

void fatalOnly(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message) {
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "velmora: %s\n", message.toUtf8().constData());
    }
}

}  // namespace

bool isDebugLoggingOn() {
    const char* const value = std::getenv("VELMORA_LOG");
    return value != nullptr && std::string_view(value) == "debug";
}

void installLogging() {
    if (!isDebugLoggingOn()) {
        qInstallMessageHandler(fatalOnly);
        return;
    }
    qSetMessagePattern(QStringLiteral("%{time process} %{category}: %{message}"));
    QLoggingCategory::setFilterRules(QStringLiteral("velmora.*.debug=true"));
}

}  // namespace velmora
