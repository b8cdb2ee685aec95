// A megabyte written to and read back from a file of the simulated camera: through a file parameter of
// the collection, against GenApi's device file streams in the same run.
#include <GenApi/GenApi.h>
#include <GenApi/Filestream.h>
#include <SimulatedDevice.h>
#include <benchmark/benchmark.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <iterator>
#include <string>

using namespace ParameterCollection;

namespace {

const std::string megabyte(1 << 20, 'm');

void BM_GenApiStreamsMegabyte(benchmark::State& state) {
    SimCamera::CSimulatedDevice device;
    for (auto _ : state) {
        GenApi::ODevFileStream out(device.nodeMap(), "UserSet2");
        out.write(megabyte.data(), static_cast<std::streamsize>(megabyte.size()));
        out.close();
        GenApi::IDevFileStream in(device.nodeMap(), "UserSet2");
        std::string back((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        in.close();
        if (back != megabyte)
            state.SkipWithError("the file came back different");
    }
}
BENCHMARK(BM_GenApiStreamsMegabyte)->Unit(benchmark::kMillisecond);

void BM_FileParameterMegabyte(benchmark::State& state) {
    SimCamera::CSimulatedDevice device;
    QSharedPointer<CObjectState> objectState(new CObjectState(nullptr));
    CParameterCollection collection(objectState);
    collection.announceNodeMap(ParameterPath::CameraDevice);
    collection.attachNodeMap(ParameterPath::CameraDevice, device.nodeMap());
    objectState->setState(ObjectState_Open);
    QSharedPointer<IFileParameter> file = collection.get(FileParameterName("@CameraDevice/UserSet2"));
    std::string buffer = megabyte;
    std::string back(megabyte.size(), '\0');
    for (auto _ : state) {
        file->write(&buffer[0], static_cast<long long>(buffer.size()));
        file->close();
        long long total = 0;
        for (long long count; (count = file->read(&back[total], 65536)) > 0;)
            total += count;
        file->close();
        if (back != megabyte)
            state.SkipWithError("the file came back different");
    }
    collection.detachAllNodeMaps();
}
BENCHMARK(BM_FileParameterMegabyte)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
