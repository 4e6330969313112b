// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Tests/Desktop/Support/ReadProgram.h"
#include "Tests/Desktop/Support/RunningVelmora.h"
#include "Tests/Desktop/Support/SampleText.h"
#include "Tests/Desktop/Support/StageScreens.h"
#include "Tests/Desktop/Support/TextLine.h"

namespace velmora::test {

/// What one rest of the pointer brought about. Rectangles are pixels of the X server.
struct Hover {
    Point pointer;
    nlohmann::json record;          ///< The lookup's record; null where none came.
    std::optional<Rect> highlight;  ///< The frame of the highlight's window.
    std::optional<Rect> popover;    ///< The frame of the popover's window.
    /// From the dwell timer to the first frame of the popover; nothing where none was painted.
    std::optional<double> milliseconds;
    int captures = 0;  ///< Of the screen, between these two.

    /// The word that was shown; empty where none was.
    std::string word() const;

    /// The text that was read and the position of the hovered character in it.
    std::string text() const;
    long long offset() const;
    std::string hoveredCharacter() const;
};

/// A private desktop on which one program shows the sample text and our program is at work.
class HoverStage {
  public:
    struct Options {
        VirtualDesktop::Options desktop;
        Rect window{200, 120, 1000, 760};  ///< Where the program's window goes.
        bool compositor = false;
        /// Screens that the display is divided into, the primary one first. The whole display is
        /// one screen where there are none.
        std::vector<StageScreens::Monitor> monitors;
        RunningVelmora::Options velmora = {};  ///< How our program is started.
    };

    /// Throws std::runtime_error that names the program where it is not installed or does not show
    /// the text.
    explicit HoverStage(const ReadProgram& program);
    HoverStage(const ReadProgram& program, const Options& options);
    ~HoverStage();

    VirtualDesktop& desktop() { return desktop_; }
    RunningVelmora& velmora() { return *velmora_; }
    ChildProcess& program() { return *program_; }
    const SampleText& text() const { return text_; }
    const StageScreens& screens() const { return screens_; }

    /// Where the lines stand, found in a picture without windows of ours.
    const std::vector<TextLine>& lines() const { return lines_; }

    /// What is drawn in some cells of a line, without windows of ours.
    std::optional<Rect> glyphs(std::size_t line, std::size_t first, std::size_t count) const;

    /// The program's window.
    VirtualDesktop::Window window() const;

    /// The rectangle that is outlined: the highlight's frame without its outset. Empty where no
    /// highlight is up.
    Rect outlined(const Hover& hover) const;

    /// Rests the pointer there and waits for the record of that dwell and for what it shows.
    Hover hover(Point place);
    Hover hover(std::size_t line, std::size_t position);

    /// What each attempt to read there finds, told by our own command; for failure messages.
    std::string explain(Point place) const;

    /// Moves the pointer to a place without text and waits until nothing of ours is shown.
    void leave();

    /// Puts the program's window there, with nothing of ours on the screen.
    void moveWindow(const Rect& window);

    /// A place of the program's window that is far from the text.
    Point blankPlace() const;

    /// The windows of ours that are up now, told apart by the highlight's rectangle in the record.
    void collectWindows(Hover& hover) const;

    /// Waits until our program has this many windows mapped.
    bool waitForWindows(std::size_t count);

    /// Selects a range of characters with the mouse.
    void select(std::size_t line, std::size_t first, std::size_t last);

    /// Starts another program on the same text; the lines it shows.
    std::vector<TextLine> show(const ReadProgram& program, const Rect& window,
                               ChildProcess** started = nullptr);

  private:
    /// Before the first lookup there are no panels: what there is then greets at the start, on a
    /// slow machine for longer than the first hover takes.
    void noteOtherWindows();

    VirtualDesktop::Window windowOf(const ChildProcess& program);
    std::vector<TextLine> awaitLines(const ReadProgram& program, const Rect& area);
    void keepPicture();

    SampleText text_;
    VirtualDesktop desktop_;
    StageScreens screens_;
    ChildProcess* program_ = nullptr;
    std::uint64_t windowId_ = 0;
    std::set<std::uint64_t> otherWindows_;  ///< Of ours, and no panels of a lookup.
    Rect area_;
    std::vector<TextLine> lines_;
    Image clean_;
    ReadProgram shown_;  ///< The first program.
    std::unique_ptr<RunningVelmora> velmora_;
};

}  // namespace velmora::test
