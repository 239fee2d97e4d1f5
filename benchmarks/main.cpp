#include "RatioReporter.h"

#include "render/DashboardFadeInOut.h"

#include <QtGui/QGuiApplication>

#include <vector>

void registerDashboardBenchmarks();

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    DashboardFadeInOut::registerType();

    // The two sides of a ratio take turns, so that a slow phase of the machine hits both.
    // Arguments of the caller come last and win.
    std::vector<std::string> words{argv[0], "--benchmark_enable_random_interleaving=true",
                                   "--benchmark_repetitions=11",
                                   "--benchmark_report_aggregates_only=true"};
    words.insert(words.end(), argv + 1, argv + argc);
    std::vector<char *> pointers;
    pointers.reserve(words.size());
    for (std::string &word : words)
        pointers.push_back(word.data());
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data()))
        return 2;
    registerDashboardBenchmarks();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
