// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiWorker.h"

namespace velmora {

AtSpiWorker::AtSpiWorker() : inbox_(std::make_unique<EventLoopInbox>()) {
    thread_.setObjectName(QStringLiteral("velmora-atspi"));
    inbox_->moveToThread(&thread_);
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
    inbox_->post(std::move(job));
}

}  // namespace velmora
