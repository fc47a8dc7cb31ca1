#include "benchmark/series.h"

#include <windows.h>

#include <algorithm>

double Series::Median() const {
    if (values.empty()) return 0;
    std::vector<double> sorted = values;
    std::ranges::sort(sorted);
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 != 0 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

double Series::Spread() const {
    if (values.empty() || Median() <= 0) return 0;
    std::vector<double> sorted = values;
    std::ranges::sort(sorted);
    const std::size_t quarter = sorted.size() / 4;
    return (sorted[sorted.size() - 1 - quarter] - sorted[quarter]) / 2 / Median();
}

double SecondsOf(const std::function<void()>& action) {
    LARGE_INTEGER frequency;
    LARGE_INTEGER begin;
    LARGE_INTEGER end;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&begin);
    action();
    ::QueryPerformanceCounter(&end);
    return static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart);
}
