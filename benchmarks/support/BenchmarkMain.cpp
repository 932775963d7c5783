#include <krcore/foundation/InitTerm.h>

#include <benchmark/benchmark.h>

int main(int argumentCount, char** arguments) {
    KrCore::InitTerm::init();
    benchmark::Initialize(&argumentCount, arguments);
    if (benchmark::ReportUnrecognizedArguments(argumentCount, arguments)) return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    KrCore::InitTerm::exit();
    return 0;
}
