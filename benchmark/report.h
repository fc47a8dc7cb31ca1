#pragma once

#include <optional>
#include <string>
#include <vector>

#include "benchmark/counts.h"
#include "benchmark/series.h"

/// One quotient of two measurements, with what it is to be at most.
struct Ratio {
    std::string name;
    std::string meaning;
    double value;
    double spread;                 // of its rounds, as a part of the median
    std::optional<double> target;  // nothing: it is told, not judged
};

/// Everything that a run found out.
struct Report {
    std::string machine;
    double scale = 1;
    int rounds = 0;
    Measurements measurements;
    std::vector<Ratio> ratios;
    Counts counts;
};

/// Adds the quotient of two measurements, made round by round; nothing when one of them was not made.
void AddRatio(Report& report, const std::string& name, const std::string& meaning,
              const std::string& dividend, const std::string& divisor, std::optional<double> target);

[[nodiscard]] std::string AsTable(const Report& report);
[[nodiscard]] std::string AsJson(const Report& report);
/// The ratios as bars, each with its target.
[[nodiscard]] std::string AsSvg(const Report& report);
