// The camera SDK services the library uses: the wait object and feature persistence.
#include <GenApi/GenApi.h>
#include <SimulatedDevice.h>
#include <gtest/gtest.h>
#include <chrono>
#include <tavrin/FeaturePersistence.h>
#include <tavrin/WaitObject.h>
#include <thread>

TEST(WaitObject, StaysSignalledOnceSignalled) {
    Tavrin::WaitObjectEx event = Tavrin::WaitObjectEx::Create(false);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(event.Wait(30));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(29));
    std::thread signaller([copy = event]() mutable {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        copy.Signal();  // copies share one event
    });
    EXPECT_TRUE(event.Wait(5000));
    signaller.join();
    EXPECT_TRUE(event.Wait(0));
    EXPECT_TRUE(event.IsSignalled());
    event.Reset();
    EXPECT_FALSE(event.Wait(1));
    EXPECT_TRUE(Tavrin::WaitObjectEx::Create(true).Wait(0));
}

TEST(FeaturePersistence, SavesAndLoadsStreamableFeatures) {
    SimCamera::CSimulatedDevice device;
    GenApi::INodeMap* map = device.nodeMap();
    GenApi::CIntegerPtr(map->GetNode("Width"))->SetValue(1024);
    GenApi::CStringPtr(map->GetNode("DeviceUserID"))->SetValue("line 3");
    GenICam::gcstring stream;
    Tavrin::CFeaturePersistence::SaveToString(stream, map);
    const std::string text = stream.c_str();
    EXPECT_EQ(text.rfind("# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n", 0), 0u);
    EXPECT_NE(text.find("\nWidth\t1024\n"), std::string::npos);
    EXPECT_NE(text.find("\nDeviceUserID\tline 3\n"), std::string::npos);
    EXPECT_EQ(text.find("SensorWidth"), std::string::npos);  // read-only
    EXPECT_EQ(text.find("WidthReg"), std::string::npos);     // not streamable

    SimCamera::CSimulatedDevice other;
    Tavrin::CFeaturePersistence::LoadFromString(stream, other.nodeMap(), true);
    EXPECT_EQ(GenApi::CIntegerPtr(other.nodeMap()->GetNode("Width"))->GetValue(), 1024);
    EXPECT_STREQ(GenApi::CStringPtr(other.nodeMap()->GetNode("DeviceUserID"))->GetValue().c_str(), "line 3");

    EXPECT_THROW(Tavrin::CFeaturePersistence::LoadFromString("Width\t64\n", map, true),
                 GenICam::RuntimeException);
    EXPECT_THROW(Tavrin::CFeaturePersistence::LoadFromString("", map, true), GenICam::RuntimeException);
    // A refused value fails the load with a description that names the feature.
    const GenICam::gcstring bad = "# {05D8C294-F295-4dfb-9D01-096BD04049F4}\n# comment\nWidth\t1000\n";
    try {
        Tavrin::CFeaturePersistence::LoadFromString(bad, map, true);
        ADD_FAILURE() << "no exception";
    } catch (const GenICam::RuntimeException& e) {
        EXPECT_NE(std::string(e.GetDescription()).find("Width"), std::string::npos) << e.GetDescription();
    }
    EXPECT_THROW(Tavrin::CFeaturePersistence::Load("/nonexistent/features", map, true),
                 GenICam::RuntimeException);
    EXPECT_THROW(Tavrin::CFeaturePersistence::SaveToString(stream, nullptr),
                 GenICam::InvalidArgumentException);
}
