// Arbitrary text as a full parameter name, asked of a collection over the simulated camera with every
// typed get and contains.
#include <SimulatedDevice.h>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <cstdint>

using namespace ParameterCollection;

namespace {

struct SFixture {
    SFixture() : state(new CObjectState(nullptr)), collection(state) {
        collection.announceNodeMap(ParameterPath::CameraDevice);
        collection.announceNodeMap(ParameterPath::StreamGrabber0);
        collection.attachNodeMap(ParameterPath::CameraDevice, device.nodeMap());
        state->setState(ObjectState_Open);
    }
    SimCamera::CSimulatedDevice device;
    QSharedPointer<CObjectState> state;
    CParameterCollection collection;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static SFixture fixture;
    CParameterCollection& collection = fixture.collection;
    const QString name = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    // A name may be asked for with one type only during a collection's life (a second type is a fatal
    // programming error); the untyped get and the contains calls take any name, the typed gets only names
    // that the camera does not have. A typed get reads "X/Alias" as X, so X must be absent too.
    if (QSharedPointer<IParameter> parameter = collection.get(ParameterName(name)))
        parameter->toString();
    collection.contains(ParameterName(name));
    collection.contains(IntegerParameterName(name));
    collection.contains(EnumParameterName(name));
    collection.contains(FileParameterName(name));
    QString unaliased = name;
    while (unaliased.endsWith(QLatin1String("/Alias")))
        unaliased.chop(6);
    if (!collection.contains(ParameterName(name)) && !collection.contains(ParameterName(unaliased))) {
        collection.get(IntegerParameterName(name))->isEmpty();
    }
    if (QSharedPointer<IFileParameter> file = collection.get(FileParameterName(name)))
        file->isAvailable();
    return 0;
}
