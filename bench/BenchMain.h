#pragma once

#include <benchmark/benchmark.h>

// Runs the registered benchmarks inside an application object of type `App`
// (QCoreApplication for event loops, QApplication for widgets and fonts),
// made once for the whole run; `prepare` runs after it exists, before the
// first benchmark.
template <typename App, typename Prepare> int runBenchmarks(int argc, char **argv, Prepare prepare)
{
    App application(argc, argv);
    prepare();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

template <typename App> int runBenchmarks(int argc, char **argv)
{
    return runBenchmarks<App>(argc, argv, [] {});
}
