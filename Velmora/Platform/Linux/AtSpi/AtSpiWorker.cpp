// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiWorker.h"

#include <QMetaObject>

namespace velmora {

AtSpiWorker::AtSpiWorker() : context_(std::make_unique<QObject>()) {
    thread_.setObjectName(QStringLiteral("velmora-atspi"));
    context_->moveToThread(&thread_);
    thread_.start();
}

AtSpiWorker::~AtSpiWorker() {
    thread_.quit();
    thread_.wait();
}

void AtSpiWorker::finish(std::function<void()> last) {
    post([this, last = std::move(last)] {
        last();
        thread_.quit();
    });
    thread_.wait();
}

void AtSpiWorker::post(std::function<void()> job) {
    QMetaObject::invokeMethod(context_.get(), std::move(job), Qt::QueuedConnection);
}

}  // namespace velmora
