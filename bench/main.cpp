#include <QGuiApplication>

#include <benchmark/benchmark.h>

int main(int argumentCount, char **arguments)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argumentCount, arguments);
    const QGuiApplication application(argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
