// Many threads on one collection while its device closes and opens again: readers, writers, a thread that
// detaches and attaches the node map, one that connects and disconnects a decoupled slot, one that polls
// and walks the node map. A watchdog fails the test on a deadlock; every value read must be one written.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <parametercollection/Exceptions.h>
#include <parametercollection/IEnumParameter.h>
#include <parametercollection/IFloatParameter.h>
#include <parametercollection/IIntegerParameter.h>
#include <set>
#include <thread>

using namespace Core::Exception;

namespace {

// How long the threads run: short in the normal run, longer when PC_STRESS_SECONDS asks for it.
double stressSeconds() {
    const char* seconds = std::getenv("PC_STRESS_SECONDS");
    return seconds ? std::atof(seconds) : 1.5;
}

const std::set<long long> widths = {320, 640, 1024};

struct SStressCounts {
    std::atomic<long long> operations{0};
    std::atomic<long long> unexpected{0};
    std::atomic<bool> stop{false};
};

// Runs `body` until told to stop, counting operations. Library exceptions (a detached or closed
// device), GenApi's untranslated errors of the try and limit operations, and the never-bound announcer
// are outcomes the library prescribes, not failures.
std::thread worker(SStressCounts& counts, const std::function<void()>& body) {
    return std::thread([&counts, body] {
        while (!counts.stop.load()) {
            try {
                body();
            } catch (const BaseException&) {
            } catch (const GenICam::GenericException&) {
            } catch (const std::bad_function_call&) {
            }
            ++counts.operations;
        }
    });
}

}  // namespace

TEST(ConcurrencyStress, ReadersWritersAndAReattachingOwnerShareOneCollection) {
    CSimulatedCollection simulated;
    CParameterCollection& collection = simulated.collection();
    GenApi::INodeMap* map = simulated.device().nodeMap();
    CObjectState& state = simulated.state();
    SStressCounts counts;
    std::vector<std::thread> threads;

    for (int reader = 0; reader < 2; ++reader) {
        threads.push_back(worker(counts, [&] {
            auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
            const long long value = width->getValue();
            if (!widths.count(value))
                ++counts.unexpected;
            const QString text = width->toString();
            const bool known = text.isEmpty() || text == "<not found>" || text == "<no value>" ||
                               text == "<error>" || widths.count(text.toLongLong());
            if (!known)
                ++counts.unexpected;
            width->getParameterData();
            collection.get(EnumParameterName("@CameraDevice/PixelFormat"))->getValue();
        }));
    }
    for (int writer = 0; writer < 2; ++writer) {
        threads.push_back(worker(counts, [&, writer] {
            auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
            width->trySetValue(writer ? 320 : 1024);
            width->setValue(640, IntegerValueCorrection_Nearest);
            width->trySetValue(333);  // refused: not on the grid
            width->parseAndSetValue(writer ? "1024" : "320");
            collection.get(FloatParameterName("@CameraDevice/ExposureTime"))->trySetValue(5000.0);
            collection.get(EnumParameterName("@CameraDevice/PixelFormat"))->trySetValue(QString("Mono8"));
        }));
    }
    threads.push_back(worker(counts, [&] {
        auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
        QMetaObject::Connection connection =
            QObject::connect(width.data(), &IParameter::parameterDataChangedDecoupled,
                             [](QSharedPointer<const ParameterData>) {});
        width->scheduleParameterDataChangedCheck(true);
        QObject::disconnect(connection);
    }));
    threads.push_back(worker(counts, [&] {
        collection.poll(10);
        collection.invalidate();
        collection.getAllParameter();
        collection.getParameterRelation("@CameraDevice/Width", ParameterRelation_CategoryPath, false);
    }));
    // The owner: the device closes and opens again every 20 ms.
    std::thread owner([&] {
        while (!counts.stop.load()) {
            collection.detachNodeMap(ParameterPath::CameraDevice);
            state.setState(ObjectState_Closed);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            collection.attachNodeMap(ParameterPath::CameraDevice, map);
            state.setState(ObjectState_Open);
            std::this_thread::sleep_for(std::chrono::milliseconds(15));
            ++counts.operations;
        }
    });

    std::this_thread::sleep_for(std::chrono::milliseconds(static_cast<int>(stressSeconds() * 1000)));
    counts.stop = true;
    // The watchdog: every thread must end soon after being told to.
    std::atomic<int> joined{0};
    std::thread joiner([&] {
        for (std::thread& thread : threads)
            thread.join();
        owner.join();
        joined = 1;
    });
    for (int waited = 0; waited < 3000 && !joined.load(); ++waited)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    if (!joined.load()) {
        ADD_FAILURE() << "deadlock: the threads did not end within 30 s";
        joiner.detach();
        std::_Exit(1);
    }
    joiner.join();
    EXPECT_EQ(counts.unexpected.load(), 0);
    EXPECT_GT(counts.operations.load(), 100);
    std::cout << "[ stress ] " << counts.operations.load() << " operations in " << stressSeconds() << " s"
              << std::endl;
    // The parameters still work once everything is quiet.
    collection.attachNodeMap(ParameterPath::CameraDevice, map);
    auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
    width->setValue(640, IntegerValueCorrection_None);
    EXPECT_EQ(width->getValue(), 640);
}
