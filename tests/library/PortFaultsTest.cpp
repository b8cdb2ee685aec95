// A port that fails on command under the simulated camera: every call gives the translated exception with
// the port's text, the state lock is free again afterwards, and the same parameters work once it recovers.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <future>
#include <parametercollection/IEnumParameter.h>
#include <parametercollection/IFloatParameter.h>
#include <parametercollection/IIntegerParameter.h>

using namespace Core::Exception;
using SimCamera::CSimulatedCamera;

namespace {

// True when another thread can take the state lock within a second: nothing was left holding it.
bool stateLockIsFree(CObjectState& state) {
    return std::async(std::launch::async, [&state] {
               CScopedObjectStateLock lock(&state);
               return true;
           }).wait_for(std::chrono::seconds(1)) == std::future_status::ready;
}

}  // namespace

TEST(PortFaults, FailuresAreTranslatedAndParametersRecover) {
    CSimulatedCollection simulated;
    CParameterCollection& collection = simulated.collection();
    CSimulatedCamera& camera = simulated.device().camera();
    auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
    auto exposure = collection.get(FloatParameterName("@CameraDevice/ExposureTime"));
    auto temperature = collection.get(FloatParameterName("@CameraDevice/DeviceTemperature"));
    auto pixelFormat = collection.get(EnumParameterName("@CameraDevice/PixelFormat"));

    // A failing transfer: reads of uncached registers and every write fail with the port's text.
    camera.setFailure(CSimulatedCamera::EFailure::IoError);
    EXPECT_NE(messageOf<RuntimeException>([&] { temperature->getValue(); }).indexOf("transfer failed"), -1);
    EXPECT_NE(messageOf<RuntimeException>([&] { width->setValue(1024, true); }).indexOf("transfer failed"),
              -1);
    // The unchecked and corrected writes pass GenApi's own exception on untranslated, by design.
    EXPECT_THROW(width->setValue(1024, IntegerValueCorrection_None), GenICam::RuntimeException);
    EXPECT_THROW(exposure->setValue(2000.0), RuntimeException);
    EXPECT_THROW(pixelFormat->setValue(QString("Mono16")), RuntimeException);
    EXPECT_TRUE(stateLockIsFree(simulated.state()));

    // A device that does not answer: TimeoutException, with the port's words.
    camera.setFailure(CSimulatedCamera::EFailure::Timeout);
    EXPECT_NE(messageOf<TimeoutException>([&] { temperature->getValue(); }).indexOf("did not answer in time"),
              -1);
    EXPECT_THROW(width->parseAndSetValue("1024"), TimeoutException);
    EXPECT_TRUE(stateLockIsFree(simulated.state()));
    // The snapshot of a parameter that cannot be read fails and is refreshed again later.
    EXPECT_THROW(temperature->getParameterData(), TimeoutException);

    // A disconnected port: not implemented, so the parameters report themselves unreadable.
    camera.setFailure(CSimulatedCamera::EFailure::None);
    camera.setConnected(false);
    collection.invalidate();
    EXPECT_FALSE(width->isReadable());
    EXPECT_EQ(width->toString(), "<error>");
    EXPECT_TRUE(stateLockIsFree(simulated.state()));

    // Recovered: the same objects read and write again.
    camera.setConnected(true);
    collection.invalidate();
    width->setValue(1024, true);
    EXPECT_EQ(width->getValue(), 1024);
    exposure->setValue(2000.0);
    EXPECT_DOUBLE_EQ(exposure->getValue(), 2000.0);
    pixelFormat->setValue(QString("Mono16"));
    EXPECT_EQ(pixelFormat->getValue(), "Mono16");
    EXPECT_FALSE(temperature->getParameterData()->valueText.isEmpty());
}
