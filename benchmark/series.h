#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

/// The outcomes of one measurement in several rounds.
struct Series {
    std::vector<double> values;

    [[nodiscard]] double Median() const;
    /// How far the middle half of the rounds reaches to either side, as a part of the median.
    [[nodiscard]] double Spread() const;
};

/// All measurements of a run by their names, in seconds where nothing else is said.
using Measurements = std::map<std::string, Series>;

/// The seconds that an action takes.
[[nodiscard]] double SecondsOf(const std::function<void()>& action);
