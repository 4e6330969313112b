// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Contracts/X11/Support/WindowCommands.h"
#include "Velmora/Platform/Geometry.h"

namespace velmora::test {

/// Windows of this process, or of a process of their own that plays another application.
/// Commands that fail throw std::runtime_error.
class TestApplication {
  public:
    using Window = std::uint32_t;

    struct Look {
        Window parent = 0;
        int depth = 24;
        int border = 0;
        bool overrideRedirect = false;
        std::uint32_t colour = 0xFFFFFFFF;
    };

    /// Windows of this process.
    explicit TestApplication(const std::string& display);

    /// Windows of another process that runs this program.
    TestApplication(const std::string& display, const std::string& program);
    ~TestApplication();

    std::int64_t processId() const;

    Window open(const Rect& area) { return open(area, Look()); }
    Window open(const Rect& area, const Look& look);
    void fill(Window window, const Rect& area, std::uint32_t colour);
    void shapeBounding(Window window, const Rect& area);  ///< An empty rectangle for no shape.
    void shapeInput(Window window, const Rect& area);
    /// On the root where the window is 0.
    void setProperty(Window window, const std::string& name, const std::string& type,
                     const std::vector<std::uint32_t>& values);
    void setAtoms(Window window, const std::string& name, const std::vector<std::string>& atoms);

    /// Any other command.
    std::string run(const std::string& line);

  private:
    std::unique_ptr<WindowCommands> inside_;
    std::unique_ptr<QProcess> outside_;
};

}  // namespace velmora::test
