// Change callbacks, their propagation through dependencies, invalidation, polling and caching.
#include "SimulatedCameraFixture.h"
#include <map>
#include <thread>
#include <vector>

using namespace GenApi;
namespace R = SimCamera::Registers;

namespace {

// Counts callbacks per node; each registration reports the node it was registered on.
class CCallbackRecorder {
public:
    void onChange(INode* node) { ++m_Counts[node->GetName().c_str()]; }
    int count(const char* name) const {
        const auto found = m_Counts.find(name);
        return found == m_Counts.end() ? 0 : found->second;
    }
    void clear() { m_Counts.clear(); }
    size_t distinctNodes() const { return m_Counts.size(); }

private:
    std::map<std::string, int> m_Counts;
};

int freeCallbackCalls = 0;
void freeCallback(INode*) {
    ++freeCallbackCalls;
}

}  // namespace

class EngineDynamicsTest : public SimulatedCameraTest {
protected:
    CallbackHandleType watch(const char* name, ECallbackType type = cbPostInsideLock) {
        return Register(node(name), m_Recorder, &CCallbackRecorder::onChange, type);
    }
    void watchAll() {
        NodeList_t nodes;
        map()->GetNodes(nodes);
        for (INode* n : nodes)
            Register(n, m_Recorder, &CCallbackRecorder::onChange);
    }
    CCallbackRecorder m_Recorder;
};

TEST_F(EngineDynamicsTest, AWriteFiresTheNodeAndEveryDependentOnce) {
    watchAll();
    integer("OffsetX")->SetValue(256);
    EXPECT_EQ(m_Recorder.count("OffsetX"), 1);
    EXPECT_EQ(m_Recorder.count("OffsetXReg"), 1);
    EXPECT_EQ(m_Recorder.count("WidthMax"), 1);
    EXPECT_EQ(m_Recorder.count("Width"), 1);  // its maximum changed
    EXPECT_EQ(m_Recorder.count("PayloadSize"), 1);
    EXPECT_EQ(m_Recorder.count("ExposureTime"), 0);
    EXPECT_EQ(m_Recorder.count("Height"), 0);

    // A selector fires the features it selects.
    m_Recorder.clear();
    enumeration("GainSelector")->FromString("Green");
    EXPECT_EQ(m_Recorder.count("GainSelector"), 1);
    EXPECT_EQ(m_Recorder.count("Gain"), 1);
    EXPECT_EQ(m_Recorder.count("GainRaw"), 1);
    EXPECT_EQ(m_Recorder.count("TriggerMode"), 0);

    // Nodes that share a register with the written one follow it only through the description's links,
    // as in GenApi: the simulated camera links its two image flags with pInvalidator.
    m_Recorder.clear();
    as<IBoolean>("ReverseX")->SetValue(true);
    EXPECT_EQ(m_Recorder.count("ReverseX"), 1);
    EXPECT_EQ(m_Recorder.count("ReverseXReg"), 1);
    EXPECT_EQ(m_Recorder.count("ReverseYReg"), 1);
    EXPECT_EQ(m_Recorder.count("ReverseY"), 1);

    // Availability that depends on a feature fires the entry and its enumeration.
    m_Recorder.clear();
    integer("TestMono10Available")->SetValue(1);
    EXPECT_EQ(m_Recorder.count("EnumEntry_PixelFormat_Mono10"), 1);
    EXPECT_EQ(m_Recorder.count("PixelFormat"), 1);

    // A failed write changes nothing and fires nothing.
    m_Recorder.clear();
    EXPECT_THROW(integer("Width")->SetValue(5000), GenICam::OutOfRangeException);
    EXPECT_EQ(m_Recorder.distinctNodes(), 0u);
}

TEST_F(EngineDynamicsTest, CallbacksAreDeregisteredByHandle) {
    const CallbackHandleType width = watch("Width");
    const CallbackHandleType height = watch("Height");
    const CallbackHandleType function = Register(node("Width"), &freeCallback);
    freeCallbackCalls = 0;
    integer("Width")->SetValue(320);
    EXPECT_EQ(m_Recorder.count("Width"), 1);
    EXPECT_EQ(freeCallbackCalls, 1);

    Deregister(width);
    EXPECT_TRUE(node("Height")->DeregisterCallback(height));
    EXPECT_FALSE(node("Height")->DeregisterCallback(height));
    node("Width")->DeregisterCallback(function);
    integer("Width")->SetValue(336);
    integer("Height")->SetValue(200);
    EXPECT_EQ(m_Recorder.count("Width"), 1);
    EXPECT_EQ(m_Recorder.count("Height"), 0);
    EXPECT_EQ(freeCallbackCalls, 1);
}

// Each callback fires for its own type once per change, however registrations of both types come and go.
TEST_F(EngineDynamicsTest, CallbacksFireByTheirTypeAsRegistrationsComeAndGo) {
    CCallbackRecorder inside, outside;
    const CallbackHandleType widthInside = Register(node("Width"), inside, &CCallbackRecorder::onChange);
    CallbackHandleType payloadOutside =
        Register(node("PayloadSize"), outside, &CCallbackRecorder::onChange, cbPostOutsideLock);
    integer("Width")->SetValue(320);
    integer("Width")->SetValue(336);
    EXPECT_EQ(inside.count("Width"), 2);
    EXPECT_EQ(outside.count("PayloadSize"), 2);  // a dependent, called back after the lock is released

    node("PayloadSize")->DeregisterCallback(payloadOutside);
    integer("Width")->SetValue(352);
    EXPECT_EQ(inside.count("Width"), 3);
    EXPECT_EQ(outside.count("PayloadSize"), 2);

    // The same node with both types, then the inside one gone.
    const CallbackHandleType widthOutside =
        Register(node("Width"), outside, &CCallbackRecorder::onChange, cbPostOutsideLock);
    integer("Width")->SetValue(368);
    EXPECT_EQ(inside.count("Width"), 4);
    EXPECT_EQ(outside.count("Width"), 1);
    node("Width")->DeregisterCallback(widthInside);
    integer("Width")->SetValue(384);
    EXPECT_EQ(inside.count("Width"), 4);
    EXPECT_EQ(outside.count("Width"), 2);
    node("Width")->DeregisterCallback(widthOutside);
    integer("Width")->SetValue(400);
    EXPECT_EQ(outside.count("Width"), 2);
    EXPECT_EQ(inside.distinctNodes(), 1u);
}

TEST_F(EngineDynamicsTest, InsideCallbacksHoldTheLockOutsideCallbacksDoNot) {
    struct CLockProbe {
        CLock* lock;
        bool otherThreadCouldLock = false;
        int calls = 0;
        void probe(INode*) {
            ++calls;
            std::thread([this] {
                otherThreadCouldLock = lock->TryLock();
                if (otherThreadCouldLock)
                    lock->Unlock();
            }).join();
        }
    };
    CLockProbe inside{&map()->GetLock()};
    CLockProbe outside{&map()->GetLock()};
    Register(node("ExposureTime"), inside, &CLockProbe::probe, cbPostInsideLock);
    Register(node("ExposureTime"), outside, &CLockProbe::probe, cbPostOutsideLock);
    floating("ExposureTime")->SetValue(1500.0);
    EXPECT_EQ(inside.calls, 1);
    EXPECT_EQ(outside.calls, 1);
    EXPECT_FALSE(inside.otherThreadCouldLock);
    EXPECT_TRUE(outside.otherThreadCouldLock);
}

TEST_F(EngineDynamicsTest, CallbacksMayCallBackIntoTheNodeMap) {
    struct CReader {
        IInteger* width;
        IInteger* offsetX;
        std::vector<int64_t> seenMaxima;
        void onWidth(INode*) { seenMaxima.push_back(width->GetMax()); }
        void onHeight(INode*) { offsetX->SetValue(32); }  // a nested write from inside a callback
    } reader{integer("Width"), integer("OffsetX"), {}};
    Register(node("Width"), reader, &CReader::onWidth);
    Register(node("Height"), reader, &CReader::onHeight);
    integer("OffsetX")->SetValue(1024);
    ASSERT_EQ(reader.seenMaxima.size(), 1u);
    EXPECT_EQ(reader.seenMaxima[0], 2048 - 1024);
    // The nested write's own callbacks fire too, after it took effect.
    integer("Height")->SetValue(100);
    ASSERT_EQ(reader.seenMaxima.size(), 2u);
    EXPECT_EQ(reader.seenMaxima[1], 2048 - 32);
}

TEST_F(EngineDynamicsTest, PollFiresOncePerPollingPeriod) {
    watch("DeviceTemperature");
    map()->Poll(500);
    map()->Poll(499);
    EXPECT_EQ(m_Recorder.count("DeviceTemperature"), 0);
    map()->Poll(1);
    EXPECT_EQ(m_Recorder.count("DeviceTemperature"), 1);
    map()->Poll(999);
    EXPECT_EQ(m_Recorder.count("DeviceTemperature"), 1);
    map()->Poll(1);
    EXPECT_EQ(m_Recorder.count("DeviceTemperature"), 2);
    // A long gap fires once and starts the count again.
    map()->Poll(5000);
    EXPECT_EQ(m_Recorder.count("DeviceTemperature"), 3);
    EXPECT_EQ(m_Recorder.count("Width"), 0);
    // The temperature is read from the device each time.
    camera().freezeTemperature(55.5);
    EXPECT_DOUBLE_EQ(floating("DeviceTemperature")->GetValue(), 55.5);
    camera().freezeTemperature(56.0);
    EXPECT_DOUBLE_EQ(floating("DeviceTemperature")->GetValue(), 56.0);
}

TEST_F(EngineDynamicsTest, InvalidationFiresCallbacksAndRereadsWhatItDrops) {
    watchAll();
    EXPECT_EQ(integer("Width")->GetValue(), 640);
    camera().pokeRegister(R::Width, 1280);         // changed behind the engine's back
    EXPECT_EQ(integer("Width")->GetValue(), 640);  // still the cached value
    map()->InvalidateNodes();
    EXPECT_EQ(m_Recorder.count("Width"), 1);
    EXPECT_EQ(m_Recorder.count("ExposureTime"), 1);
    EXPECT_EQ(integer("Width")->GetValue(), 1280);

    // Invalidating one node fires it and what depends on it, not the register it reads nor what
    // depends on that register (Width's maximum reads OffsetX's register, not OffsetX).
    m_Recorder.clear();
    EXPECT_EQ(integer("OffsetX")->GetValue(), 0);
    camera().pokeRegister(R::OffsetX, 16);
    EXPECT_EQ(integer("OffsetX")->GetValue(), 0);
    node("OffsetX")->InvalidateNode();
    EXPECT_EQ(m_Recorder.count("OffsetX"), 1);
    EXPECT_EQ(m_Recorder.count("OffsetXReg"), 0);
    EXPECT_EQ(m_Recorder.count("Width"), 0);
    EXPECT_EQ(m_Recorder.count("Height"), 0);
    EXPECT_EQ(integer("OffsetX")->GetValue(), 0);  // computed again from the kept register bytes
    node("OffsetXReg")->InvalidateNode();
    EXPECT_EQ(integer("OffsetX")->GetValue(), 16);

    // A user port that knows its device changed invalidates everything behind the port.
    camera().pokeRegister(R::Height, 600);
    camera().InvalidateNode();
    EXPECT_EQ(integer("Height")->GetValue(), 600);

    // pInvalidator: writing one feature makes another read the device again.
    EXPECT_EQ(integer("TestReadOnlyInteger")->GetValue(), 42);
    camera().pokeRegister(R::TestReadOnlyInteger, 43);
    EXPECT_EQ(integer("TestReadOnlyInteger")->GetValue(), 42);
    m_Recorder.clear();
    integer("TestWriteOnlyInteger")->SetValue(1);
    EXPECT_EQ(m_Recorder.count("TestReadOnlyInteger"), 1);
    EXPECT_EQ(integer("TestReadOnlyInteger")->GetValue(), 43);
}

TEST_F(EngineDynamicsTest, CachingFollowsTheDescription) {
    // Write-through: reads after a write or a first read stay off the device.
    integer("Width")->GetValue();
    uint64_t reads = camera().readCount();
    EXPECT_EQ(integer("Width")->GetValue(), 640);
    EXPECT_EQ(camera().readCount(), reads);
    EXPECT_TRUE(as<IValue>("Width")->IsValueCacheValid());
    floating("ExposureTime")->SetValue(777.0);
    reads = camera().readCount();
    EXPECT_DOUBLE_EQ(floating("ExposureTime")->GetValue(), 777.0);
    EXPECT_DOUBLE_EQ(floating("ExposureTimeAbs")->GetValue(), 777.0);  // the same register
    EXPECT_EQ(camera().readCount(), reads);

    // Ignoring the cache goes to the device.
    camera().pokeRegister(R::Width, 800);
    EXPECT_EQ(integer("Width")->GetValue(false, true), 800);
    EXPECT_GT(camera().readCount(), reads);

    // No cache: every read reaches the device (the selector behind it is read once, then cached).
    floating("DeviceTemperature")->GetValue();
    reads = camera().readCount();
    floating("DeviceTemperature")->GetValue();
    floating("DeviceTemperature")->GetValue();
    EXPECT_EQ(camera().readCount(), reads + 2);
    EXPECT_FALSE(as<IValue>("DeviceTemperature")->IsValueCacheValid());

    // Write-around: the written value is read back from the device.
    integer("TestWriteAroundInteger")->SetValue(5);
    EXPECT_FALSE(as<IValue>("TestWriteAroundInteger")->IsValueCacheValid());
    camera().pokeRegister(R::TestWriteAroundInteger, 6);
    EXPECT_EQ(integer("TestWriteAroundInteger")->GetValue(), 6);
    reads = camera().readCount();
    EXPECT_EQ(integer("TestWriteAroundInteger")->GetValue(), 6);
    EXPECT_EQ(camera().readCount(), reads);

    // Bits of one register written through two nodes: each sees the other's write.
    as<IBoolean>("ReverseX")->SetValue(true);
    as<IBoolean>("ReverseY")->SetValue(true);
    EXPECT_TRUE(as<IBoolean>("ReverseX")->GetValue());
    EXPECT_EQ(camera().peekRegister(R::ImageFlags), 3u);

    // Selected registers are cached per selector value.
    enumeration("GainSelector")->FromString("Red");
    floating("Gain")->SetValue(1.0);
    enumeration("GainSelector")->FromString("Blue");
    floating("Gain")->SetValue(2.0);
    enumeration("GainSelector")->FromString("Red");
    reads = camera().readCount();
    EXPECT_DOUBLE_EQ(floating("Gain")->GetValue(), 1.0);
    EXPECT_EQ(camera().readCount(), reads);
}

TEST_F(EngineDynamicsTest, SuppressedCallbacksDoNotFire) {
    watch("Width");
    map()->SetSuppressCallbackMode(csmActive);
    integer("Width")->SetValue(320);
    EXPECT_EQ(m_Recorder.count("Width"), 0);
    map()->SetSuppressCallbackMode(csmOnce);
    integer("Width")->SetValue(336);
    EXPECT_EQ(m_Recorder.count("Width"), 0);
    integer("Width")->SetValue(352);  // csmOnce fell back to csmOff
    EXPECT_EQ(m_Recorder.count("Width"), 1);
}

TEST_F(EngineDynamicsTest, CommandCompletionFiresDependents) {
    watch("TimestampLatch");
    as<ICommand>("TimestampLatch")->Execute();
    EXPECT_EQ(m_Recorder.count("TimestampLatch"), 1);
    EXPECT_FALSE(as<ICommand>("TimestampLatch")->IsDone());
    EXPECT_EQ(m_Recorder.count("TimestampLatch"), 1);
    EXPECT_TRUE(as<ICommand>("TimestampLatch")->IsDone());
    EXPECT_EQ(m_Recorder.count("TimestampLatch"), 2);
    EXPECT_TRUE(as<ICommand>("TimestampLatch")->IsDone());
    EXPECT_EQ(m_Recorder.count("TimestampLatch"), 2);
}

TEST_F(EngineDynamicsTest, CachedAccessModesFollowEveryChange) {
    EXPECT_EQ(node("Width")->GetAccessMode(), RW);
    EXPECT_EQ(node("AcquisitionFrameCount")->GetAccessMode(), NA);
    EXPECT_EQ(node("EnumEntry_PixelFormat_Mono10")->GetAccessMode(), NA);
    // Through pIsLocked, pIsAvailable and an entry's availability, each write reaches the cached modes.
    integer("TLParamsLocked")->SetValue(1);
    EXPECT_EQ(node("Width")->GetAccessMode(), RO);
    integer("TLParamsLocked")->SetValue(0);
    EXPECT_EQ(node("Width")->GetAccessMode(), RW);
    enumeration("AcquisitionMode")->FromString("MultiFrame");
    EXPECT_EQ(node("AcquisitionFrameCount")->GetAccessMode(), RW);
    integer("TestMono10Available")->SetValue(1);
    EXPECT_EQ(node("EnumEntry_PixelFormat_Mono10")->GetAccessMode(), RO);
    // A change behind the engine's back shows after invalidation, as values do.
    camera().pokeRegister(R::AcquisitionMode, 0);
    EXPECT_EQ(node("AcquisitionFrameCount")->GetAccessMode(), RW);
    map()->InvalidateNodes();
    EXPECT_EQ(node("AcquisitionFrameCount")->GetAccessMode(), NA);
    // A user port that changes its own access is noticed at once.
    camera().setConnected(false);
    EXPECT_EQ(node("Width")->GetAccessMode(), NI);
    camera().setConnected(true);
    EXPECT_EQ(node("Width")->GetAccessMode(), RW);
    // The temperature's access depends on nothing volatile, the value itself is never cached.
    EXPECT_EQ(node("DeviceTemperature")->GetAccessMode(), RO);
}
