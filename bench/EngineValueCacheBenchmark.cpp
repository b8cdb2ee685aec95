// The engine's kept values against a full evaluation of the same node in the same run: each read with
// the cache beside the same read with IgnoreCache, which evaluates the formula and register chain.
#include <GenApi/GenApi.h>
#include <SimulatedDevice.h>
#include <benchmark/benchmark.h>

namespace {

GenApi::INodeMap* camera() {
    static SimCamera::CSimulatedDevice device;
    return device.nodeMap();
}

template <typename Read>
void run(benchmark::State& state, Read read) {
    const bool ignoreCache = state.range(0) != 0;
    state.SetLabel(ignoreCache ? "evaluated" : "kept");
    for (auto _ : state)
        benchmark::DoNotOptimize(read(ignoreCache));
}

void IntegerGetValue(benchmark::State& state) {
    GenApi::CIntegerPtr width = camera()->GetNode("Width");
    run(state, [&](bool ignore) { return width->GetValue(false, ignore); });
}

void FloatGetValue(benchmark::State& state) {
    GenApi::CFloatPtr exposure = camera()->GetNode("ExposureTime");
    run(state, [&](bool ignore) { return exposure->GetValue(false, ignore); });
}

void BooleanGetValue(benchmark::State& state) {
    GenApi::CBooleanPtr reverse = camera()->GetNode("ReverseX");
    run(state, [&](bool ignore) { return reverse->GetValue(false, ignore); });
}

void EnumerationToString(benchmark::State& state) {
    GenApi::CEnumerationPtr format = camera()->GetNode("PixelFormat");
    run(state, [&](bool ignore) { return format->ToString(false, ignore); });
}

void EnumerationGetIntValue(benchmark::State& state) {
    GenApi::CEnumerationPtr format = camera()->GetNode("PixelFormat");
    run(state, [&](bool ignore) { return format->GetIntValue(false, ignore); });
}

// Limits have no IgnoreCache: the evaluated row invalidates the node first.
void IntegerLimits(benchmark::State& state) {
    GenApi::CIntegerPtr width = camera()->GetNode("Width");
    run(state, [&](bool ignore) {
        if (ignore)
            width->GetNode()->InvalidateNode();
        return width->GetMin() + width->GetMax() + width->GetInc();
    });
}

void IntegerSetValue(benchmark::State& state) {
    GenApi::CIntegerPtr width = camera()->GetNode("Width");
    int64_t value = 16;
    for (auto _ : state) {
        width->SetValue(value);
        value = value == 16 ? 32 : 16;
    }
}

}  // namespace

BENCHMARK(IntegerGetValue)->Arg(0)->Arg(1);
BENCHMARK(FloatGetValue)->Arg(0)->Arg(1);
BENCHMARK(BooleanGetValue)->Arg(0)->Arg(1);
BENCHMARK(EnumerationToString)->Arg(0)->Arg(1);
BENCHMARK(EnumerationGetIntValue)->Arg(0)->Arg(1);
BENCHMARK(IntegerLimits)->Arg(0)->Arg(1);
BENCHMARK(IntegerSetValue);
BENCHMARK_MAIN();
