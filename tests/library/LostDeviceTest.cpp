// A GigE Vision camera on loopback (Aravis' fake camera) that disappears mid-session and comes back: calls
// fail with an exception within the GigE Vision timeout, nothing hangs, and the parameters held before
// work again once a node map of the new connection is attached.
#include "LibraryFixture.h"
#include "../FakeGigECamera.h"
#include <GenApiEngine/AravisDevices.h>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <parametercollection/IIntegerParameter.h>
#include <thread>

using namespace Core::Exception;

namespace {

// Starts the fake camera and waits until Aravis finds it.
bool startFakeCamera(CFakeGigECamera& camera) {
    if (!camera.start())
        return false;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < 10000) {
        const std::vector<std::string> devices = GenApiEngine::listAravisDevices();
        if (std::find(devices.begin(), devices.end(), CFakeGigECamera::deviceId) != devices.end())
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return false;
}

}  // namespace

TEST(LostDevice, CallsFailQuicklyAndHeldParametersWorkAfterReattach) {
    if (QStandardPaths::findExecutable(CFakeGigECamera::program).isEmpty())
        GTEST_SKIP() << CFakeGigECamera::program << " is not installed";
    CFakeGigECamera camera;
    if (!startFakeCamera(camera)) {
        GTEST_SKIP() << "the fake GigE Vision camera could not be started on 127.0.0.1";
    }
    // The node maps outlive the collection, whatever way the test ends.
    GenApi::CNodeMapRef first, second;
    QSharedPointer<CObjectState> state(new CObjectState(nullptr));
    CParameterCollection collection(state);
    collection.announceNodeMap(ParameterPath::CameraDevice);
    first = GenApiEngine::openAravisDevice(CFakeGigECamera::deviceId);
    collection.attachNodeMap(ParameterPath::CameraDevice, first._Ptr);
    state->setState(ObjectState_Open);
    auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
    const long long before = width->getValue();
    EXPECT_GT(before, 0);

    // The camera goes away. A value the description lets GenApi cache is still served from the cache
    // (the checking mode evaluates every read afresh, so there it fails like the rest); everything that
    // reaches the device fails within the GigE Vision timeout and retries, no hang.
    camera.stop();
    try {
        EXPECT_EQ(width->getValue(), before);
    } catch (const BaseException&) {
        EXPECT_NE(std::getenv("GENAPI_ENGINE_VERIFY_CACHE"), nullptr);
    }
    QElapsedTimer clock;
    clock.start();
    EXPECT_THROW(width->setValue(before, true), BaseException);
    collection.invalidate();
    EXPECT_THROW(width->getValue(), BaseException);
    EXPECT_LT(clock.elapsed(), 20000);
    collection.detachNodeMap(ParameterPath::CameraDevice);
    state->setState(ObjectState_Closed);

    // It comes back: a node map of the new connection, attached, serves the same parameter object.
    ASSERT_TRUE(startFakeCamera(camera));
    second = GenApiEngine::openAravisDevice(CFakeGigECamera::deviceId);
    collection.attachNodeMap(ParameterPath::CameraDevice, second._Ptr);
    state->setState(ObjectState_Open);
    EXPECT_EQ(collection.get(IntegerParameterName("@CameraDevice/Width")).data(), width.data());
    EXPECT_EQ(width->getValue(), before);
    collection.detachAllNodeMaps();
}
