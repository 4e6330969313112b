// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/LatinPicture.h"

#include <stdexcept>
#include <string>

namespace velmora::test {

namespace {

constexpr int firstLine = 120;  ///< The top of the first one.
constexpr int linePitch = 96;
constexpr int leftEdge = 240;

constexpr const char* photograph =
    "gradients=s=1920x1080:r=1:c0=0x7a4a20:c1=0x205a7a:c2=0x806a90:c3=0x285028:nb_colors=4"
    ":seed=11:speed=0.01,format=yuv420p,noise=alls=60:allf=t,gblur=sigma=2";

std::string letters() {
    static constexpr const char* lines[] = {
        "The quick brown fox jumps over the lazy dog",
        "Settings, Privacy and Security: 24 items, 3 of them new",
        "A walk along the river in the late afternoon",
        "Terms of use apply. See page 117 for the details.",
        "Version 4.2 was released on the 9th of October"};
    std::string result =
        "[Script Info]\nScriptType: v4.00+\nPlayResX: 1920\nPlayResY: 1080\n\n[V4+ Styles]\n"
        "Format: Name, Fontname, Fontsize, PrimaryColour, OutlineColour, BorderStyle, Outline, "
        "Shadow, Alignment, ScaleX, ScaleY\n"
        "Style: Default,DejaVu Sans,34,&H00FFFFFF,&H00000000,1,2,0,7,100,100\n\n[Events]\n"
        "Format: Layer, Start, End, Style, Text\n";
    int top = firstLine;
    for (const char* line : lines) {
        result += "Dialogue: 0,0:00:00.00,1:00:00.00,Default,{\\pos(" + std::to_string(leftEdge) +
                  "," + std::to_string(top) + ")}" + line + "\n";
        top += linePitch;
    }
    return result;
}

}  // namespace

void LatinPicture::show(VirtualDesktop& desktop) {
    const std::string file = desktop.writeFile("letters.ass", letters()).string();
    desktop.run({"ffmpeg", "-v", "error", "-y", "-f", "lavfi", "-i", photograph, "-vf",
                 "ass=" + file, "-frames:v", "1", "-pix_fmt", "rgb24",
                 (desktop.folder() / "photograph.png").string()});
    ChildProcess& viewer = desktop.launch(
        {"feh", "--fullscreen", "--hide-pointer", (desktop.folder() / "photograph.png").string()});
    desktop.waitForWindow([](const VirtualDesktop::Window& window) {
        return window.client.width >= width && window.client.height >= height;
    });
    const Rect whole{0, 0, width, height};
    const bool shown = desktop.waitUntil([&] {
        const Image picture = desktop.settledScreenshot(whole);
        return picture.row(height / 2)[width / 2] != picture.row(height - 8)[8];
    });
    if (!shown) {
        throw std::runtime_error("the picture does not appear");
    }
    desktop.awaitRest(viewer);
}

std::vector<Point> LatinPicture::places() {
    std::vector<Point> places;
    for (int line = 0; line < 5; ++line) {
        const double top = firstLine + linePitch * line;
        places.push_back({leftEdge + 60.0 + 70 * line, top + 20});
        places.push_back({leftEdge + 420.0 + 30 * line, top + 22});
        places.push_back({leftEdge + 300.0, top + 66});              // Between two lines.
        places.push_back({1250.0 + 100 * line, 640.0 + 70 * line});  // On the picture.
    }
    return places;
}

}  // namespace velmora::test
