// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/RunningVelmora.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "Tests/Desktop/Support/DrawnForms.h"

namespace velmora::test {

namespace {

std::string contentOf(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

std::int64_t nowMicroseconds() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

}  // namespace

RunningVelmora::RunningVelmora(VirtualDesktop& desktop) : RunningVelmora(desktop, Options{}) {}

RunningVelmora::RunningVelmora(VirtualDesktop& desktop, const Options& options)
    : desktop_(desktop),
      folder_(desktop.folder() / "velmora"),
      environment_(desktop.environment()) {
    std::filesystem::create_directories(folder_ / "config/Velmora");
    std::filesystem::create_directories(folder_ / "data");
    std::filesystem::remove(settingsFile());
    if (!options.settings.empty()) {
        std::ofstream(settingsFile()) << options.settings;
    }
    std::filesystem::remove(folder_ / "log.txt");
    std::filesystem::remove(folder_ / "lookups.jsonl");
    environment_["XDG_CONFIG_HOME"] = (folder_ / "config").string();
    environment_["XDG_DATA_HOME"] = (folder_ / "data").string();
    environment_["VELMORA_QA_LOG"] = "1";
    environment_["VELMORA_QA_LOG_PATH"] = (folder_ / "lookups.jsonl").string();
    environment_["VELMORA_LOG"] = "debug";
    DrawnForms::lend(environment_.at("XDG_CACHE_HOME"));
    for (const auto& [name, value] : options.environment) {
        environment_[name] = value;
    }
    started_ = nowMicroseconds();
    process_ = std::make_unique<ChildProcess>(ChildProcess::Options{
        {options.program.empty() ? VELMORA_BUILD_FOLDER "/velmora" : options.program.string()},
        environment_,
        folder_,
        folder_ / "log.txt",
        -1});
    const bool ready = desktop_.waitUntil([this, &options] {
        return !process_->isRunning() ||
               (microsecondsToReady() &&
                command({"diagnostics"}).output.find(options.readyStatus) != std::string::npos);
    });
    if (!ready || !process_->isRunning()) {
        throw std::runtime_error("velmora does not become ready; it wrote: " + log() + "\n" +
                                 command({"diagnostics"}).output);
    }
}

RunningVelmora::CommandResult RunningVelmora::command(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), VELMORA_BUILD_FOLDER "/velmora");
    const std::filesystem::path output = folder_ / "output.txt";
    std::filesystem::remove(output);
    ChildProcess child({std::move(arguments), environment_, folder_, output, -1});
    const int status = child.waitForExit(VirtualDesktop::patience).value_or(-1);
    return {status, contentOf(output)};
}

std::vector<nlohmann::json> RunningVelmora::records() const {
    std::vector<nlohmann::json> result;
    std::istringstream lines(contentOf(folder_ / "lookups.jsonl"));
    std::string line;
    while (std::getline(lines, line) && !lines.eof()) {
        result.push_back(nlohmann::json::parse(line));
    }
    return result;
}

std::vector<RunningVelmora::Moment> RunningVelmora::moments() const {
    std::vector<Moment> result;
    std::istringstream lines(log());
    std::string line;
    const std::string category = "velmora.hover: ";
    while (std::getline(lines, line) && !lines.eof()) {
        const std::size_t at = line.find(category);
        Moment moment;
        if (at != std::string::npos && std::istringstream(line.substr(at + category.size())) >>
                                           moment.name >> moment.microseconds) {
            result.push_back(moment);
        }
    }
    return result;
}

std::string RunningVelmora::log() const {
    return contentOf(folder_ / "log.txt");
}

std::optional<std::int64_t> RunningVelmora::microsecondsToReady() const {
    for (const Moment& moment : moments()) {
        if (moment.name == "ready") {
            return moment.microseconds - started_;
        }
    }
    return std::nullopt;
}

std::vector<VirtualDesktop::Window> RunningVelmora::windows() const {
    std::vector<VirtualDesktop::Window> result;
    for (const VirtualDesktop::Window& window : desktop_.windows()) {
        if (window.processId > 0 && process_->owns(window.processId)) {
            result.push_back(window);
        }
    }
    return result;
}

std::vector<pid_t> RunningVelmora::processes() const {
    std::vector<pid_t> result;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string name = entry.path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos &&
            process_->owns(std::stoi(name))) {
            result.push_back(std::stoi(name));
        }
    }
    return result;
}

std::filesystem::path RunningVelmora::settingsFile() const {
    return folder_ / "config/Velmora/Velmora.conf";
}

}  // namespace velmora::test
