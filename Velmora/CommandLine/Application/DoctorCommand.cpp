// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/DoctorCommand.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "Velmora/CommandLine/Application/DoctorChecks.h"
#include "Velmora/CommandLine/Core/Arguments.h"
#include "Velmora/CommandLine/Core/ExitStatus.h"
#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {

namespace {

void printJson(const std::vector<DoctorFinding>& findings, bool allFine, std::ostream& out) {
    nlohmann::json checks = nlohmann::json::array();
    for (const DoctorFinding& finding : findings) {
        checks.push_back(
            {{"name", finding.name},
             {"ok", finding.ok},
             {"detail", finding.detail},
             {"mend", finding.mend.empty() ? nlohmann::json() : nlohmann::json(finding.mend)}});
    }
    const nlohmann::json report{{"ok", allFine}, {"checks", std::move(checks)}};
    out << report.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
}

void printText(const std::vector<DoctorFinding>& findings, const CommandStreams& streams) {
    constexpr std::size_t nameWidth = 18;
    for (const DoctorFinding& finding : findings) {
        const std::string name =
            finding.name +
            std::string(nameWidth - std::min(nameWidth - 1, finding.name.size()), ' ');
        streams.out << (finding.ok ? "ok       " : streams.style.strong("missing  ")) << name
                    << finding.detail << '\n';
        if (!finding.mend.empty()) {
            streams.out << "         " << std::string(nameWidth, ' ')
                        << streams.style.quiet("mend: ") << finding.mend << '\n';
        }
    }
}

}  // namespace

std::string_view doctorHelp() {
    return R"(usage: velmora doctor [--json]

Looks at everything on this system that Velmora needs, and names for each part that is missing the
command that mends it.

  --json             print {"ok", "checks": [{"name", "ok", "detail", "mend"}, …]}

Exit status: 0 where nothing is missing, else 1.
)";
}

int runDoctorCommand(std::span<const std::string> arguments, const SystemInspection& system,
                     CommandStreams& streams) {
    constexpr std::array<Arguments::Option, 1> options{{{"--json", false}}};
    const Arguments given(arguments, options);
    if (!given.texts().empty()) {
        throw UsageError("takes no arguments");
    }
    const auto findings = doctor::checkAll(system);
    const bool allFine = std::ranges::all_of(findings, &DoctorFinding::ok);
    if (given.has("--json")) {
        printJson(findings, allFine, streams.out);
    } else {
        printText(findings, streams);
    }
    return allFine ? exitFound : exitNothing;
}

}  // namespace velmora
