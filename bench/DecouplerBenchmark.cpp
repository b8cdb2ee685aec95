// The decoupler under a burst and collections at scale, on generated descriptions of plain integer
// features (no port): 1,000 parameters receiving 100 node callbacks each in one burst (signals per
// parameter, latency from the last write to its signal, idle CPU afterwards), and 16 collections of
// 3,000 cached parameters each (memory per parameter, idle CPU of the process).
#include <GenApi/GenApi.h>
#include <QCoreApplication>
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <fstream>
#include <memory>
#include <parametercollection/IIntegerParameter.h>
#include <parametercollection/ObjectState.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace ParameterCollection;
using Clock = std::chrono::steady_clock;

namespace {

std::string description(int features) {
    std::string xml =
        "<?xml version=\"1.0\"?><RegisterDescription ModelName=\"Generated\" VendorName=\"Bench\" "
        "StandardNameSpace=\"None\" SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" "
        "SchemaSubMinorVersion=\"0\" MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" "
        "ProductGuid=\"00000000-0000-0000-0000-000000000001\" VersionGuid=\"00000000-0000-0000-0000-"
        "000000000002\" xmlns=\"http://www.genicam.org/GenApi/Version_1_1\"><Category Name=\"Root\">";
    for (int i = 0; i < features; ++i)
        xml += "<pFeature>F" + std::to_string(i) + "</pFeature>";
    xml += "</Category>";
    for (int i = 0; i < features; ++i)
        xml += "<Integer Name=\"F" + std::to_string(i) +
               "\"><Value>0</Value><Min>0</Min><Max>1000000</Max></Integer>";
    return xml + "</RegisterDescription>";
}

double cpuSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec +
           (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Share of one core the process uses while nobody calls it.
double idleCpuPercent(double seconds) {
    const double before = cpuSeconds();
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
    return 100.0 * (cpuSeconds() - before) / seconds;
}

long residentBytes() {
    std::ifstream statm("/proc/self/statm");
    long size = 0, resident = 0;
    statm >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

// A collection over its own generated node map, open.
struct SCollection {
    explicit SCollection(int features) : state(new CObjectState(nullptr)) {
        map._LoadXMLFromString(description(features).c_str());
        collection.reset(new CParameterCollection(state));
        collection->announceNodeMap(ParameterPath::CameraDevice);
        collection->attachNodeMap(ParameterPath::CameraDevice, map._Ptr);
        state->setState(ObjectState_Open);
    }
    ~SCollection() { collection->detachAllNodeMaps(); }
    static QString name(int i) { return "@CameraDevice/F" + QString::number(i); }
    QSharedPointer<IIntegerParameter> parameter(int i) {
        return collection->get(IntegerParameterName(name(i)));
    }
    QSharedPointer<IIntegerParameter> parameter(const QString& name) {
        return collection->get(IntegerParameterName(name));
    }
    GenApi::CNodeMapRef map;
    QSharedPointer<CObjectState> state;
    std::unique_ptr<CParameterCollection> collection;
};

double percentile(std::vector<double> values, double share) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<size_t>(share * (values.size() - 1))];
}

void DecoupledBurst(benchmark::State& state) {
    constexpr int parameters = 1000;
    constexpr int callbacks = 100;
    SCollection one(parameters);
    std::vector<QSharedPointer<IIntegerParameter>> held;
    std::vector<GenApi::IInteger*> nodes;
    std::unique_ptr<std::atomic<int>[]> emitted(new std::atomic<int>[parameters]);
    std::unique_ptr<std::atomic<int64_t>[]> finalAt(new std::atomic<int64_t>[parameters]);
    for (int i = 0; i < parameters; ++i) {
        emitted[i] = 0;
        finalAt[i] = 0;
        held.push_back(one.parameter(i));
        held.back()->getParameterData();
        nodes.push_back(dynamic_cast<GenApi::IInteger*>(one.map._GetNode(("F" + std::to_string(i)).c_str())));
        QObject::connect(
            held.back().data(), &IParameter::parameterDataChangedDecoupled, held.back().data(),
            [&, i](QSharedPointer<const ParameterData> data) {
                ++emitted[i];
                if (data->valueText == QString::number(callbacks))
                    finalAt[i] = Clock::now().time_since_epoch().count();
            },
            Qt::DirectConnection);
    }
    std::vector<int64_t> lastWrite(parameters);
    int64_t burstStart = 0;
    for (auto _ : state) {
        burstStart = Clock::now().time_since_epoch().count();
        for (int round = 1; round <= callbacks; ++round) {
            for (int i = 0; i < parameters; ++i) {
                nodes[i]->SetValue(round);
                lastWrite[i] = Clock::now().time_since_epoch().count();
            }
        }
        const auto deadline = Clock::now() + std::chrono::seconds(20);
        int arrived = 0;
        while (Clock::now() < deadline && arrived < parameters) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            arrived = 0;
            for (int i = 0; i < parameters; ++i)
                arrived += finalAt[i] != 0;
        }
        state.counters["arrived"] = arrived;
    }
    std::vector<double> latency;
    double totalSignals = 0;
    for (int i = 0; i < parameters; ++i) {
        totalSignals += emitted[i];
        if (finalAt[i])
            latency.push_back((finalAt[i] - lastWrite[i]) / 1e6);
    }
    // The decoupler checks every 30 ms; from the first write to the last signal, each parameter can be
    // checked (and signalled) once per period that began.
    const int64_t lastSignal = *std::max_element(finalAt.get(), finalAt.get() + parameters);
    state.counters["periods"] = std::ceil((lastSignal - burstStart) / 30e6);
    state.counters["signals_per_parameter"] = totalSignals / parameters;
    state.counters["latency_p50_ms"] = percentile(latency, 0.5);
    state.counters["latency_p99_ms"] = percentile(latency, 0.99);
    state.counters["idle_cpu_percent"] = idleCpuPercent(2.0);
}

void SixteenCollections(benchmark::State& state) {
    constexpr int collections = 16;
    constexpr int parameters = 3000;
    for (auto _ : state) {
        std::vector<std::unique_ptr<SCollection>> all;
        for (int c = 0; c < collections; ++c)
            all.emplace_back(new SCollection(parameters));
        // The names are the application's, made before: what is measured is what the library adds.
        std::vector<QString> names;
        for (int i = 0; i < parameters; ++i)
            names.push_back(SCollection::name(i));
        const long before = residentBytes();
        std::vector<QSharedPointer<IIntegerParameter>> held;
        for (auto& one : all) {
            for (const QString& name : names)
                held.push_back(one->parameter(name));
        }
        for (auto& parameter : held)
            parameter->getParameterData();
        state.counters["bytes_per_parameter"] =
            static_cast<double>(residentBytes() - before) / (collections * parameters);
        state.counters["idle_cpu_percent"] = idleCpuPercent(3.0);
        held.clear();
    }
}

}  // namespace

BENCHMARK(DecoupledBurst)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(SixteenCollections)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
