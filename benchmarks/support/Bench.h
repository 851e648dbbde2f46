// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <vector>

/// The small harness behind ./bench. A row measures its subject and a baseline in one run, one
/// round of each in turn, so that a slow moment of the machine falls on both; the medians are
/// compared. A benchmark program registers its rows with `add` and calls `runMain`.
namespace orvane::bench {

struct Measurement {
    double figure = 0;
    double baseline = 0;
};

enum class TargetOf {
    Ratio,  ///< figure / baseline must not exceed the target
    Figure, ///< the figure itself must not exceed the target; the baseline is for information
};

struct Row {
    std::string name;
    std::string unit;
    double target = 0;
    std::function<Measurement()> run;
    TargetOf targetOf = TargetOf::Ratio;
};

void add(Row row);

/// Prints one JSON object a line for each row whose name is among the arguments, or begins with
/// one that ends in "/"; for all rows without arguments. "--list" prints the names.
int runMain(int argc, char** argv);

/// Seconds that `work` takes.
template <typename Work>
double seconds(Work&& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The value below which the share `rank` (0 to 1) of the values lies.
inline double percentile(std::vector<double> values, double rank)
{
    if (values.empty())
        return 0;
    const auto place = size_t(rank * double(values.size() - 1) + 0.5);
    std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(place), values.end());
    return values[place];
}
inline double median(std::vector<double> values)
{
    return percentile(std::move(values), 0.5);
}

/// Calls both in turn `rounds` times, after one uncounted round; each returns its figure in the
/// row's unit. The result holds both values at `rank`, the median unless told otherwise.
template <typename Subject, typename Baseline>
Measurement interleave(int rounds, Subject&& subject, Baseline&& baseline, double rank = 0.5)
{
    std::vector<double> figures;
    std::vector<double> baselines;
    subject();
    baseline();
    for (int i = 0; i < rounds; ++i) {
        figures.push_back(subject());
        baselines.push_back(baseline());
    }
    return {percentile(std::move(figures), rank), percentile(std::move(baselines), rank)};
}

} // namespace orvane::bench
