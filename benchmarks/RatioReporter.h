#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

/// Prints each median when it is measured, and at the end each "NAME/ours" against "NAME/bare".
class RatioReporter final : public benchmark::ConsoleReporter
{
public:
    RatioReporter()
        : ConsoleReporter(OO_None)
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override;
    void Finalize() override;

private:
    std::map<std::string, double> medians; ///< Nanoseconds, by name.
};
