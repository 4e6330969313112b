// SPDX-License-Identifier: MIT
#include "Tests/Contracts/X11/Support/TestApplication.h"

#include <unistd.h>

#include <sstream>
#include <stdexcept>

namespace velmora::test {
namespace {

constexpr int patience = 60000;  // Milliseconds; machines that run tests may be slow.

std::string text(const Rect& area) {
    std::ostringstream line;
    line << ' ' << static_cast<int>(area.x) << ' ' << static_cast<int>(area.y) << ' '
         << static_cast<int>(area.width) << ' ' << static_cast<int>(area.height);
    return line.str();
}

}  // namespace

TestApplication::TestApplication(const std::string& display)
    : inside_(std::make_unique<WindowCommands>(display)) {}

TestApplication::TestApplication(const std::string& display, const std::string& program)
    : outside_(std::make_unique<QProcess>()) {
    outside_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    outside_->start(QString::fromStdString(program), {QString::fromStdString(display)});
    if (!outside_->waitForStarted(patience)) {
        throw std::runtime_error("cannot start " + program);
    }
    run("base");  // Its connection stands from now on.
}

TestApplication::~TestApplication() {
    if (outside_) {
        outside_->closeWriteChannel();
        if (!outside_->waitForFinished(patience)) {
            outside_->kill();
            outside_->waitForFinished(patience);
        }
    }
}

std::int64_t TestApplication::processId() const {
    return outside_ ? outside_->processId() : getpid();
}

std::string TestApplication::run(const std::string& line) {
    std::string answer;
    if (inside_) {
        answer = inside_->run(line);
    } else {
        outside_->write((line + "\n").c_str());
        while (!outside_->canReadLine()) {
            if (!outside_->waitForReadyRead(patience)) {
                throw std::runtime_error("no answer to: " + line);
            }
        }
        answer = outside_->readLine().trimmed().toStdString();
    }
    if (answer.rfind("error", 0) == 0) {
        throw std::runtime_error(answer);
    }
    return answer;
}

TestApplication::Window TestApplication::open(const Rect& area, const Look& look) {
    std::ostringstream line;
    line << "window " << look.parent << text(area) << ' ' << look.depth << ' ' << look.border << ' '
         << (look.overrideRedirect ? 1 : 0) << ' ' << look.colour;
    return static_cast<Window>(std::stoul(run(line.str())));
}

void TestApplication::fill(Window window, const Rect& area, std::uint32_t colour) {
    run("fill " + std::to_string(window) + text(area) + ' ' + std::to_string(colour));
}

void TestApplication::shapeBounding(Window window, const Rect& area) {
    run("shape " + std::to_string(window) + " 0" + text(area));
}

void TestApplication::shapeInput(Window window, const Rect& area) {
    run("shape " + std::to_string(window) + " 2" + text(area));
}

void TestApplication::setProperty(Window window, const std::string& name, const std::string& type,
                                  const std::vector<std::uint32_t>& values) {
    std::ostringstream line;
    line << "property " << window << ' ' << name << ' ' << type;
    for (const std::uint32_t value : values) {
        line << ' ' << value;
    }
    run(line.str());
}

void TestApplication::setAtoms(Window window, const std::string& name,
                               const std::vector<std::string>& atoms) {
    std::string line = "atoms " + std::to_string(window) + ' ' + name;
    for (const std::string& atom : atoms) {
        line += ' ' + atom;
    }
    run(line);
}

}  // namespace velmora::test
