// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "Velmora/Coordination/Speaking.h"

namespace velmora {

/// Hands what a view wants spoken to the speech service. Lives as long as the view.
class SpeakRelay : public QObject {
    Q_OBJECT

  public:
    SpeakRelay(Speaking& speechService, QObject* parent)
        : QObject(parent), speechService_(speechService) {}

  public slots:
    void speak(const QString& text) { speechService_.speak(text.toStdString()); }

  private:
    Speaking& speechService_;
};

}  // namespace velmora
