#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QStandardPaths>

int main(int argc, char **argv) {
    QStandardPaths::setTestModeEnabled(true);
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
