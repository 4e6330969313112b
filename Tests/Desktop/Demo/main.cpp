// SPDX-License-Identifier: MIT
// Shows the program at work on a private virtual desktop: rests the pointer on words of a text in
// an editor and leaves pictures of what appears.
//
//   velmora_demo FOLDER
#include <QImage>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "Tests/Desktop/Demo/ScreenPicture.h"
#include "Tests/Desktop/Support/HoverStage.h"

namespace velmora::test {
namespace {

void say(const std::string& text) {
    std::cerr << "    " << text << std::endl;
}

class Demonstration {
  public:
    explicit Demonstration(std::filesystem::path folder) : folder_(std::move(folder)) {
        std::filesystem::create_directories(folder_);
        stage_.leave();
    }

    void run() {
        say("Resting the pointer on a word");
        show(hover(known({0, 7})), "bubble");
        stage_.leave();
        say("Again, with Shift held");
        stage_.desktop().pressKey("Shift_L");
        show(hover(seedWord), "dictionary");
        stage_.desktop().releaseKey("Shift_L");
        stage_.leave();
        say("Selecting some words");
        const Place inside = known({1, 6});
        stage_.select(inside.line, 3, 12);
        stage_.leave();
        stage_.desktop().pressKey("Shift_L");
        show(hover(inside), "selection");
        stage_.desktop().releaseKey("Shift_L");
    }

  private:
    /// A character of the text.
    struct Place {
        std::size_t line;
        std::size_t position;
    };

    /// Found without the word list too.
    static constexpr Place seedWord{0, 10};

    static constexpr int width = 1280;
    static constexpr int height = 860;

    static HoverStage::Options options() {
        HoverStage::Options options;
        options.desktop.width = width;
        options.desktop.height = height;
        options.window = {60, 60, 1160, 760};
        options.compositor = true;
        return options;
    }

    /// The place, or that of the seed entry where the program has no word list to know it from.
    Place known(Place wanted) const {
        const SampleText& text = stage_.text();
        const bool isKnown = !text.wordsOf(text.character(wanted.line, wanted.position)).empty();
        return isKnown ? wanted : seedWord;
    }

    Hover hover(Place place) { return stage_.hover(place.line, place.position); }

    void show(const Hover& hover, const std::string& name) {
        if (!hover.popover) {
            throw std::runtime_error("no lookup appeared; the record: " + hover.record.dump() +
                                     "\n" + stage_.velmora().command({"diagnostics"}).output +
                                     stage_.velmora().log());
        }
        QImage picture = screenPicture(stage_.desktop().settledScreenshot({0, 0, width, height}));
        drawPointer(picture, hover.pointer);
        const std::string file = (folder_ / (name + ".png")).string();
        if (!picture.save(QString::fromStdString(file))) {
            throw std::runtime_error("cannot write " + file);
        }
        std::cout << file << "\n" << hover.record.dump(2) << std::endl;
    }

    std::filesystem::path folder_;
    HoverStage stage_{ReadProgram::forShow(), options()};
};

}  // namespace
}  // namespace velmora::test

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: velmora_demo FOLDER\n", stderr);
        return 2;
    }
    try {
        velmora::test::say("Starting a private desktop, an editor and Velmora");
        velmora::test::Demonstration(arguments[1]).run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "velmora_demo: %s\n", error.what());
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
