// The engine keeps node values as GenApi does: between writes and invalidations a read is served from the
// node, and everything that can change a value (writes through any node, selectors, device-side changes
// announced by invalidation or polling, reads that ignore the cache) makes the next read see it.
#include "SimulatedCameraFixture.h"
#include <GenApiEngine/CachePolicy.h>
#include <functional>

using namespace GenApi;
namespace R = SimCamera::Registers;

TEST_F(SimulatedCameraTest, KeptValuesFollowEveryWriteAndInvalidation) {
    IInteger* width = integer("Width");
    EXPECT_EQ(width->GetValue(), 640);

    // A register changed behind GenApi's back is not seen until something announces it, as with GenApi.
    camera().pokeRegister(R::Width, 800);
    EXPECT_EQ(width->GetValue(), 640);
    EXPECT_EQ(width->GetValue(false, true), 800);  // ignoring the cache reads the device
    camera().pokeRegister(R::Width, 960);
    width->GetNode()->InvalidateNode();
    EXPECT_EQ(width->GetValue(), 960);
    camera().pokeRegister(R::Width, 1024);
    map()->InvalidateNodes();
    EXPECT_EQ(width->GetValue(), 1024);

    // A write through another node: the width's maximum follows the offset.
    const int64_t maximum = width->GetMax();
    integer("OffsetX")->SetValue(256);
    EXPECT_EQ(width->GetMax(), maximum - 256);

    // A selector: the selected gain is another register.
    enumeration("GainSelector")->FromString("Red");
    floating("Gain")->SetValue(3.0);
    enumeration("GainSelector")->FromString("Blue");
    floating("Gain")->SetValue(7.5);
    EXPECT_DOUBLE_EQ(floating("Gain")->GetValue(), 7.5);
    enumeration("GainSelector")->FromString("Red");
    EXPECT_DOUBLE_EQ(floating("Gain")->GetValue(), 3.0);
    EXPECT_EQ(enumeration("GainSelector")->ToString(), "Red");

    // A write to the port itself, past every node.
    const uint32_t raw = 480;
    CPortPtr port(node("Device"));
    port->Write(&raw, R::Height, sizeof raw);
    EXPECT_EQ(integer("Height")->GetValue(), 480);
}

TEST_F(SimulatedCameraTest, PolledAndUncachedValuesMoveWithTheDevice) {
    // DeviceTemperature sits on a NoCache register: every read reaches the device.
    IFloat* temperature = floating("DeviceTemperature");
    camera().freezeTemperature(40.0);
    EXPECT_DOUBLE_EQ(temperature->GetValue(), 40.0);
    camera().freezeTemperature(45.5);
    EXPECT_DOUBLE_EQ(temperature->GetValue(), 45.5);

    // Polling reads polled nodes again, and only the device announces what else changed.
    IInteger* width = integer("Width");
    width->GetValue();
    camera().pokeRegister(R::Width, 1024);
    map()->Poll(100000);
    EXPECT_EQ(width->GetValue(), 640);  // Width is not polled: still the kept value
    // As in GenApi, invalidating the feature computes it again from the bytes its register keeps;
    // invalidating the register reads the device.
    width->GetNode()->InvalidateNode();
    EXPECT_EQ(width->GetValue(), 640);
    node("WidthReg")->InvalidateNode();
    EXPECT_EQ(width->GetValue(), 1024);

    // A read that ignores the cache reads the device, and so does the plain read after it: what the
    // ignore-cache read found is not kept.
    const uint64_t reads = camera().readCount();
    camera().pokeRegister(R::Width, 800);
    EXPECT_EQ(width->GetValue(false, true), 800);
    const uint64_t ignoringReads = camera().readCount() - reads;
    EXPECT_GT(ignoringReads, 0u);
    EXPECT_EQ(width->GetValue(), 800);
    EXPECT_GT(camera().readCount() - reads, ignoringReads);
    const uint64_t afterPlain = camera().readCount();
    EXPECT_EQ(width->GetValue(), 800);
    EXPECT_EQ(camera().readCount(), afterPlain);  // kept again from here on
}

// Each map keeps what it reads by its own policy, whatever another map does; the environment only gives
// the policy a map starts with. Off reads the device every time, On keeps by GenApi's rules, Verify keeps
// and compares every kept value with a fresh evaluation.
TEST_F(SimulatedCameraTest, EachMapHasItsOwnCachePolicy) {
    using GenApiEngine::ECachePolicy;
    EXPECT_EQ(GenApiEngine::cachePolicy(map()), GenApiEngine::defaultCachePolicy());
    EXPECT_THROW(GenApiEngine::cachePolicy(nullptr), GenICam::InvalidArgumentException);
    EXPECT_THROW(GenApiEngine::setCachePolicy(nullptr, ECachePolicy::Off), GenICam::InvalidArgumentException);
    SimCamera::CSimulatedDevice other;
    GenApiEngine::setCachePolicy(other.nodeMap(), ECachePolicy::On);
    CIntegerPtr otherWidth(other.nodeMap()->GetNode("Width"));
    IInteger* width = integer("Width");
    auto readsOf = [&](const std::function<void()>& action) {
        const uint64_t before = camera().readCount();
        action();
        return camera().readCount() - before;
    };

    GenApiEngine::setCachePolicy(map(), ECachePolicy::Off);
    EXPECT_EQ(GenApiEngine::cachePolicy(map()), ECachePolicy::Off);
    EXPECT_EQ(GenApiEngine::cachePolicy(other.nodeMap()), ECachePolicy::On);
    EXPECT_GT(readsOf([&] { EXPECT_EQ(width->GetValue(), 640); }), 0u);
    EXPECT_GT(readsOf([&] { EXPECT_EQ(width->GetValue(), 640); }), 0u);
    camera().pokeRegister(R::Width, 800);
    EXPECT_EQ(width->GetValue(), 800);
    width->SetValue(960);
    EXPECT_GT(readsOf([&] { EXPECT_EQ(width->GetValue(), 960); }), 0u);
    // The other map still keeps its value.
    otherWidth->GetValue();
    const uint64_t otherReads = other.camera().readCount();
    otherWidth->GetValue();
    EXPECT_EQ(other.camera().readCount(), otherReads);

    // Turned on, the map keeps again from its next read, and nothing kept before survives the change.
    GenApiEngine::setCachePolicy(map(), ECachePolicy::On);
    EXPECT_GT(readsOf([&] { EXPECT_EQ(width->GetValue(), 960); }), 0u);
    EXPECT_EQ(readsOf([&] { EXPECT_EQ(width->GetValue(), 960); }), 0u);
    camera().pokeRegister(R::Width, 1024);
    EXPECT_EQ(width->GetValue(), 960);

    // Verify serves kept values too, having checked them against what the kept register bytes give.
    GenApiEngine::setCachePolicy(map(), ECachePolicy::Verify);
    EXPECT_EQ(width->GetValue(), 1024);
    EXPECT_EQ(readsOf([&] { EXPECT_EQ(width->GetValue(), 1024); }), 0u);
    camera().pokeRegister(R::Width, 640);
    EXPECT_EQ(width->GetValue(), 1024);
    GenApiEngine::setCachePolicy(map(), GenApiEngine::defaultCachePolicy());
}
