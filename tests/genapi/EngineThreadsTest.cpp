// Several threads reading and writing one node map while callbacks run.
#include "SimulatedCameraFixture.h"
#include <atomic>
#include <thread>
#include <vector>

using namespace GenApi;

namespace {

class CCallbackCounter {
public:
    explicit CCallbackCounter(IInteger* width) : m_Width(width) {}
    void onInside(INode*) {
        ++m_Inside;
        m_LastMax = m_Width->GetMax();  // reads the map from inside the lock
    }
    void onOutside(INode*) { ++m_Outside; }
    int inside() const { return m_Inside; }
    int outside() const { return m_Outside; }

private:
    IInteger* m_Width;
    std::atomic<int> m_Inside{0};
    std::atomic<int> m_Outside{0};
    std::atomic<int64_t> m_LastMax{0};
};

}  // namespace

TEST_F(SimulatedCameraTest, ThreadsShareOneNodeMapWithoutRacesOrDeadlocks) {
    CCallbackCounter counter(integer("Width"));
    Register(node("Width"), counter, &CCallbackCounter::onInside, cbPostInsideLock);
    Register(node("Width"), counter, &CCallbackCounter::onOutside, cbPostOutsideLock);
    integer("Width")->SetValue(256);
    integer("OffsetX")->SetValue(0);
    constexpr int iterations = 300;
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    threads.emplace_back([&] {
        for (int i = 0; i < iterations; ++i)
            integer("OffsetX")->SetValue((i % 8) * 16);
    });
    threads.emplace_back([&] {
        for (int i = 0; i < iterations; ++i)
            integer("Width")->SetValue(256 + (i % 4) * 16);
    });
    threads.emplace_back([&] {
        for (int i = 0; i < iterations; ++i) {
            const int64_t width = integer("Width")->GetValue();
            const int64_t offset = integer("OffsetX")->GetValue();
            if (width < 256 || width > 304 || offset > 112)
                ++failures;
            floating("DeviceTemperature")->GetValue();
        }
    });
    threads.emplace_back([&] {
        for (int i = 0; i < iterations; ++i) {
            map()->Poll(100);
            if (i % 50 == 0)
                map()->InvalidateNodes();
            enumeration("GainSelector")->SetIntValue(i % 4);
            floating("Gain")->SetValue((i % 24) * 1.0);
        }
    });
    // Property lists, which the map keeps for the node asked last, asked by two threads for nodes in turn.
    std::atomic<int> missingProperties{0};
    const auto askProperties = [&](int shift) {
        const char* const nodes[] = {"Width", "OffsetX", "WidthReg", "Gain", "PixelFormat"};
        for (int i = 0; i < iterations; ++i) {
            INode* asked = node(nodes[(i + shift) % 5]);
            GenICam::gcstring_vector names;
            asked->GetPropertyNames(names);
            GenICam::gcstring value, attribute;
            for (size_t n = 0; n < names.size(); ++n) {
                if (!asked->GetProperty(names[n], value, attribute) && names[n] != "DeviceName")
                    ++missingProperties;
            }
            if (!asked->GetProperty("Name", value, attribute) || value != asked->GetName())
                ++missingProperties;
        }
    };
    threads.emplace_back(askProperties, 0);
    threads.emplace_back(askProperties, 2);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(missingProperties, 0);
    // Every Width write and every OffsetX write (which changes Width's maximum) fired Width's callbacks.
    EXPECT_GE(counter.inside(), 2 * iterations + 2);
    EXPECT_EQ(counter.inside(), counter.outside());
}

namespace {

std::atomic<int> outsideCalls{0};
void countOutsideCall(INode*) {
    ++outsideCalls;
}

}  // namespace

TEST_F(SimulatedCameraTest, OutsideLockCallbacksSurviveConcurrentRegistration) {
    std::atomic<bool> stop{false};
    std::thread writer([&] {
        for (int i = 0; !stop; ++i)
            integer("Width")->SetValue(256 + (i % 4) * 16);
    });
    // Registering and deregistering while the writer's callbacks run outside the lock.
    for (int round = 0; round < 400; ++round) {
        const CallbackHandleType handle = Register(node("Width"), &countOutsideCall, cbPostOutsideLock);
        std::this_thread::yield();
        Deregister(handle);
    }
    const CallbackHandleType kept = Register(node("Width"), &countOutsideCall, cbPostOutsideLock);
    const int before = outsideCalls;
    while (outsideCalls == before)
        std::this_thread::yield();
    stop = true;
    writer.join();
    node("Width")->DeregisterCallback(kept);
    EXPECT_GT(outsideCalls.load(), before);
}
