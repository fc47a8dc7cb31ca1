#include "benchmark/report.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "console/text_table_rules.h"

namespace {

std::string Number(double value, int decimals) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

/// Seconds, or microseconds where that is easier to read; sizes and counts as they are.
std::string Shown(const std::string& name, double value) {
    if (name.ends_with("_bytes")) return Number(value, 0) + " bytes";
    return value < 0.01 ? Number(value * 1e6, 1) + " us" : Number(value, 2) + " s";
}

std::string Percent(double part) { return "+-" + Number(part * 100, 1) + " %"; }

std::string Verdict(const Ratio& ratio) {
    if (!ratio.target.has_value()) return "";
    return (ratio.value <= *ratio.target ? "met, at most " : "MISSED, at most ") + Number(*ratio.target, 2);
}

constexpr int kWidth = 760;
constexpr int kRowHeight = 34;
constexpr int kLeft = 330;
constexpr int kBarRoom = 380;

std::string Rectangle(double x, double y, double width, double height, const char* fill) {
    return "<rect x=\"" + Number(x, 1) + "\" y=\"" + Number(y, 1) + "\" width=\"" + Number(width, 1) +
           "\" height=\"" + Number(height, 1) + "\" fill=\"" + fill + "\"/>\n";
}

std::string TextAt(double x, double y, const std::string& text, const char* more = "") {
    return "<text x=\"" + Number(x, 1) + "\" y=\"" + Number(y, 1) + "\" " + more + ">" + text + "</text>\n";
}

}  // namespace

void AddRatio(Report& report, const std::string& name, const std::string& meaning,
              const std::string& dividend, const std::string& divisor, std::optional<double> target) {
    const auto first = report.measurements.find(dividend);
    const auto second = report.measurements.find(divisor);
    if (first == report.measurements.end() || second == report.measurements.end()) return;
    Series quotients;
    const std::size_t rounds = std::min(first->second.values.size(), second->second.values.size());
    for (std::size_t round = 0; round < rounds; ++round)
        if (second->second.values[round] > 0)
            quotients.values.push_back(first->second.values[round] / second->second.values[round]);
    if (quotients.values.empty()) return;
    report.ratios.push_back({name, meaning, quotients.Median(), quotients.Spread(), target});
}

std::string AsTable(const Report& report) {
    std::vector<std::vector<std::string>> lines{{"RATIO", "MEDIAN", "SPREAD", "TARGET", "WHAT IT IS"}};
    for (const Ratio& ratio : report.ratios)
        lines.push_back(
            {ratio.name, Number(ratio.value, 3), Percent(ratio.spread), Verdict(ratio), ratio.meaning});
    std::string table = TextTable(lines, kAnyWidth) + "\n";
    lines = {{"MEASUREMENT", "MEDIAN", "SPREAD"}};
    for (const auto& [name, series] : report.measurements)
        lines.push_back({name, Shown(name, series.Median()), Percent(series.Spread())});
    table += TextTable(lines, kAnyWidth) + "\n";
    lines = {{"COUNT OF ONE DEEP SCAN", "NUMBER"}};
    for (const auto& [name, count] : report.counts)
        lines.push_back({name, Number(count, name.find("per") != std::string::npos ? 3 : 0)});
    return table + TextTable(lines, kAnyWidth);
}

std::string AsJson(const Report& report) {
    nlohmann::ordered_json json;
    json["machine"] = report.machine;
    json["scale"] = report.scale;
    json["rounds"] = report.rounds;
    for (const Ratio& ratio : report.ratios) json["ratios"][ratio.name] = ratio.value;
    for (const Ratio& ratio : report.ratios) json["spreads"][ratio.name] = ratio.spread;
    for (const auto& [name, count] : report.counts) json["counts"][name] = count;
    for (const auto& [name, series] : report.measurements) json["measurements"][name] = series.values;
    return json.dump(2) + "\n";
}

std::string AsSvg(const Report& report) {
    std::vector<Ratio> judged;
    for (const Ratio& ratio : report.ratios)
        if (ratio.target.has_value()) judged.push_back(ratio);
    double longest = 1;
    for (const Ratio& ratio : judged) longest = std::max({longest, ratio.value, *ratio.target});
    const auto height = static_cast<int>(judged.size()) * kRowHeight + 60;
    std::string svg = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + std::to_string(kWidth) +
                      "\" height=\"" + std::to_string(height) +
                      "\" font-family=\"sans-serif\" font-size=\"13\">\n" +
                      Rectangle(0, 0, kWidth, height, "#ffffff");
    double y = 12;
    for (const Ratio& ratio : judged) {
        const double bar = ratio.value / longest * kBarRoom;
        const double target = kLeft + *ratio.target / longest * kBarRoom;
        const bool isMet = ratio.value <= *ratio.target;
        svg += TextAt(kLeft - 10, y + 17, ratio.name, "text-anchor=\"end\"");
        svg += Rectangle(kLeft, y, bar, 24, isMet ? "#4c9f70" : "#c8553d");
        svg += Rectangle(target - 1, y - 3, 2, 30, "#222222");
        svg += TextAt(kLeft + 6, y + 17, Number(ratio.value, 2), "fill=\"#ffffff\"");
        y += kRowHeight;
    }
    svg += TextAt(12, y + 14, "The black line is what each ratio may be at most.", "fill=\"#555555\"");
    svg += TextAt(12, y + 32, report.machine, "fill=\"#555555\" font-size=\"11\"");
    return svg + "</svg>\n";
}
