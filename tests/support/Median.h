#pragma once

#include <algorithm>
#include <vector>

/// The middle of the values, or the mean of the two middle ones: what the benchmarks report, so
/// that one start disturbed by the machine's other work does not move the figure.
inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}
