// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "Benchmarks/Core/Measurements.h"

namespace velmora::benchmarks {
namespace {

/// One line of the table. Where larger is better, `factor` turns seconds into a rate.
struct Row {
    const char* figure;
    const char* group;
    const char* unit;
    double factor;
    double goal;  ///< In the unit; 0 for none.
    bool largerIsBetter = false;
};

constexpr double splitCharacters = 20000;
constexpr double segmentedCharacters = 2000;

const std::vector<Row>& rows() {
    static const std::vector<Row> all{
        {"one pass over the line ends", "load/line ends", "ms", 1e3, 0},
        {"UTF-8 validation alone", "load/validate", "ms", 1e3, 0},
        {"word list file to store", "load", "ms", 1e3, 40},
        {"resident memory with it", "resident", "MB", 1, 45},
        {"longest covering word, text split", "find", "us", 1e6, 0.5},
        {"the same with splitting 48 characters", "find split", "us", 1e6, 1.5},
        {"the same with its entries, text split", "match", "us", 1e6, 0},
        {"lookup, 48 characters", "lookup", "us", 1e6, 3},
        {"lookup, long text split", "lookup long", "us", 1e6, 3},
        {"splitting into characters", "split", "M/s", splitCharacters / 1e6, 0, true},
        {"segmentation of 2,000 characters", "segment", "M/s", segmentedCharacters / 1e6, 1, true},
        {"fuzzy align, 20 against 10,000", "align", "us", 1e6, 100},
        {"fresh process, one lookup", "process", "ms", 1e3, 60},
    };
    return all;
}

std::optional<double> value(const Measurements& measured, const Row& row, const char* way) {
    auto found = measured.find(std::string(row.group) + "/" + way);
    if (found == measured.end() && std::string_view(way) == "core") {
        found = measured.find(row.group);
    }
    if (found == measured.end()) {
        return std::nullopt;
    }
    return row.largerIsBetter ? row.factor / found->second : row.factor * found->second;
}

std::string text(const std::optional<double>& number, const char* unit) {
    if (!number) {
        return "";
    }
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, *number < 10 ? "%.2f %s" : "%.1f %s", *number, unit);
    return buffer;
}

std::string goalText(const Row& row) {
    if (row.goal <= 0) {
        return "";
    }
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%s %g %s", row.largerIsBetter ? ">=" : "<=", row.goal,
                  row.unit);
    return buffer;
}

const char* verdict(const Row& row, const std::optional<double>& number) {
    if (row.goal <= 0 || !number) {
        return "";
    }
    const bool met = row.largerIsBetter ? *number >= row.goal : *number <= row.goal;
    return met ? "met" : "MISSED";
}

void printRow(const char* figure, const std::string& goal, const std::string& core, const char* met,
              const std::string& objects, const std::string& hashMap, const std::string& marisa) {
    std::printf("%-38s %-11s %-11s %-7s %-11s %-11s %s\n", figure, goal.c_str(), core.c_str(), met,
                objects.c_str(), hashMap.c_str(), marisa.c_str());
}

}  // namespace

void printTable(const Measurements& measured) {
    printRow("figure", "goal", "measured", "", "objects", "hash map", "marisa");
    for (const Row& row : rows()) {
        const auto core = value(measured, row, "core");
        printRow(row.figure, goalText(row), text(core, row.unit), verdict(row, core),
                 text(value(measured, row, "objects"), row.unit),
                 text(value(measured, row, "hash map"), row.unit),
                 text(value(measured, row, "marisa"), row.unit));
        if (const auto literal = value(measured, row, "literal")) {
            std::printf("  (the rule written down literally: %s)\n",
                        text(literal, row.unit).c_str());
        }
        if (const auto command = value(measured, row, "command")) {
            std::printf("  (velmora lookup: %s)\n", text(command, row.unit).c_str());
        }
    }
    const auto pass = measured.find("load/line ends");
    const auto load = measured.find("load/core");
    if (pass != measured.end() && load != measured.end()) {
        const double ratio = load->second / pass->second;
        std::printf("loading takes %.1f passes over the line ends (goal <= 25: %s)\n", ratio,
                    ratio <= 25 ? "met" : "MISSED");
    }
}

}  // namespace velmora::benchmarks
