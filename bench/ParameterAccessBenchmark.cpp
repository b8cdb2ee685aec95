// What the library costs over GenApi: each collection call against the raw GenApi call it wraps, on the
// simulated camera, in the same run. Reads of cached registers measure the library's own overhead.
#include <GenApi/GenApi.h>
#include <SimulatedDevice.h>
#include <benchmark/benchmark.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>

using namespace ParameterCollection;

namespace {

// A simulated camera attached to a collection, as a camera application would set it up.
class CBenchmarkCamera {
public:
    CBenchmarkCamera() : m_State(new CObjectState(nullptr)), m_Collection(new CParameterCollection(m_State)) {
        m_Collection->announceNodeMap(ParameterPath::CameraDevice);
        m_Collection->attachNodeMap(ParameterPath::CameraDevice, m_Device.nodeMap());
        m_State->setState(ObjectState_Open);
    }
    ~CBenchmarkCamera() { m_Collection->detachAllNodeMaps(); }
    GenApi::INodeMap* map() { return m_Device.nodeMap(); }
    CParameterCollection& collection() { return *m_Collection; }

private:
    SimCamera::CSimulatedDevice m_Device;
    QSharedPointer<CObjectState> m_State;
    QScopedPointer<CParameterCollection> m_Collection;
};

void RawIntegerRead(benchmark::State& state) {
    CBenchmarkCamera camera;
    GenApi::CIntegerPtr width = camera.map()->GetNode("Width");
    for (auto _ : state)
        benchmark::DoNotOptimize(width->GetValue());
}

void CollectionIntegerRead(benchmark::State& state) {
    CBenchmarkCamera camera;
    QSharedPointer<IIntegerParameter> width =
        camera.collection().get(IntegerParameterName("@CameraDevice/Width"));
    for (auto _ : state)
        benchmark::DoNotOptimize(width->getValue());
}

void RawIntegerWrite(benchmark::State& state) {
    CBenchmarkCamera camera;
    GenApi::CIntegerPtr width = camera.map()->GetNode("Width");
    int64_t value = 16;
    for (auto _ : state) {
        width->SetValue(value);
        value = value == 16 ? 32 : 16;
    }
}

int callbacks = 0;
void countCallback(GenApi::INode*) {
    ++callbacks;
}

// The raw write with a node callback registered, as the collection registers one on every bound node.
void RawIntegerWriteWithCallback(benchmark::State& state) {
    CBenchmarkCamera camera;
    GenApi::CIntegerPtr width = camera.map()->GetNode("Width");
    const intptr_t handle = GenApi::Register(width->GetNode(), &countCallback);
    int64_t value = 16;
    for (auto _ : state) {
        width->SetValue(value);
        value = value == 16 ? 32 : 16;
    }
    width->GetNode()->DeregisterCallback(handle);
}

void CollectionIntegerWrite(benchmark::State& state) {
    CBenchmarkCamera camera;
    QSharedPointer<IIntegerParameter> width =
        camera.collection().get(IntegerParameterName("@CameraDevice/Width"));
    long long value = 16;
    for (auto _ : state) {
        width->setValue(value, true);
        value = value == 16 ? 32 : 16;
    }
}

void RawEnumerationRead(benchmark::State& state) {
    CBenchmarkCamera camera;
    GenApi::CEnumerationPtr pixelFormat = camera.map()->GetNode("PixelFormat");
    for (auto _ : state)
        benchmark::DoNotOptimize(pixelFormat->ToString());
}

void CollectionEnumerationRead(benchmark::State& state) {
    CBenchmarkCamera camera;
    QSharedPointer<IEnumParameter> pixelFormat = camera.collection().get(EnumParameterName("PixelFormat"));
    for (auto _ : state)
        benchmark::DoNotOptimize(pixelFormat->getValue());
}

void CollectionCachedLookup(benchmark::State& state) {
    CBenchmarkCamera camera;
    const IntegerParameterName name("@CameraDevice/Width");
    camera.collection().get(name);
    for (auto _ : state)
        benchmark::DoNotOptimize(camera.collection().get(name));
}

void RawNodeLookup(benchmark::State& state) {
    CBenchmarkCamera camera;
    for (auto _ : state)
        benchmark::DoNotOptimize(camera.map()->GetNode("Width"));
}

void CollectionSnapshot(benchmark::State& state) {
    CBenchmarkCamera camera;
    QSharedPointer<IIntegerParameter> width =
        camera.collection().get(IntegerParameterName("@CameraDevice/Width"));
    for (auto _ : state)
        benchmark::DoNotOptimize(width->getParameterData());
}

}  // namespace

BENCHMARK(RawIntegerRead);
BENCHMARK(CollectionIntegerRead);
BENCHMARK(RawIntegerWrite);
BENCHMARK(RawIntegerWriteWithCallback);
BENCHMARK(CollectionIntegerWrite);
BENCHMARK(RawEnumerationRead);
BENCHMARK(CollectionEnumerationRead);
BENCHMARK(RawNodeLookup);
BENCHMARK(CollectionCachedLookup);
BENCHMARK(CollectionSnapshot);

BENCHMARK_MAIN();
