// What the library keeps to answer quickly must never answer wrong: shared snapshots, value texts made
// once per value, entry names made once per binding, and writes that skip the announcement nobody hears.
#include "LibraryFixture.h"
#include <QSignalSpy>
#include <parametercollection/IntegerParameterData.h>
#include <parametercollection/internal/EnumParameter.h>
#include <parametercollection/internal/IntegerParameter.h>

class SnapshotAndFastPathTest : public LibraryTest {};

// An unchanged parameter hands out the same snapshot again; any change, seen here or by the decoupler's
// check first, gives a new one that tells it.
TEST_F(SnapshotAndFastPathTest, SnapshotsAreSharedUntilSomethingChanges) {
    auto width = typed<CIntegerParameter>("Width");
    QSharedPointer<const ParameterData> first = width->getParameterData();
    EXPECT_EQ(width->getParameterData().data(), first.data());
    EXPECT_EQ(width->getParameterData().data(), first.data());

    width->setValue(1024, true);
    QSharedPointer<const ParameterData> written = width->getParameterData();
    EXPECT_NE(written.data(), first.data());
    EXPECT_EQ(static_cast<const IntegerParameterData&>(*written).value, 1024);
    EXPECT_EQ(written->valueText, "1024");
    EXPECT_EQ(first->valueText, "640");  // a snapshot handed out before stays as it was

    // The decoupler refreshes the record on its own thread; the next snapshot must not be the old one.
    QSignalSpy decoupled(width.data(), &IParameter::parameterDataChangedDecoupled);
    GenApi::CIntegerPtr(node("Width"))->SetValue(512);
    ASSERT_TRUE(waitUntil([&] { return decoupled.count() > 0; }));
    QSharedPointer<const ParameterData> afterDecoupler = width->getParameterData();
    EXPECT_EQ(static_cast<const IntegerParameterData&>(*afterDecoupler).value, 512);
    EXPECT_EQ(afterDecoupler->valueText, "512");

    // A class derived outside the library may keep fields the library cannot see change: fresh copies.
    class CDerivedWidth : public CIntegerParameter {
    public:
        using CIntegerParameter::CIntegerParameter;
    };
    QSharedPointer<CDerivedWidth> derived(
        new CDerivedWidth("Width", "@CameraDevice", sharedState(), decoupler()));
    derived->attach(map());
    EXPECT_NE(derived->getParameterData().data(), derived->getParameterData().data());

    // Access counts as a change too.
    GenApi::CIntegerPtr(node("TLParamsLocked"))->SetValue(1);
    EXPECT_FALSE(width->getParameterData()->isWriteable);
    GenApi::CIntegerPtr(node("TLParamsLocked"))->SetValue(0);
    EXPECT_TRUE(width->getParameterData()->isWriteable);
}

// An integer's text is made again whenever its value changes, in the feature's representation, and after a
// binding to another node map.
TEST_F(SnapshotAndFastPathTest, IntegerTextsFollowTheirValues) {
    auto hex = typed<CIntegerParameter>("TestHexInteger");
    for (long long value : {0xcafeLL, 0xcafeLL, 0x10LL, 0xbeefLL}) {
        hex->setValue(value, true);
        QSharedPointer<const ParameterData> data = hex->getParameterData();
        EXPECT_EQ(data->valueText, hex->toString());
        EXPECT_EQ(data->valueText, "0x" + QString::number(value, 16)) << value;
    }
    SimCamera::CSimulatedDevice other;
    GenApi::CIntegerPtr(other.nodeMap()->GetNode("TestHexInteger"))->SetValue(0x1234);
    hex->attach(other.nodeMap());
    EXPECT_EQ(hex->getParameterData()->valueText, "0x1234");
    hex->attach(nullptr);
}

// Entry names come from the bound enumeration: after a binding to another node map, from that one.
TEST_F(SnapshotAndFastPathTest, EnumerationValuesComeFromTheBoundMap) {
    auto format = typed<CEnumParameter>("PixelFormat");
    EXPECT_EQ(format->getValue(), "Mono8");
    format->setValue("Mono16");
    EXPECT_EQ(format->getValue(), "Mono16");
    SimCamera::CSimulatedDevice other;
    format->attach(other.nodeMap());
    EXPECT_EQ(format->getValue(), "Mono8");
    GenApi::CEnumerationPtr(other.nodeMap()->GetNode("PixelFormat"))->FromString("Mono12");
    EXPECT_EQ(format->getValue(), "Mono12");
    format->attach(nullptr);
    EXPECT_THROW(format->getValue(), Core::Exception::BaseException);
}

// A write refused for access raises the library's own exception whether or not anybody listens to the
// announcement; with a listener, the announcement goes out only for a write that is attempted.
TEST_F(SnapshotAndFastPathTest, WritesRefuseTheSameWithAndWithoutAListener) {
    auto width = typed<CIntegerParameter>("Width");
    GenApi::CIntegerPtr(node("TLParamsLocked"))->SetValue(1);
    for (bool listened : {false, true}) {
        SCOPED_TRACE(listened);
        std::unique_ptr<QSignalSpy> announcements;
        if (listened)
            announcements.reset(new QSignalSpy(width.data(), &IParameter::parameterValueAboutToBeSet));
        try {
            width->setValue(256, true);
            ADD_FAILURE() << "a locked width was written";
        } catch (const Core::Exception::InvalidOperationException& e) {
            EXPECT_EQ(e.getMessage(), "Node not writable.");
        }
        if (announcements) {
            EXPECT_EQ(announcements->count(), 0);
        }
    }
    GenApi::CIntegerPtr(node("TLParamsLocked"))->SetValue(0);
    QSignalSpy announcements(width.data(), &IParameter::parameterValueAboutToBeSet);
    EXPECT_THROW(width->setValue(4000, true), Core::Exception::BaseException);  // above the maximum
    ASSERT_EQ(announcements.count(), 1);
    EXPECT_EQ(announcements.at(0).at(0).toString(), "4000");
    width->setValue(256, true);
    EXPECT_EQ(announcements.count(), 2);
    EXPECT_EQ(width->getValue(), 256);

    // An unbound parameter refuses as before.
    QSharedPointer<CIntegerParameter> unbound(
        new CIntegerParameter("Width", "@CameraDevice", sharedState(), decoupler()));
    EXPECT_THROW(unbound->setValue(256, true), Core::Exception::InvalidOperationException);
}
