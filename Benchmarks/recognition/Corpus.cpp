// SPDX-License-Identifier: MIT
#include "Benchmarks/recognition/Corpus.h"

#include <QImage>
#include <QString>
#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

namespace velmora {

namespace {

/// The line of a character, from the index's [character, ink, cell, line] rows.
CorpusHover makeHover(const nlohmann::json& characters, const nlohmann::json& point) {
    const std::size_t hovered = point[0];
    const int line = characters[hovered][7];
    CorpusHover hover{point[1], point[2], {}, 0};
    for (std::size_t i = 0; i < characters.size(); ++i) {
        if (characters[i][7] == line) {
            hover.offset += i < hovered ? 1 : 0;
            hover.line += characters[i][0].get<std::string>();
        }
    }
    return hover;
}

}  // namespace

std::vector<CorpusScreen> readCorpus(const std::string& folder) {
    std::vector<CorpusScreen> screens;
    std::ifstream file(folder + "/index.json");
    const nlohmann::json index = nlohmann::json::parse(file, nullptr, false);
    if (!index.is_array()) {
        return screens;
    }
    for (const nlohmann::json& entry : index) {
        CorpusScreen screen{folder + "/" + entry["image"].get<std::string>(),
                            entry["kind"],
                            entry["script"],
                            entry["font"],
                            entry["size"],
                            {},
                            {}};
        for (const nlohmann::json& point : entry["hovers"]) {
            screen.hovers.push_back(makeHover(entry["characters"], point));
        }
        for (const nlohmann::json& character : entry["characters"]) {
            screen.characters.push_back(
                {character[0], character[1], character[2], character[3], character[4]});
        }
        screens.push_back(std::move(screen));
    }
    return screens;
}

Image readPicture(const std::string& path) {
    const QImage picture =
        QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_ARGB32);
    std::vector<std::uint32_t> pixels;
    pixels.reserve(static_cast<std::size_t>(picture.width()) *
                   static_cast<std::size_t>(picture.height()));
    for (int y = 0; y < picture.height(); ++y) {
        const auto* row = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
        pixels.insert(pixels.end(), row, row + picture.width());
    }
    return {picture.width(), picture.height(), std::move(pixels)};
}

}  // namespace velmora
