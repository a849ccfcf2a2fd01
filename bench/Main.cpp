#include "BenchData.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QStandardPaths>

#include <iostream>

using namespace corvane;

int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QStringLiteral("--measure")) {
        const bool isLoad = arguments.value(2) == QStringLiteral("load");
        std::cout << (isLoad ? bench::loadMemoryPerFileByte() : bench::megabytesOfFiftyUndoSteps())
                  << '\n';
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
