// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Recognition/MessageBody.h"

#include <algorithm>

#include "Velmora/Platform/Recognition/RecognizerMessage.h"

namespace velmora {

void MessageWriter::putPicture(const GrayImage& picture) {
    put(static_cast<std::uint32_t>(picture.width()));
    put(static_cast<std::uint32_t>(picture.height()));
    putBytes(picture.pixels().data(), picture.pixels().size());
}

bool MessageReader::getText(std::size_t size, std::string& text) {
    if (bytes_.size() < size) {
        return false;
    }
    text.assign(reinterpret_cast<const char*>(bytes_.data()), size);
    bytes_ = bytes_.subspan(size);
    return true;
}

std::optional<GrayImage> MessageReader::getPicture() {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    if (!get(width) || !get(height) || width < 1 || height < 1 ||
        width > RecognizerMessage::greatestWidth || height > RecognizerMessage::greatestHeight ||
        bytes_.size() != std::size_t{width} * height) {
        return std::nullopt;
    }
    GrayImage picture(static_cast<int>(width), static_cast<int>(height));
    std::copy(bytes_.begin(), bytes_.end(), picture.row(0));
    return picture;
}

}  // namespace velmora
