// Binding across detach and attach, the never-bound announcer, lock order between GenApi callbacks and
// the decoupler, the order of limit reads, the node map lock during enumeration refreshes, and the
// virtual slot order of the base parameter.
#include "LibraryFixture.h"
#include <GenApi/GenApi.h>
#include <QSignalSpy>
#include <algorithm>
#include <atomic>
#include <cstring>
#include <future>
#include <parametercollection/ParameterCollection.h>
#include <parametercollection/ParameterPath.h>
#include <parametercollection/internal/CommandParameter.h>
#include <parametercollection/internal/EnumParameter.h>
#include <parametercollection/internal/IntegerParameter.h>
#include <thread>

using namespace Core::Exception;

namespace {

class CollectionBindingTest : public ::testing::Test {
protected:
    CollectionBindingTest()
        : m_State(new CObjectState(nullptr)), m_Collection(new CParameterCollection(m_State)) {
        m_Collection->announceNodeMap(ParameterPath::CameraDevice);
        m_Collection->attachNodeMap(ParameterPath::CameraDevice, m_Device.nodeMap());
        m_State->setState(ObjectState_Open);
    }
    ~CollectionBindingTest() override { m_Collection->detachAllNodeMaps(); }

    SimCamera::CSimulatedDevice m_Device;
    QSharedPointer<CObjectState> m_State;
    QScopedPointer<CParameterCollection> m_Collection;
};

}  // namespace

TEST_F(CollectionBindingTest, ACachedParameterIsTheSameObjectWhileDetachedAndIsBoundAgainAfterAttach) {
    auto width = m_Collection->get(IntegerParameterName("@CameraDevice/Width"));
    ASSERT_FALSE(width->isEmpty());

    // While detached, the typed get answers the cached object, not a fresh placeholder.
    m_Collection->detachNodeMap(ParameterPath::CameraDevice);
    auto whileDetached = m_Collection->get(IntegerParameterName("@CameraDevice/Width"));
    EXPECT_EQ(whileDetached.data(), width.data());
    EXPECT_TRUE(whileDetached->isEmpty());

    m_Collection->attachNodeMap(ParameterPath::CameraDevice, m_Device.nodeMap());
    EXPECT_FALSE(whileDetached->isEmpty());
    EXPECT_EQ(whileDetached->getValue(),
              GenApi::CIntegerPtr(m_Device.nodeMap()->GetNode("Width"))->GetValue());

    // A cached but detached first alternative is still the answer; the second is not looked at.
    auto height = m_Collection->get(IntegerParameterName("@CameraDevice/Height"));
    m_Collection->detachNodeMap(ParameterPath::CameraDevice);
    auto either = m_Collection->get(IntegerParameterName("@CameraDevice/Width|@CameraDevice/Height"));
    EXPECT_EQ(either.data(), width.data());
    EXPECT_NE(either.data(), height.data());
}

TEST_F(LibraryTest, AFailedAttachLeavesTheAnnouncerUnbound) {
    CIntegerParameter missing("NoSuchFeature", "@CameraDevice", sharedState(), decoupler());
    QSignalSpy announced(&missing, &IParameter::parameterValueAboutToBeSet);
    EXPECT_FALSE(missing.attach(map()));
    EXPECT_THROW(missing.setValue(5, IntegerValueCorrection_None), std::bad_function_call);
    EXPECT_EQ(announced.count(), 0);

    // A detach binds it: the unchecked write announces and, without a node, writes nothing.
    EXPECT_FALSE(missing.attach(nullptr));
    missing.setValue(5, IntegerValueCorrection_None);
    ASSERT_EQ(announced.count(), 1);
    EXPECT_EQ(announced.first().first().toString(), "5");

    // An alias parameter whose node has no alias is not bound either.
    CIntegerParameter alias("Width", "@CameraDevice", sharedState(), decoupler());
    alias.setIsAlias(true);
    EXPECT_FALSE(alias.attach(map()));
    EXPECT_THROW(alias.setValue(5, IntegerValueCorrection_None), std::bad_function_call);
}

// A slot connected directly to parameterChanged runs inside GenApi's node map lock; when it schedules
// a check it must not wait for the state lock, which the decoupler thread holds while it waits for the
// node map lock to refresh a snapshot.
TEST_F(LibraryTest, SchedulingFromADirectSlotDoesNotDeadlockAgainstTheDecoupler) {
    auto width = typed<CIntegerParameter>("Width");
    CDecoupledRecorder recorder(*width);
    std::atomic<int> scheduled{0};
    QObject::connect(
        width.data(), &IParameter::parameterChanged, width.data(),
        [&] {
            width->scheduleParameterDataChangedCheck(true);
            ++scheduled;
        },
        Qt::DirectConnection);

    std::atomic<bool> finished{false};
    std::thread writer([&] {
        GenApi::CIntegerPtr widthNode(map()->GetNode("Width"));
        const int64_t minimum = widthNode->GetMin();
        const int64_t increment = widthNode->GetInc();
        for (int i = 0; i < 20000; ++i)
            widthNode->SetValue(minimum + increment * (i % 16));
        finished = true;
    });
    // The watchdog: a deadlock leaves the writer stuck for good.
    const bool done = waitUntil([&] { return finished.load(); }, 60000);
    if (!done) {
        ADD_FAILURE() << "deadlock: the writer hung after " << scheduled << " callbacks";
        writer.detach();
        std::_Exit(1);
    }
    writer.join();
    EXPECT_GE(scheduled.load(), 20000);
    EXPECT_TRUE(waitUntil([&] { return recorder.count() > 0; }));
}

namespace {

// A register space of three limit registers and a value register that logs every read address.
class CLimitLoggingPort : public GenApi::CPortImpl {
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* buffer, int64_t address, int64_t length) override {
        reads.push_back(address);
        std::memset(buffer, 0, static_cast<size_t>(length));
        const uint32_t value = valueAt(address);
        std::memcpy(buffer, &value, std::min<size_t>(sizeof value, static_cast<size_t>(length)));
    }
    void Write(const void* buffer, int64_t address, int64_t length) override {
        if (address == 0x0)
            std::memcpy(&value, buffer, std::min<size_t>(sizeof value, static_cast<size_t>(length)));
    }
    uint32_t valueAt(int64_t address) const {
        switch (address) {
            case 0x10:
                return 10;  // minimum
            case 0x20:
                return 100;  // maximum
            case 0x30:
                return 5;  // increment
            default:
                return value;
        }
    }
    std::vector<int64_t> reads;
    uint32_t value = 10;
};

const std::string limitsDescription = testDescription(R"(
  <Integer Name="Value">
    <pValue>ValueReg</pValue>
    <pMin>MinReg</pMin>
    <pMax>MaxReg</pMax>
    <pInc>IncReg</pInc>
  </Integer>
  <IntReg Name="ValueReg"><Address>0x0</Address><Length>4</Length><AccessMode>RW</AccessMode>
    <pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="MinReg"><Address>0x10</Address><Length>4</Length><AccessMode>RO</AccessMode>
    <pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="MaxReg"><Address>0x20</Address><Length>4</Length><AccessMode>RO</AccessMode>
    <pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <IntReg Name="IncReg"><Address>0x30</Address><Length>4</Length><AccessMode>RO</AccessMode>
    <pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>
  <Port Name="Device"/>
)");

// The limit registers in the order they were read, each once where it was read first.
std::vector<int64_t> limitReadOrder(const std::vector<int64_t>& reads) {
    std::vector<int64_t> order;
    for (int64_t address : reads) {
        if (address != 0x0 && std::find(order.begin(), order.end(), address) == order.end())
            order.push_back(address);
    }
    return order;
}

}  // namespace

TEST_F(LibraryTest, CorrectionReadsMinimumMaximumAndIncrementInThatOrder) {
    CLimitLoggingPort port;
    GenApi::CNodeMapRef limits;
    limits._LoadXMLFromString(limitsDescription.c_str());
    limits._Connect(&port, "Device");
    CIntegerParameter value("Value", "@CameraDevice", sharedState(), decoupler());
    ASSERT_TRUE(value.attach(limits._Ptr));

    for (EIntegerValueCorrection correction :
         {IntegerValueCorrection_Nearest, IntegerValueCorrection_Up, IntegerValueCorrection_Down}) {
        port.reads.clear();
        value.setValue(47, correction);
        EXPECT_EQ(limitReadOrder(port.reads), (std::vector<int64_t>{0x10, 0x20, 0x30})) << correction;
    }
    value.setValue(47, IntegerValueCorrection_Nearest);
    EXPECT_EQ(port.value, 45u);
    value.attach(nullptr);
}

// A percent write at an end of the range reads only the limit it writes: the limit register it does not
// need is read only by GenApi's own range check of the write, once fewer than for a write inside.
TEST_F(LibraryTest, PercentWritesAtTheEndsReadOnlyTheirLimit) {
    CLimitLoggingPort port;
    GenApi::CNodeMapRef limits;
    limits._LoadXMLFromString(limitsDescription.c_str());
    limits._Connect(&port, "Device");
    CIntegerParameter value("Value", "@CameraDevice", sharedState(), decoupler());
    ASSERT_TRUE(value.attach(limits._Ptr));
    const auto readsOf = [&](int64_t address, double percent) {
        port.reads.clear();
        value.setValuePercentOfRange(percent);
        return std::count(port.reads.begin(), port.reads.end(), address);
    };
    const auto maximumReadsInside = readsOf(0x20, 50);
    const auto minimumReadsInside = readsOf(0x10, 50);
    EXPECT_EQ(readsOf(0x20, 0), maximumReadsInside - 1);
    EXPECT_EQ(port.value, 10u);
    EXPECT_EQ(readsOf(0x10, 100), minimumReadsInside - 1);
    EXPECT_EQ(port.value, 100u);
    value.attach(nullptr);
}

namespace {

// Whether another thread finds the node map lock taken.
bool mapLockHeldElsewhere(GenApi::INodeMap* map) {
    return std::async(std::launch::async,
                      [map] {
                          GenApi::CLock& lock = map->GetLock();
                          if (!lock.TryLock())
                              return true;
                          lock.Unlock();
                          return false;
                      })
        .get();
}

// A command parameter that, whenever its completion is asked, records whether the node map lock is held.
class CLockProbingCommandParameter : public CCommandParameter {
public:
    using CCommandParameter::CCommandParameter;
    GenApi::INodeMap* probedMap = nullptr;
    std::atomic<int> reads{0};
    std::atomic<int> readsUnderMapLock{0};

    bool isDone() override {
        ++reads;
        if (mapLockHeldElsewhere(probedMap))
            ++readsUnderMapLock;
        return CCommandParameter::isDone();
    }
};

}  // namespace

TEST_F(LibraryTest, CommandRefreshReadsItsCompletionUnderBothLocks) {
    CLockProbingCommandParameter latch("TimestampLatch", "@CameraDevice", sharedState(), decoupler());
    latch.probedMap = map();
    ASSERT_TRUE(latch.attach(map()));
    auto data = latch.getParameterData().dynamicCast<const CommandParameterData>();
    ASSERT_TRUE(data);
    EXPECT_TRUE(data->isDone);
    EXPECT_EQ(latch.reads.load(), 1);
    EXPECT_EQ(latch.readsUnderMapLock.load(), 1);
    // Asked on its own, completion takes only the state lock.
    latch.isDone();
    EXPECT_EQ(latch.readsUnderMapLock.load(), 1);
    latch.attach(nullptr);
}

namespace {

// A member function pointer as the Itanium C++ ABI lays it out: for a virtual function an odd pointer
// (1 + byte offset in the vtable), and the adjustment of `this` to the class that declares the slot.
struct SMemberPointer {
    std::ptrdiff_t pointer;
    std::ptrdiff_t adjustment;
};

template <typename Member>
SMemberPointer rawMemberPointer(Member member) {
    SMemberPointer raw;
    static_assert(sizeof(Member) == sizeof(raw), "Itanium member function pointer");
    std::memcpy(&raw, &member, sizeof raw);
    return raw;
}

// The vtable slot of a virtual member function, or -1 for a function that is not virtual.
template <typename Member>
std::ptrdiff_t vtableSlot(Member member) {
    const SMemberPointer raw = rawMemberPointer(member);
    return (raw.pointer & 1) ? (raw.pointer - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)) : -1;
}

// A client class compiled against the published layout: its first own virtual follows the base's last.
class CClientParameter : public CParameter {
public:
    using CParameter::CParameter;
    virtual int clientOperation() { return 1; }
};

}  // namespace

TEST(ParameterLayout, VirtualOperationsKeepTheirPublishedSlotOrder) {
    const std::vector<std::ptrdiff_t> slotOrder = {
        vtableSlot(&CParameter::getName),
        vtableSlot(&CParameter::getFullName),
        vtableSlot(&CParameter::isReadable),
        vtableSlot(&CParameter::isWriteable),
        vtableSlot(&CParameter::isEmpty),
        vtableSlot(&CParameter::isAvailable),
        vtableSlot(&CParameter::isImplemented),
        vtableSlot(&CParameter::getVisibility),
        vtableSlot(&CParameter::getParameterType),
        vtableSlot(&CParameter::getParameterData),
        vtableSlot(&CParameter::scheduleParameterDataChangedCheck),
        vtableSlot(&CParameter::attach),
        vtableSlot(&CParameter::toString),
        vtableSlot(&CParameter::parseAndSetValue),
        vtableSlot(&CParameter::getAdvancedParameterAccess),
        vtableSlot(&CParameter::raiseExceptionIfDisposed),
        vtableSlot(&CParameter::raiseExceptionIfDeviceNotOpen),
        vtableSlot(&CParameter::raiseExceptionIfNotReadable),
        vtableSlot(&CParameter::raiseExceptionIfNotWritable),
        vtableSlot(&CParameter::updateCachedParameterData),
        vtableSlot(&CParameter::getCachedParameterData),
    };
    for (size_t i = 1; i < slotOrder.size(); ++i)
        EXPECT_EQ(slotOrder[i], slotOrder[i - 1] + 1) << "operation " << i;
    // Nothing virtual follows getCachedParameterData, so a client's own virtuals come right after it.
    EXPECT_EQ(vtableSlot(&CClientParameter::clientOperation), slotOrder.back() + 1);
}

namespace {

class CClientEnumParameter : public CEnumParameter {
public:
    using CEnumParameter::CEnumParameter;
    virtual int clientOperation() { return 1; }
};

// The slot of a member in the class's primary vtable, or -1 when it lives in another one.
template <typename Member>
std::ptrdiff_t primarySlot(Member member) {
    return rawMemberPointer(member).adjustment == 0 ? vtableSlot(member) : -1;
}

}  // namespace

TEST(ParameterLayout, EnumerationAddsNoVirtualsOfItsOwn) {
    const std::vector<std::ptrdiff_t> published = {
        primarySlot(&CEnumParameter::canSetValue),
        primarySlot(&CEnumParameter::getAdvancedValueProperties),
        primarySlot(&CEnumParameter::getParameterType),
        primarySlot(&CEnumParameter::toString),
        primarySlot(&CEnumParameter::parseAndSetValue),
        primarySlot(&CEnumParameter::attach),
        primarySlot(&CEnumParameter::updateCachedParameterData),
        primarySlot(&CEnumParameter::getCachedParameterData),
    };
    const std::ptrdiff_t last = *std::max_element(published.begin(), published.end());
    ASSERT_GE(last, 0);
    // A client compiled against the published class finds its own first virtual right after them.
    EXPECT_EQ(vtableSlot(&CClientEnumParameter::clientOperation), last + 1);
}
