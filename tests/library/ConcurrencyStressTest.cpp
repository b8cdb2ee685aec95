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
#include <memory>
#include <mutex>
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

// Lets the threads run for the stress time, stops them and joins them under a watchdog: a thread that
// does not end within 30 s is a deadlock, and the test program ends there rather than hang.
void runAndJoin(SStressCounts& counts, std::vector<std::thread>& threads, std::vector<std::thread>& owners) {
    std::this_thread::sleep_for(std::chrono::milliseconds(static_cast<int>(stressSeconds() * 1000)));
    counts.stop = true;
    std::atomic<int> joined{0};
    std::thread joiner([&] {
        for (std::thread& thread : threads)
            thread.join();
        for (std::thread& thread : owners)
            thread.join();
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
}

}  // namespace

TEST(ConcurrencyStress, ReadersWritersAndAReattachingOwnerShareOneCollection) {
    CSimulatedCollection simulated;
    CParameterCollection& collection = simulated.collection();
    GenApi::INodeMap* map = simulated.device().nodeMap();
    CObjectState& state = simulated.state();
    SStressCounts counts;
    std::vector<std::thread> threads;

    for (int reader = 0; reader < 3; ++reader) {
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
    std::vector<std::thread> owners;
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

    owners.push_back(std::move(owner));
    runAndJoin(counts, threads, owners);
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

// Parameters outlive the collections that made them: one thread makes a collection over one of two
// devices, hands out its Width and destroys it, while others read and write what they were handed, and
// an owner switches a long-lived collection between the two devices.
TEST(ConcurrencyStress, HeldParametersOutliveTheirCollectionsWhileDevicesChange) {
    SimCamera::CSimulatedDevice devices[2];
    QSharedPointer<CObjectState> state(new CObjectState(nullptr));
    state->setState(ObjectState_Open);
    CParameterCollection lasting(state);
    lasting.announceNodeMap(ParameterPath::CameraDevice);
    SStressCounts counts;
    // A std::mutex, which ThreadSanitizer sees, unlike the uninstrumented QMutex.
    std::mutex heldMutex;
    std::vector<QSharedPointer<IIntegerParameter>> held;
    auto anyHeld = [&] {
        std::lock_guard<std::mutex> lock(heldMutex);
        return held.empty() ? lasting.get(IntegerParameterName("@CameraDevice/Width"))
                            : held[static_cast<size_t>(counts.operations.load()) % held.size()];
    };
    std::vector<std::thread> threads;
    threads.push_back(worker(counts, [&] {
        CParameterCollection shortLived(state);
        shortLived.announceNodeMap(ParameterPath::CameraDevice);
        shortLived.attachNodeMap(ParameterPath::CameraDevice,
                                 devices[counts.operations.load() % 2].nodeMap());
        auto width = shortLived.get(IntegerParameterName("@CameraDevice/Width"));
        width->getValue();
        std::lock_guard<std::mutex> lock(heldMutex);
        if (held.size() >= 8)
            held.erase(held.begin());
        held.push_back(width);
    }));
    for (int reader = 0; reader < 3; ++reader) {
        threads.push_back(worker(counts, [&] {
            auto width = anyHeld();
            if (!widths.count(width->getValue()))
                ++counts.unexpected;
            width->toString();
            width->getParameterData();
            width->isWriteable();
        }));
    }
    threads.push_back(worker(counts, [&] {
        auto width = anyHeld();
        width->trySetValue(counts.operations.load() % 2 ? 320 : 1024);
        width->setValue(640, IntegerValueCorrection_Nearest);
    }));
    std::vector<std::thread> owners;
    owners.emplace_back([&] {
        for (int turn = 0; !counts.stop.load(); ++turn) {
            lasting.attachNodeMap(ParameterPath::CameraDevice, devices[turn % 2].nodeMap());
            std::this_thread::sleep_for(std::chrono::milliseconds(7));
            ++counts.operations;
        }
    });
    runAndJoin(counts, threads, owners);
    EXPECT_EQ(counts.unexpected.load(), 0);
    EXPECT_GT(counts.operations.load(), 100);
    std::cout << "[ stress ] " << counts.operations.load() << " operations in " << stressSeconds()
              << " s with collections made and destroyed" << std::endl;
    held.clear();
    // Each device still answers through the long-lived collection.
    for (SimCamera::CSimulatedDevice& device : devices) {
        lasting.attachNodeMap(ParameterPath::CameraDevice, device.nodeMap());
        auto width = lasting.get(IntegerParameterName("@CameraDevice/Width"));
        width->setValue(1024, IntegerValueCorrection_None);
        EXPECT_EQ(width->getValue(), 1024);
    }
    lasting.detachAllNodeMaps();
}

// Snapshots are values: one thread keeps the snapshots the decoupler delivers and the ones it asks for
// itself, and releases them later, while writers change the features and the decoupler refreshes the
// parameter's own record. A snapshot never changes while it is held, and releasing it races nothing.
TEST(ConcurrencyStress, HeldSnapshotsStayAsTakenWhileTheDecouplerRefreshes) {
    CSimulatedCollection simulated;
    CParameterCollection& collection = simulated.collection();
    auto exposure = collection.get(FloatParameterName("@CameraDevice/ExposureTime"));
    auto width = collection.get(IntegerParameterName("@CameraDevice/Width"));
    struct SHeld {
        QSharedPointer<const ParameterData> data;
        QString text;
    };
    // Shared with the slots, which may still run on the decoupler thread until the collection goes.
    struct SHeldSnapshots {
        std::mutex mutex;
        std::vector<SHeld> snapshots;
    };
    const auto held = std::make_shared<SHeldSnapshots>();
    const auto keep = [held](const QSharedPointer<const ParameterData>& data) {
        std::lock_guard<std::mutex> lock(held->mutex);
        held->snapshots.push_back({data, data->valueText});
    };
    SStressCounts counts;
    // Connected directly: the slot runs on the decoupler thread, which made the snapshot.
    for (IParameter* parameter :
         {static_cast<IParameter*>(exposure.data()), static_cast<IParameter*>(width.data())})
        QObject::connect(parameter, &IParameter::parameterDataChangedDecoupled, parameter, keep,
                         Qt::DirectConnection);
    std::vector<std::thread> threads;
    threads.push_back(worker(counts, [&] {
        const long long turn = counts.operations.load();
        exposure->trySetValue(turn % 2 ? 1000.0 + static_cast<double>(turn % 97) : 5000.0);
        width->trySetValue(turn % 3 ? 320 : 1024);
        exposure->scheduleParameterDataChangedCheck(true);
        width->scheduleParameterDataChangedCheck(true);
    }));
    threads.push_back(worker(counts, [&] {
        keep(exposure->getParameterData());
        keep(width->getParameterData());
    }));
    // Releases what the others kept, oldest first, after checking that it is as it was taken.
    threads.push_back(worker(counts, [&] {
        std::vector<SHeld> released;
        {
            std::lock_guard<std::mutex> lock(held->mutex);
            const auto end =
                held->snapshots.begin() + static_cast<std::ptrdiff_t>(held->snapshots.size() / 2);
            released.assign(held->snapshots.begin(), end);
            held->snapshots.erase(held->snapshots.begin(), end);
        }
        for (const SHeld& snapshot : released) {
            if (snapshot.data->valueText != snapshot.text)
                ++counts.unexpected;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }));
    std::vector<std::thread> owners;
    runAndJoin(counts, threads, owners);
    EXPECT_EQ(counts.unexpected.load(), 0);
    EXPECT_GT(counts.operations.load(), 100);
}
