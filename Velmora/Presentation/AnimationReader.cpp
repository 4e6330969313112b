// SPDX-License-Identifier: MIT
#include "Velmora/Presentation/AnimationReader.h"

#include <QImageReader>
#include <QPromise>
#include <QThreadPool>
#include <algorithm>
#include <utility>

namespace velmora {

class AnimationReader::File {
  public:
    explicit File(QString name) : name_(std::move(name)) { rewind(); }

    bool canRead() const { return reader_->canRead(); }

    AnimationFrame read() {
        if (!reader_->canRead()) {
            rewind();
        }
        AnimationFrame frame;
        frame.image = reader_->read();
        frame.delay = std::chrono::milliseconds(std::max(reader_->nextImageDelay(), 0));
        return frame;
    }

  private:
    void rewind() { reader_ = std::make_unique<QImageReader>(name_); }

    QString name_;
    std::unique_ptr<QImageReader> reader_;
};

AnimationReader::AnimationReader(const QString& file)
    : file_(std::make_shared<File>(file)), isValid_(file_->canRead()) {}

AnimationReader::~AnimationReader() = default;

QFuture<AnimationFrame> AnimationReader::next() {
    // What is handed to the pool has to be copyable.
    const auto promise = std::make_shared<QPromise<AnimationFrame>>();
    QFuture<AnimationFrame> result = promise->future();
    promise->start();
    QThreadPool::globalInstance()->start([file = file_, promise] {
        promise->addResult(file->read());
        promise->finish();
    });
    return result;
}

}  // namespace velmora
