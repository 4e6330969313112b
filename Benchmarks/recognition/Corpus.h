// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Velmora/Platform/Image.h"

namespace velmora {

/// A point in the middle half of a character, and what really stands there.
struct CorpusHover {
    int x = 0;
    int y = 0;
    std::string line;      ///< The text of the line.
    long long offset = 0;  ///< The character in it.
};

/// A character and the box of its ink, in pixels of its screen.
struct CorpusCharacter {
    std::string text;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// One drawn screen.
struct CorpusScreen {
    std::string imagePath;
    std::string kind;    ///< paragraph, label or subtitle.
    std::string script;  ///< simplified or traditional.
    std::string font;
    int size = 0;  ///< Of the font, in pixels.
    std::vector<CorpusHover> hovers;
    std::vector<CorpusCharacter> characters;
};

/// The screens that draw_corpus.py has written to a folder; empty where there are none.
std::vector<CorpusScreen> readCorpus(const std::string& folder);

/// The picture of a screen; empty where it cannot be read.
Image readPicture(const std::string& path);

}  // namespace velmora
