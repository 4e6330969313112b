// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/Tesseract/Worker/MessagePipe.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace velmora {

bool MessagePipe::receiveAll(std::uint8_t* data, std::size_t size) const {
    while (size > 0) {
        const ssize_t count = ::read(descriptor_, data, size);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        data += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool MessagePipe::waitsFor(std::chrono::milliseconds time) const {
    pollfd entry{descriptor_, POLLIN, 0};
    return ::poll(&entry, 1, static_cast<int>(time.count())) != 0;
}

std::optional<RecognizerMessage> MessagePipe::receive() const {
    std::array<std::uint8_t, RecognizerMessage::headerSize> header{};
    if (!receiveAll(header.data(), header.size())) {
        return std::nullopt;
    }
    std::optional<RecognizerMessage> message = decodeHeader(header);
    if (!message || !receiveAll(message->body.data(), message->body.size())) {
        return std::nullopt;
    }
    return message;
}

bool MessagePipe::send(const RecognizerMessage& message) const {
    const std::vector<std::uint8_t> bytes = encodeMessage(message);
    std::size_t sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            ::send(descriptor_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        sent += static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace velmora
