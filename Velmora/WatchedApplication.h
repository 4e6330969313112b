// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

#include "Velmora/MainThreadWatch.h"

namespace velmora {

/// The application object, with an eye on how long the main thread is kept busy where the debug log
/// is to tell. Otherwise it costs nothing.
class WatchedApplication : public QApplication {
    Q_OBJECT

  public:
    WatchedApplication(int& argumentCount, char** arguments);

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    MainThreadWatch watch_;
    const bool watches_;
    int depth_ = 0;
};

}  // namespace velmora
