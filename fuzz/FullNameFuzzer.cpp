// Arbitrary text as a full parameter name, asked of a collection over the simulated camera with every
// typed get and contains.
#include <SimulatedDevice.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <cstdint>

using namespace ParameterCollection;

namespace {

// A collection over the simulated camera.
struct SCollection {
    explicit SCollection(SimCamera::CSimulatedDevice& device)
        : state(new CObjectState(nullptr)), collection(state) {
        collection.announceNodeMap(ParameterPath::CameraDevice);
        collection.announceNodeMap(ParameterPath::StreamGrabber0);
        collection.attachNodeMap(ParameterPath::CameraDevice, device.nodeMap());
        state->setState(ObjectState_Open);
    }
    QSharedPointer<CObjectState> state;
    CParameterCollection collection;
};

// A name may be asked for with one type only during a collection's life: a second type is a programming
// error the library stops on. The untyped gets, the contains calls and the file gets go to one collection,
// the typed integer gets to another that is never asked for another type, so that any name can be tried
// with both without predicting how each resolves it ("X/Alias" and alternatives).
struct SFixture {
    SFixture() : untyped(device), integers(device) {}
    SimCamera::CSimulatedDevice device;
    SCollection untyped;
    SCollection integers;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static SFixture fixture;
    CParameterCollection& collection = fixture.untyped.collection;
    const QString name = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    if (QSharedPointer<IParameter> parameter = collection.get(ParameterName(name)))
        parameter->toString();
    collection.contains(ParameterName(name));
    collection.contains(IntegerParameterName(name));
    collection.contains(EnumParameterName(name));
    collection.contains(FileParameterName(name));
    if (QSharedPointer<IFileParameter> file = collection.get(FileParameterName(name)))
        file->isAvailable();
    if (QSharedPointer<IIntegerParameter> integer =
            fixture.integers.collection.get(IntegerParameterName(name)))
        integer->isEmpty();
    return 0;
}
