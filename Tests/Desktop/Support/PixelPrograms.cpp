// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/PixelPrograms.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "Tests/Desktop/Support/ScannedPage.h"

namespace velmora::test {

namespace {

using Command = ReadProgram::Command;

/// What programs show fills their windows, so that every pixel stands for one of the picture.
constexpr const char* pictureSize = "1000x760";

constexpr const char* onPaper = "color=c=white:s=1000x760";
/// A scanner sees two dots where a screen has one.
constexpr const char* scannedPaper = "color=c=white:s=2000x1520";
constexpr const char* onSlate = "color=c=0x202428:s=1000x760";

/// A coloured picture that is nowhere as bright as the subtitles and never two times the same.
constexpr const char* film =
    "gradients=s=1000x760:r=10:c0=0x7a4a20:c1=0x205a7a:c2=0x806a90:c3=0x285028:nb_colors=4"
    ":seed=7:speed=0.01,format=yuv420p,noise=alls=60:allf=t,gblur=sigma=2";

/// Letters as a subtitle renderer takes them. Colours are written blue, green, red.
struct Lettering {
    const char* font;
    int size;
    const char* colour;
    int outline;
};

constexpr Lettering black{"Noto Sans CJK SC", 30, "&H00000000", 0};
constexpr Lettering pale{"Noto Serif CJK SC", 34, "&H00E8E0D8", 0};
constexpr Lettering outlined{"Noto Sans CJK SC", 36, "&H00FFFFFF", 2};

std::string subtitles(const SampleText& text, const Lettering& lettering) {
    std::string result =
        "[Script Info]\nScriptType: v4.00+\nPlayResX: 1000\nPlayResY: 760\n"
        "ScaledBorderAndShadow: yes\n\n[V4+ Styles]\nFormat: Name, Fontname, Fontsize, "
        "PrimaryColour, OutlineColour, BorderStyle, Outline, Shadow, Alignment, ScaleX, ScaleY\n"
        "Style: Default," +
        std::string(lettering.font) + "," + std::to_string(lettering.size) + "," +
        lettering.colour + ",&H00000000,1," + std::to_string(lettering.outline) +
        ",0,7,100,100\n\n[Events]\nFormat: Layer, Start, End, Style, Text\n";
    int top = 120;
    for (const std::string& line : text.lines()) {
        result += "Dialogue: 0,0:00:00.00,1:00:00.00,Default,{\\pos(180," + std::to_string(top) +
                  ")}" + line + "\n";
        top += 70;
    }
    return result;
}

/// Runs a program to its end; throws with what it wrote where it fails.
void runTool(const VirtualDesktop& desktop, const Command& command) {
    const std::filesystem::path output = desktop.folder() / (command.front() + ".txt");
    ChildProcess tool({command, desktop.environment(), desktop.folder(), output, -1});
    if (tool.waitForExit(VirtualDesktop::patience) != 0) {
        std::ostringstream text;
        text << std::ifstream(output).rdbuf();
        throw std::runtime_error(command.front() + " fails: " + text.str());
    }
}

/// A picture of the text on one of the backgrounds.
std::filesystem::path picture(const VirtualDesktop& desktop, const SampleText& text,
                              const char* background, const Lettering& lettering) {
    const std::filesystem::path letters =
        desktop.writeFile("letters.ass", subtitles(text, lettering));
    runTool(desktop,
            {"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", background, "-vf",
             "ass=" + letters.string(), "-frames:v", "1", "-pix_fmt", "rgb24", "sample.png"});
    return desktop.folder() / "sample.png";
}

Command imageViewer(const VirtualDesktop& desktop, const SampleText& text, const char* background,
                    const Lettering& lettering) {
    return {"feh", "--geometry", pictureSize,
            picture(desktop, text, background, lettering).string()};
}

Command lightPicture(const VirtualDesktop& desktop, const SampleText& text) {
    return imageViewer(desktop, text, onPaper, black);
}

Command darkPicture(const VirtualDesktop& desktop, const SampleText& text) {
    return imageViewer(desktop, text, onSlate, pale);
}

Command video(const VirtualDesktop& desktop, const SampleText& text) {
    runTool(desktop, {"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", film, "-t", "4",
                      "-pix_fmt", "yuv420p", "-c:v", "mpeg4", "-q:v", "2", "sample.mkv"});
    const std::filesystem::path file =
        desktop.writeFile("subtitles.ass", subtitles(text, outlined));
    return {"mpv",
            "--no-config",
            "--vo=x11",
            "--no-audio",
            "--no-osc",
            "--osd-level=0",
            "--no-terminal",
            "--pause",
            "--loop-file=inf",
            std::string("--geometry=") + pictureSize,
            "--sub-file=" + file.string(),
            (desktop.folder() / "sample.mkv").string()};
}

std::string scannedPage(const VirtualDesktop& desktop, const SampleText& text) {
    picture(desktop, text, scannedPaper, black);
    runTool(desktop, {"ffmpeg", "-v", "error", "-y", "-i", "sample.png", "-pix_fmt", "gray", "-f",
                      "rawvideo", "page.gray"});
    return writeScannedPage(desktop, "page.gray", 2000, 1520).string();
}

Command pdfViewer(const VirtualDesktop& desktop, const SampleText& text) {
    return {"mupdf", "-r", "72", scannedPage(desktop, text)};
}

Command darkPdfViewer(const VirtualDesktop& desktop, const SampleText& text) {
    return {"mupdf", "-I", "-r", "72", scannedPage(desktop, text)};
}

Command documentViewer(const VirtualDesktop& desktop, const SampleText& text) {
    return {"evince", scannedPage(desktop, text)};
}

Command bitmapTerminal(const VirtualDesktop& desktop, const SampleText& text,
                       const std::string& background, const std::string& letters) {
    const std::string file = desktop.writeFile("sample.txt", text.plain()).string();
    return {"xterm", "-u8", "-fa", "DejaVu Sans Mono:pixelsize=13",
            // These sizes of it are bitmaps.
            "-fd", "WenQuanYi Zen Hei Sharp:pixelsize=16", "-bg", background, "-fg", letters,
            "-xrm", "*VT100*cursorBlink: false", "-e",
            "sh -c 'cat " + file + "; exec sleep 100000'"};
}

Command lightTerminal(const VirtualDesktop& desktop, const SampleText& text) {
    return bitmapTerminal(desktop, text, "white", "black");
}

Command darkTerminal(const VirtualDesktop& desktop, const SampleText& text) {
    return bitmapTerminal(desktop, text, "black", "gray90");
}

/// Only what is as bright as the subtitles, on black.
Image brightest(const Image& picture) {
    constexpr std::uint32_t least = 190;
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const std::uint32_t pixel = picture.row(y)[x];
            const std::uint32_t darkest =
                std::min({pixel & 0xFF, (pixel >> 8) & 0xFF, (pixel >> 16) & 0xFF});
            pixels.push_back(darkest >= least ? 0xFFFFFFFF : 0xFF000000);
        }
    }
    return {picture.width(), picture.height(), std::move(pixels)};
}

}  // namespace

const std::vector<ReadProgram>& pixelPrograms() {
    static const std::vector<ReadProgram> programs{
        {"image-viewer", "feh", "pixels", false, lightPicture, {}},
        {"dark-image-viewer", "feh", "pixels", false, darkPicture, {}},
        {"video", "mpv", "pixels", false, video, {}, brightest, 2},
        {"pdf-viewer", "mupdf", "pixels", false, pdfViewer, {}},
        {"dark-pdf-viewer", "mupdf", "pixels", false, darkPdfViewer, {}},
        {"document-viewer", "evince", "GTK 3", false, documentViewer, {}},
        {"bitmap-terminal", "xterm", "pixels", false, lightTerminal, {}},
        {"dark-bitmap-terminal", "xterm", "pixels", false, darkTerminal, {}}};
    return programs;
}

}  // namespace velmora::test
