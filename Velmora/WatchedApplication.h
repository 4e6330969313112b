// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

namespace velmora {

/// The application object, with an eye on how long the main thread is kept busy: where debug
/// messages of the category velmora.mainthread are wanted, every event that takes longer than one
/// frame of a display (16 ms) is told with its time and its receiver. Otherwise it costs nothing.
class WatchedApplication : public QApplication {
    Q_OBJECT

  public:
    WatchedApplication(int& argumentCount, char** arguments);

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    const bool watches_;
    int depth_ = 0;
};

}  // namespace velmora
