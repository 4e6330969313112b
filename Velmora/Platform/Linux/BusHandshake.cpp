// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/BusHandshake.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>

namespace velmora {

namespace {

class Socket {
  public:
    Socket() : descriptor_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {}
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    ~Socket() {
        if (descriptor_ >= 0) {
            ::close(descriptor_);
        }
    }

    int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
};

int hexDigit(char letter) {
    constexpr std::string_view digits = "0123456789abcdef";
    const auto found = digits.find(
        letter >= 'A' && letter <= 'F' ? static_cast<char>(letter - 'A' + 'a') : letter);
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

/// Addresses write unusual bytes as a percent sign and two digits.
std::string unescaped(std::string_view value) {
    std::string result;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == '%' && i + 2 < value.size();
        const int high = isEscape ? hexDigit(value[i + 1]) : -1;
        const int low = isEscape ? hexDigit(value[i + 2]) : -1;
        if (high >= 0 && low >= 0) {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            result += value[i];
        }
    }
    return result;
}

std::optional<std::string> valueOf(std::string_view key, std::string_view list) {
    while (!list.empty()) {
        const std::string_view pair = list.substr(0, list.find(','));
        if (pair.size() > key.size() && pair.substr(0, key.size()) == key &&
            pair[key.size()] == '=') {
            return unescaped(pair.substr(key.size() + 1));
        }
        list.remove_prefix(std::min(list.size(), pair.size() + 1));
    }
    return std::nullopt;
}

struct Place {
    sockaddr_un address{};
    socklen_t length = 0;
};

/// The socket that the first of the alternatives names.
std::optional<Place> placeOf(std::string_view address) {
    address = address.substr(0, address.find(';'));
    constexpr std::string_view transport = "unix:";
    if (address.substr(0, transport.size()) != transport) {
        return std::nullopt;
    }
    address.remove_prefix(transport.size());
    const auto path = valueOf("path", address);
    const auto abstractName = valueOf("abstract", address);
    if (!path && !abstractName) {
        return std::nullopt;
    }
    // A name that is in no folder begins with a zero byte.
    const std::string name = path ? *path : std::string(1, '\0') + *abstractName;
    Place place;
    place.address.sun_family = AF_UNIX;
    if (name.size() >= sizeof place.address.sun_path) {
        return std::nullopt;
    }
    std::memcpy(place.address.sun_path, name.data(), name.size());
    place.length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + (path ? 1 : 0));
    return place;
}

/// What a client says first: a zero byte, and who it is, the digits of its number as bytes.
std::string greeting() {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text(1, '\0');
    text += "AUTH EXTERNAL ";
    for (const char letter : std::to_string(::getuid())) {
        const auto byte = static_cast<unsigned char>(letter);
        text += digits[byte / 16];
        text += digits[byte % 16];
    }
    return text + "\r\n";
}

}  // namespace

BusHandshake shakeHandsWithBus(const std::string& address, std::chrono::milliseconds patience) {
    const std::optional<Place> place = placeOf(address);
    if (!place) {
        return BusHandshake::answered;
    }
    const Socket socket;
    if (::connect(socket.descriptor(), reinterpret_cast<const sockaddr*>(&place->address),
                  place->length) != 0) {
        // So many wait at its door that there is no room for another.
        return errno == EAGAIN ? BusHandshake::silent : BusHandshake::refused;
    }
    const std::string words = greeting();
    if (::send(socket.descriptor(), words.data(), words.size(), MSG_NOSIGNAL) < 0) {
        return BusHandshake::refused;
    }
    pollfd answer{socket.descriptor(), POLLIN, 0};
    if (::poll(&answer, 1, static_cast<int>(patience.count())) <= 0) {
        return BusHandshake::silent;
    }
    std::array<char, 64> line{};
    return ::recv(socket.descriptor(), line.data(), line.size(), 0) > 0 ? BusHandshake::answered
                                                                        : BusHandshake::refused;
}

}  // namespace velmora
