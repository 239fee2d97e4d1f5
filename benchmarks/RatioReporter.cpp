#include "RatioReporter.h"

#include <cstdio>

void RatioReporter::ReportRuns(const std::vector<Run> &runs)
{
    for (const Run &run : runs) {
        if (run.aggregate_name == "median") {
            medians[run.run_name.function_name] =
                run.GetAdjustedRealTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize()
{
    const std::string bareSuffix = "/bare";
    std::printf("\n%-44s %14s %14s %8s\n", "Median", "bare [us]", "ours [us]", "ratio");
    for (const auto &[name, bare] : medians) {
        if (name.size() < bareSuffix.size() ||
            name.compare(name.size() - bareSuffix.size(), bareSuffix.size(), bareSuffix) != 0)
            continue;
        const std::string pair = name.substr(0, name.size() - bareSuffix.size());
        const auto ours = medians.find(pair + "/ours");
        if (ours != medians.end()) {
            std::printf("%-44s %14.3f %14.3f %8.3f\n", pair.c_str(), bare / 1000,
                        ours->second / 1000, ours->second / bare);
        }
    }
}
