// The engine over devices Aravis opens: its fake camera, which needs no network, and its fake GigE Vision
// camera on loopback.
#include "../FakeGigECamera.h"
#include <GenApi/GenApi.h>
#include <GenApiEngine/AravisDevices.h>
#include <chrono>
#include <gtest/gtest.h>
#include <thread>

using namespace GenApi;

class AravisFakeCameraTest : public ::testing::Test {
protected:
    AravisFakeCameraTest() : m_Map(GenApiEngine::createAravisFakeDevice()) {}
    INodeMap* map() { return m_Map._Ptr; }

private:
    CNodeMapRef m_Map;
};

TEST_F(AravisFakeCameraTest, ReadsAndWritesThroughAravis) {
    CIntegerPtr width = map()->GetNode("Width");
    ASSERT_TRUE(width.IsValid());
    EXPECT_EQ(width->GetNode()->GetAccessMode(), RW);
    EXPECT_EQ(width->GetMin(), 1);
    EXPECT_EQ(width->GetMax(), 2048);
    // The register behind the width keeps its value until the write through the width announces it.
    CIntegerPtr widthRegister = map()->GetNode("WidthRegister");
    EXPECT_EQ(widthRegister->GetValue(), width->GetValue());
    width->SetValue(256);
    EXPECT_EQ(width->GetValue(), 256);
    EXPECT_EQ(widthRegister->GetValue(), 256);
    EXPECT_THROW(width->SetValue(4096), GenICam::OutOfRangeException);

    CFloatPtr exposure = map()->GetNode("ExposureTimeAbs");
    ASSERT_TRUE(exposure.IsValid());
    exposure->SetValue(20000.0);
    EXPECT_DOUBLE_EQ(exposure->GetValue(), 20000.0);

    CEnumerationPtr pixelFormat = map()->GetNode("PixelFormat");
    pixelFormat->FromString("Mono16");
    EXPECT_STREQ(pixelFormat->ToString().c_str(), "Mono16");
    EXPECT_EQ(pixelFormat->GetIntValue(), 0x01100007);
    EXPECT_NE(map()->GetNode("EnumEntry_PixelFormat_Mono16"), nullptr);
    EXPECT_THROW(pixelFormat->FromString("Mono99"), GenICam::InvalidArgumentException);

    CBooleanPtr testBoolean = map()->GetNode("TestBoolean");
    testBoolean->SetValue(true);
    EXPECT_TRUE(testBoolean->GetValue());

    CStringPtr vendor = map()->GetNode("DeviceVendorName");
    EXPECT_STREQ(vendor->GetValue().c_str(), "Aravis");
    EXPECT_EQ(vendor->GetNode()->GetAccessMode(), RO);

    CCommandPtr start = map()->GetNode("AcquisitionStart");
    EXPECT_EQ(start->GetNode()->GetAccessMode(), WO);
    EXPECT_NO_THROW(start->Execute());
    EXPECT_TRUE(start->IsDone());
}

TEST_F(AravisFakeCameraTest, PortAndMetadataOfADeviceMap) {
    CPortPtr port = map()->GetNode("Device");
    ASSERT_TRUE(port.IsValid());
    EXPECT_EQ(port->GetAccessMode(), RW);
    CIntegerPtr width = map()->GetNode("Width");
    width->SetValue(320);
    CRegisterPtr widthRegister = map()->GetNode("WidthRegister");
    ASSERT_TRUE(widthRegister.IsValid());
    uint32_t raw = 0;
    port->Read(&raw, widthRegister->GetAddress(), 4);
    EXPECT_TRUE(raw == 320 || __builtin_bswap32(raw) == 320);

    CCategoryPtr root = map()->GetNode("Root");
    FeatureList_t features;
    root->GetFeatures(features);
    EXPECT_FALSE(features.empty());
    EXPECT_TRUE(width->GetNode()->IsFeature());
    CDeviceInfoPtr info(map());
    EXPECT_STREQ(info->GetVendorName().c_str(), "Aravis");
    // A device map cannot take a user port: Aravis talks to the device itself.
    struct Memory {
        uint32_t word;
    };
    CTestPortStruct<Memory> userPort;
    EXPECT_FALSE(map()->Connect(&userPort, "Device"));
}

// Aravis' fake GigE Vision camera on 127.0.0.1: the device port follows who controls the camera. The
// controlling map reads and writes; a second one, opened while the first holds control, reads and refuses
// writes at once; once the camera stops answering its heartbeat the first map's port is not available, so
// no value kept from before is served.
TEST(AravisGigEVisionControl, ThePortFollowsWhoControlsTheDevice) {
    if (!CFakeGigECamera::installed())
        GTEST_SKIP() << CFakeGigECamera::program << " is not installed";
    CFakeGigECamera camera;
    ASSERT_TRUE(camera.start());
    std::this_thread::sleep_for(std::chrono::milliseconds(1500));
    CNodeMapRef controlling(GenApiEngine::openAravisDevice(CFakeGigECamera::deviceId));
    EXPECT_EQ(GenApiEngine::deviceControl(controlling._Ptr), GenApiEngine::EDeviceControl::Controlling);
    CIntegerPtr width = controlling._GetNode("Width");
    EXPECT_EQ(width->GetAccessMode(), RW);
    width->SetValue(256);

    {
        CNodeMapRef watching(GenApiEngine::openAravisDevice(CFakeGigECamera::deviceId));
        EXPECT_EQ(GenApiEngine::deviceControl(watching._Ptr),
                  GenApiEngine::EDeviceControl::ControlledElsewhere);
        CIntegerPtr watchedWidth = watching._GetNode("Width");
        EXPECT_EQ(watchedWidth->GetAccessMode(), RO);
        EXPECT_EQ(watchedWidth->GetValue(), 256);
        const auto started = std::chrono::steady_clock::now();
        EXPECT_THROW(watchedWidth->SetValue(512), GenICam::AccessException);
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::milliseconds(500));
    }
    // A map over a device without a control channel has no such state.
    EXPECT_EQ(GenApiEngine::deviceControl(CNodeMapRef(GenApiEngine::createAravisFakeDevice())._Ptr),
              GenApiEngine::EDeviceControl::NotApplicable);

    EXPECT_EQ(width->GetValue(), 256);  // kept: the description lets it be cached
    camera.stop();
    const auto stopped = std::chrono::steady_clock::now();
    while (GenApiEngine::deviceControl(controlling._Ptr) != GenApiEngine::EDeviceControl::Lost &&
           std::chrono::steady_clock::now() - stopped < std::chrono::seconds(20)) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    ASSERT_EQ(GenApiEngine::deviceControl(controlling._Ptr), GenApiEngine::EDeviceControl::Lost);
    EXPECT_EQ(width->GetAccessMode(), NA);
    EXPECT_THROW(width->GetValue(), GenICam::AccessException);
}
